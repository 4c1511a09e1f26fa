#pragma once

#include <string>
#include <vector>

namespace support {

/// Stages of a job as a Recorder writes them down, for what several drivers do alike. Surfaces are
/// those of one facet.
using Events = std::vector<std::string>;

/// The stages one behind the other.
Events Joined(const std::vector<Events>& stages);

/// The registry is asked for the directory of the copies.
Events RegistryAsked();

/// "BinaryPaths.tmp" of the job is turned into "BinaryPaths.txt".
Events PathsConverted();

/// `file` (as events spell it) is played into the kernel's channel of that name.
Events FacetLoaded(const std::string& channel, const std::string& file);

/// The kernel plays its answer into the output, up to Close and without it.
Events FacetPlayed();

/// The kernel announces three steps and finds the user wanting to stop; `message` is the host's
/// number for what the kernel said.
Events Cancelled(int message);

}  // namespace support
