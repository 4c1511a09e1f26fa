// Any bytes as the file that the add-in plays into a channel, in both modes.
#include <cstring>

#include "InputFile.h"
#include "stock/LoadBinarySurface.h"
#include "stock/SurfaceXferQZ.h"

namespace {

// The loader asks for an array of the announced number of vertices before it knows that the file is
// shorter. Untouched, the array costs nothing; the sanitizer's shadow of it does.
bool AnnouncesTooManyVertices(const std::uint8_t* data, std::size_t size) {
  std::int32_t count = 0;
  if (size >= 14 + sizeof count) std::memcpy(&count, data + 14, sizeof count);
  return count > 1'000'000;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.iff");
  static const std::string output = input.Path() + ".out";
  constexpr unsigned char colours[] = {0, 3, 3};
  if (AnnouncesTooManyVertices(data, size)) return 0;
  input.Write(data, size);
  for (const short mode : {short{0}, short{1}}) {
    SurfaceXferQZ channel(output.c_str());
    LoadBinarySurface(input.Path().c_str(), &channel, mode, 3, colours);
  }
  return 0;
}
