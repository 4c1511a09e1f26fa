// CombinePathInfoFiles and DumpBinaryPathsText on one path of a million 5-axis positions.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>

#include "BestOfFive.h"
#include "CopyFileBytes.h"
#include "PlainCombinePathInfoFiles.h"
#include "PlainDumpBinaryPathsText.h"
#include "toolpaths/CombinePathInfoFiles.h"
#include "toolpaths/DumpBinaryPathsText.h"

namespace {

constexpr int kPositions = 1000000;

template <class Value>
void Put(FILE* out, Value value) {
  std::fwrite(&value, sizeof value, 1, out);
}

// Positions on a wavy sheet, axes tilted all ways: digits as a real program has them.
bool WritePathInfo(const std::string& path) {
  struct CloseFile {
    void operator()(FILE* stream) const { std::fclose(stream); }
  };
  const std::unique_ptr<FILE, CloseFile> file(std::fopen(path.c_str(), "wb"));
  FILE* out = file.get();
  if (out == nullptr) return false;
  Put(out, std::int16_t{2});
  Put(out, std::uint8_t{3});
  for (const double value : {0.025, 0.01, 0.05}) Put(out, value);
  for (int i = 0; i < 9; ++i) Put(out, i % 4 == 0 ? 1.0 : 0.0);
  for (int i = 0; i < 3; ++i) Put(out, 0.0);
  Put(out, std::int16_t{1});
  for (const double value : {5.0, 0.0, 0.0, 90.0, 0.0, 0.0}) Put(out, value);
  for (int i = 0; i < kPositions; ++i) {
    const double t = i * 1e-3;
    const double tilt = 0.3 * std::sin(t);
    for (const double value :
         {250 * std::sin(t / 7), 130 * std::cos(t / 3), 40 + 5 * std::sin(t),
          std::sin(tilt) * std::cos(t), std::sin(tilt) * std::sin(t), std::cos(tilt)}) {
      Put(out, value);
    }
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const BenchDirectory directory;
  const std::string& place = directory.Path();
  if (!WritePathInfo(place + "TmpPathInfo0.tmp")) return 1;
  if (!CombinePathInfoFiles(place.c_str()) || !DumpBinaryPathsText(place.c_str())) return 1;
  const auto combine = [&] { return CombinePathInfoFiles(place.c_str()); };
  const auto dump = [&] { return DumpBinaryPathsText(place.c_str()); };
  const double combinePeak = PeakMebibytes(combine);
  const double dumpPeak = PeakMebibytes(dump);
  BestOfFive runs;
  runs.Add("combine in blocks", combine);
  runs.Add("combine plain", [&] { return PlainCombinePathInfoFile(place); });
  runs.Add("copy of the paths",
           [&] { return CopyFileBytes(place + "TmpPathInfo0.tmp", place + "copy.tmp"); });
  runs.Add("text in blocks", dump);
  runs.Add("text plain", [&] { return PlainDumpBinaryPathsText(place); });
  runs.Add("copy of the text",
           [&] { return CopyFileBytes(place + "BinaryPaths.txt", place + "copy.txt"); });
  if (!runs.Run(argc, argv)) return 2;
  runs.PrintRatio("combine plain", "combine in blocks", "at least 2.5");
  runs.PrintRatio("combine in blocks", "copy of the paths", "aim: at most 1.5");
  runs.PrintRatio("text plain", "text in blocks", "at least 6");
  runs.PrintRatio("text in blocks", "copy of the text", "aim: at most 4");
  std::printf("peak memory: %.0f MiB combining, %.0f MiB writing the text\n", combinePeak,
              dumpPeak);
  return 0;
}
