#pragma once

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// A binary file put together field by field: little-endian, no padding.
class FileBuilder {
 public:
  FileBuilder& Text(std::string_view text);
  FileBuilder& Uint8(unsigned value);
  FileBuilder& Int16(int value);
  FileBuilder& Uint16(unsigned value);
  FileBuilder& Int32(std::int64_t value);
  FileBuilder& Uint32(std::uint32_t value);
  FileBuilder& Floats(std::initializer_list<float> values);
  FileBuilder& Double(double value);
  FileBuilder& Doubles(std::initializer_list<double> values);
  FileBuilder& Doubles(const std::vector<double>& values);

  const std::string& Bytes() const { return m_bytes; }
  void Save(const std::filesystem::path& path) const;

 private:
  FileBuilder& LittleEndian(std::uint64_t value, int size);
  std::string m_bytes;
};

}  // namespace support
