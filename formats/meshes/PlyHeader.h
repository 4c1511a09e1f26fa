#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace formats {

enum class PlyEncoding { Ascii, LittleEndian, BigEndian };

enum class PlyType { Int8, UInt8, Int16, UInt16, Int32, UInt32, Float, Double };

std::size_t SizeOf(PlyType type);

struct PlyProperty {
  std::string name;
  PlyType type = PlyType::Float;  // of the value, or of each entry of a list
  bool isList = false;
  PlyType countType = PlyType::UInt8;  // lists only
};

struct PlyElement {
  std::string name;
  std::uint64_t count = 0;
  std::vector<PlyProperty> properties;

  // Fewest bytes that one such element takes in a binary file: lists may be empty.
  std::uint64_t SmallestSize() const;
};

struct PlyHeader {
  PlyEncoding encoding = PlyEncoding::Ascii;
  std::vector<PlyElement> elements;  // in the order in which they follow
  std::uint64_t size = 0;            // bytes, the line end behind "end_header" included
  std::uint64_t lines = 0;
};

// Throws FileError.
PlyHeader ReadPlyHeader(const std::string& path);

}  // namespace formats
