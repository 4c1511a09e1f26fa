#pragma once

#include <functional>
#include <optional>
#include <string>

namespace host {

enum class Units { kMillimetres, kInches };

/// What the options in front of a subcommand say, and what the chosen subcommand is to do.
struct Options {
  Units units = Units::kMillimetres;
  /// The host's tolerance, in `units`.
  std::optional<double> hostTolerance;
  std::string stockDataDirectory;
  /// The add-in to load; empty for the one beside the executable.
  std::string addIn;
  bool json = false;
  bool quiet = false;

  /// Set by the callback of the subcommand that was named; returns the exit code.
  std::function<int()> run;
};

inline const char* UnitsName(Units units) { return units == Units::kMillimetres ? "mm" : "inch"; }

}  // namespace host
