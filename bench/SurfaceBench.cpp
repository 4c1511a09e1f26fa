// LoadBinarySurface into a SurfaceXferQZ and Close: five million vertices, ten million triangles.

#include <cmath>
#include <cstdio>
#include <vector>

#include "BestOfFive.h"
#include "CopyFileBytes.h"
#include "PlainSurface.h"
#include "SameBytes.h"
#include "stock/LoadBinarySurface.h"
#include "stock/SurfaceXferQZ.h"

namespace {

constexpr std::int32_t kColumns = 2500;
constexpr std::int32_t kRows = 2000;
constexpr double kMebibyte = 1024 * 1024;

// A closed sheet over a torus-like grid: two triangles a vertex, neighbours close in the file, as a
// contoured mesh has them.
bool WriteGrid(const std::string& path) {
  PlainSurfaceXfer channel(path.c_str());
  std::vector<void*> handles;
  handles.reserve(std::size_t{kColumns} * kRows);
  for (std::int32_t row = 0; row < kRows; ++row) {
    for (std::int32_t column = 0; column < kColumns; ++column) {
      const double xyz[3] = {column * 0.04, row * 0.05, std::sin(column * 0.01 + row * 0.02)};
      handles.push_back(channel.AddVertex(xyz));
    }
  }
  const auto at = [&](std::int32_t row, std::int32_t column) {
    return handles[static_cast<std::size_t>((row % kRows) * kColumns + column % kColumns)];
  };
  for (std::int32_t row = 0; row < kRows; ++row) {
    for (std::int32_t column = 0; column < kColumns; ++column) {
      const auto colour = static_cast<char>(column / 100);
      channel.AddTriangle(at(row, column), at(row, column + 1), at(row + 1, column), colour);
      channel.AddTriangle(at(row, column + 1), at(row + 1, column + 1), at(row + 1, column),
                          colour);
    }
  }
  channel.Close();
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const BenchDirectory directory;
  const std::string input = directory.Path() + "input.iff";
  const std::string blocksOutput = directory.Path() + "blocks.iff";
  const std::string plainOutput = directory.Path() + "plain.iff";
  const std::string copy = directory.Path() + "copy.iff";
  const auto inBlocks = [&] {
    SurfaceXferQZ channel(blocksOutput.c_str());
    return LoadBinarySurface(input.c_str(), &channel, 0, 0, nullptr);
  };
  const auto plain = [&] {
    PlainSurfaceXfer channel(plainOutput.c_str());
    return PlainLoadSurface(input.c_str(), &channel);
  };
  // In a process of its own: this one must not have grown when the peak is taken.
  PeakMebibytes([&] { return WriteGrid(input); });
  const double peak = PeakMebibytes(inBlocks);
  BestOfFive runs;
  runs.Add("surface in blocks", inBlocks);
  runs.Add("surface plain", plain);
  runs.Add("copy of the surface", [&] { return CopyFileBytes(input, copy); });
  if (!runs.Run(argc, argv)) return 2;
  runs.PrintRatio("surface plain", "surface in blocks", "at least 4");
  runs.PrintRatio("surface in blocks", "copy of the surface", "aim: at most 3");
  std::printf("peak memory: %.0f MiB (under 700), file %.0f MiB\n", peak,
              (22 + 24.0 * kColumns * kRows + 13.0 * 2 * kColumns * kRows) / kMebibyte);
  const bool same = SameBytes(blocksOutput, plainOutput);
  std::printf("outputs of both: %s\n", same ? "the same bytes" : "DIFFERENT");
  return same ? 0 : 1;
}
