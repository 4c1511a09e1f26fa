// Any bytes as the file that the add-in plays into a channel, in both modes.
#include "InputFile.h"
#include "stock/LoadBinarySurface.h"
#include "stock/SurfaceXferQZ.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("a.iff");
  static const std::string output = input.Path() + ".out";
  constexpr unsigned char colours[] = {0, 3, 3};
  input.Write(data, size);
  for (const short mode : {short{0}, short{1}}) {
    SurfaceXferQZ channel(output.c_str());
    LoadBinarySurface(input.Path().c_str(), &channel, mode, 3, colours);
  }
  return 0;
}
