#include "faults/OutlineModel.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "support/FileBuilder.h"

namespace faults {
namespace {

constexpr std::size_t kPointSize = 24;
constexpr std::size_t kPointsInBlock = 2048;

std::uint64_t LittleEndian(const std::string& bytes, std::size_t place, std::size_t size) {
  std::uint64_t value = 0;
  for (std::size_t i = size; i > 0; --i) {
    value = value << 8U | static_cast<unsigned char>(bytes[place + i - 1]);
  }
  return value;
}

}  // namespace

void OutlineModel::Act() {
  const Triple c = Centre();
  const double s = 5e-5 / (kDistance * 0.5);
  const Change there = [&](double p, std::size_t axis) { return (p - c[axis]) * s; };
  const Change back = [&](double p, std::size_t axis) { return p / s + c[axis]; };

  now.flag = 0;
  for (std::size_t i = 0; i < 6; ++i) now.box[i] = there(now.box[i], i % 3);
  if (Exists(kInput)) Rewrite(kInput, kSurfaceHeaderSize, there);
  now.flag = RunKernel();
  if (Exists(kOutput)) Rewrite(kOutput, HeaderSize(), back);
  if (Exists(kInput)) Rewrite(kInput, kSurfaceHeaderSize, back);
  for (std::size_t i = 0; i < 6; ++i) now.box[i] = back(now.box[i], i % 3);
}

void OutlineModel::Rewrite(const std::string& file, std::size_t headerSize, const Change& change) {
  const bool isOpen = Call("m_fopen_hl");
  // The status is not looked at.
  Call("m_fopen_hl status");
  if (!isOpen) return;
  if (RewritePoints(file, headerSize, change)) {
    Call("m_fclose");
  } else {
    // What fails behind the opening leaves the stream open.
    now.streams.push_back("QZTUtlA " + file);
  }
}

bool OutlineModel::RewritePoints(const std::string& file, std::size_t headerSize,
                                 const Change& change) {
  const std::string before = now.files[file];
  // The header's text and the two counts.
  for (const std::size_t end : {headerSize, headerSize + 4, headerSize + 8}) {
    if (!Call("fread") || before.size() < end) return false;
  }
  std::size_t place = headerSize + 8;
  for (std::size_t left = LittleEndian(before, headerSize, 4); left > 0;) {
    const std::size_t wanted = std::min(left, kPointsInBlock);
    const std::size_t there = Call("fread") ? (before.size() - place) / kPointSize : 0;
    const std::size_t whole = std::min(wanted, there);
    support::FileBuilder block;
    for (std::size_t i = 0; i < 3 * whole; ++i) {
      const double p = std::bit_cast<double>(LittleEndian(before, place + 8 * i, 8));
      block.Double(change(p, i % 3));
    }
    if (!Call("fseek") || !Overwrite(file, place, block.Bytes()) || !Call("fseek")) return false;
    if (whole < wanted) return false;
    place += whole * kPointSize;
    left -= whole;
  }
  return true;
}

int OutlineModel::RunOnLoaded(const std::string& kernel, const std::function<void()>& run) {
  bool isLoaded = false;
  try {
    if (!Memory()) return 1;
    Kernel(kernel);
    Kernel("OpenInputChannel");
    isLoaded = Load(kInput, kInput, "input");
    if (isLoaded) run();
    return isLoaded ? 1 : 0;
  } catch (const Stop& stop) {
    return stop.byUser && !isLoaded ? 0 : 1;
  }
}

}  // namespace faults
