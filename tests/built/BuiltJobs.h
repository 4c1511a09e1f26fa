#pragma once

#include <functional>
#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/qzhost/AddIn.h"
#include "platform/HostProgress.h"

/// An export with a job of fewer than a thousand facets, for the built add-in and the open kernel.
/// `place` is the job's directory in the add-in's spelling.
struct BuiltJob {
  const char* name;
  /// The files that the host writes, whole, by name.
  std::map<std::string, std::string> inputs;
  const char* output;
  /// What an unclosed channel leaves of the output; empty for a kernel that makes its file in one
  /// go.
  std::string header;
  /// Calls the export; returns the flag.
  std::function<int(const host::AddIn& addIn, const std::string& place, HostProgress* host)> call;
  /// The flag after the user's stop: 0, 1, or -1 where it depends on the moment.
  int stopped;
  /// What else memory that runs out may leave: an output without some facets; or one that ends
  /// early; or a few blocks of the kernel's geometry library.
  enum class Loss { kNone, kFacets, kEnd, kLibraryBlocks };
  Loss loss = Loss::kNone;
  /// What a run leaves in the job's directory beside inputs and output, however it ends.
  std::set<std::string> leftovers = {};
  /// The diagnostic copies of a run that is stopped, without the prefix.
  std::set<std::string> copies = {};
};

/// Makes failing tests speak of it by its name.
void PrintTo(const BuiltJob& job, std::ostream* out);

/// One for each export.
std::vector<BuiltJob> BuiltJobs();

/// That of one export.
BuiltJob JobOf(const std::string& name);
