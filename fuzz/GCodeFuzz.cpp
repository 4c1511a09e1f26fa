// Any bytes as a machining program: an error or a run, within bounds of time and memory.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "formats/FileError.h"
#include "formats/programs/GCodeProgram.h"

namespace {

// A line may ask for a million moves; a program of many such lines is only slow. It ends here.
class CountedMoves : public formats::GCodeMoves {
 public:
  void LoadTool(std::int32_t) override {}
  void Start(const formats::ToolTip&, formats::Motion) override { Count(); }
  void MoveTo(const formats::ToolTip&, formats::Motion) override { Count(); }

 private:
  void Count() {
    constexpr int kEnough = 200'000;
    if (++moves_ > kEnough) {
      throw formats::FileError("enough moves");
    }
  }
  int moves_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream program(std::string(data, data + size));
  CountedMoves moves;
  formats::GCodeOptions options;
  options.firstTool = 1;
  try {
    formats::RunGCode(program, "fuzz", options, moves);
  } catch (const formats::FileError&) {
  }
  return 0;
}
