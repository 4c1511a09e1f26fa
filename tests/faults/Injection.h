#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace faults {

/// What becomes of one counted call.
enum class Way {
  kNone,
  kFails,    // a service refuses, memory is not to be had
  kStops,    // asked whether to stop, the host says yes
  kFatal,    // in place of this callback the kernel reports a fatal error
  kForeign,  // it throws std::runtime_error
  kFull,     // from here on nothing fits on the disk
  kHalfFull  // half of this block fits, and nothing more
};

/// One thing that goes wrong in a run.
struct Injection {
  std::size_t place = 0;  // of the call among all that are counted, from 1
  Way way = Way::kNone;
  std::size_t room = 0;  // what still fits when the disk is full
};

/// A call as a run without an injection counted it; `path` and `bytes` are those of a written
/// block.
struct CountedCall {
  std::string function;
  std::string path;
  std::size_t bytes = 0;
};
using Counted = std::vector<CountedCall>;

/// Memory that a text asks for, with operator new.
inline constexpr const char* kTextMemory = "text";
/// What the kernel calls in its dialog.
inline constexpr const char* kCallback = "callback";

}  // namespace faults
