// Any bytes as the only per-path file: the add-in's combiner and the converter behind it.
#include "InputFile.h"
#include "toolpaths/CombinePathInfoFiles.h"
#include "toolpaths/DumpBinaryPathsText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InputFile input("TmpPathInfo0.tmp");
  input.Write(data, size);
  if (CombinePathInfoFiles(input.AddInDirectory().c_str())) {
    DumpBinaryPathsText(input.AddInDirectory().c_str());
  }
  return 0;
}
