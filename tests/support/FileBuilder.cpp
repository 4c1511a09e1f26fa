#include "support/FileBuilder.h"

#include <bit>

#include "support/TempDirectory.h"

namespace support {

FileBuilder& FileBuilder::Text(std::string_view text) {
  m_bytes += text;
  return *this;
}

FileBuilder& FileBuilder::Uint8(unsigned value) { return LittleEndian(value, 1); }

FileBuilder& FileBuilder::Int16(int value) {
  return LittleEndian(static_cast<std::uint64_t>(value), 2);
}

FileBuilder& FileBuilder::Uint16(unsigned value) { return LittleEndian(value, 2); }

FileBuilder& FileBuilder::Int32(std::int64_t value) {
  return LittleEndian(static_cast<std::uint64_t>(value), 4);
}

FileBuilder& FileBuilder::Uint32(std::uint32_t value) { return LittleEndian(value, 4); }

FileBuilder& FileBuilder::Floats(std::initializer_list<float> values) {
  for (const float value : values) LittleEndian(std::bit_cast<std::uint32_t>(value), 4);
  return *this;
}

FileBuilder& FileBuilder::Double(double value) {
  return LittleEndian(std::bit_cast<std::uint64_t>(value), 8);
}

FileBuilder& FileBuilder::Doubles(std::initializer_list<double> values) {
  for (const double value : values) Double(value);
  return *this;
}

FileBuilder& FileBuilder::Doubles(const std::vector<double>& values) {
  for (const double value : values) Double(value);
  return *this;
}

void FileBuilder::Save(const std::filesystem::path& path) const { WriteWholeFile(path, m_bytes); }

FileBuilder& FileBuilder::LittleEndian(std::uint64_t value, int size) {
  for (int i = 0; i < size; ++i) m_bytes += static_cast<char>(value >> (8 * i) & 0xff);
  return *this;
}

}  // namespace support
