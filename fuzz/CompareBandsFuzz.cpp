// Any bytes as the file of compare bands, and what is accepted as text.
#include <cstdio>

#include "InputFile.h"
#include "stock/CompareBands.h"
#include "stock/WriteCompareBandsText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("bands.tmp");
  static const std::string output = input.Path() + ".txt";
  input.Write(data, size);
  FILE* stream = std::fopen(input.Path().c_str(), "rb");
  CompareBands bands;
  const bool accepted = ReadCompareBands(stream, &bands) && HaveHostColours(bands);
  std::fclose(stream);
  // Of very many the text is long and always the same.
  if (!accepted || bands.divisions > 1000) return 0;
  FILE* text = std::fopen(output.c_str(), "w");
  WriteCompareBandsText(bands, text);
  std::fclose(text);
  return 0;
}
