#include "formats/meshes/PlyHeader.h"

#include <charconv>
#include <fstream>
#include <map>
#include <sstream>
#include <string_view>

#include "formats/FileError.h"
#include "formats/OpenFile.h"

namespace formats {
namespace {

// Nobody's header is longer; a binary file could be one endless line.
constexpr std::size_t longestLine = 4096;
constexpr std::uint64_t mostLines = 10000;

class HeaderReader {
 public:
  explicit HeaderReader(const std::string& path) : path_(path), stream_(OpenForReading(path)) {}

  PlyHeader Read() {
    if (NextLine() != "ply") Fail("the file does not begin with \"ply\"");
    bool formatSeen = false;
    for (;;) {
      const std::string line = NextLine();
      std::istringstream words(line);
      std::string keyword;
      words >> keyword;
      if (keyword == "end_header") break;
      if (keyword == "format") {
        ReadFormat(words);
        formatSeen = true;
      } else if (keyword == "element") {
        ReadElement(words);
      } else if (keyword == "property") {
        ReadProperty(words);
      } else if (keyword != "comment" && keyword != "obj_info" && !keyword.empty()) {
        Fail("the header has a statement that is not known");
      }
    }
    if (!formatSeen) Fail("the header names no format");
    return header_;
  }

 private:
  // Without its line end, whichever system's it is.
  std::string NextLine() {
    ++header_.lines;
    if (header_.lines > mostLines) Fail("the header does not end");
    std::string line;
    for (;;) {
      const int c = stream_.get();
      if (c == std::char_traits<char>::eof()) Fail("the file ends within the header");
      ++header_.size;
      if (c == '\n') break;
      line += static_cast<char>(c);
      if (line.size() > longestLine) Fail("a line of the header does not end");
    }
    if (line.ends_with('\r')) line.pop_back();
    return line;
  }

  std::string Word(std::istringstream& words, const char* what) {
    std::string word;
    if (!(words >> word)) Fail(std::string("the line ends where ") + what + " should stand");
    return word;
  }

  void ReadFormat(std::istringstream& words) {
    static const std::map<std::string, PlyEncoding> encodings = {
        {"ascii", PlyEncoding::Ascii},
        {"binary_little_endian", PlyEncoding::LittleEndian},
        {"binary_big_endian", PlyEncoding::BigEndian}};
    const auto found = encodings.find(Word(words, "the format"));
    if (found == encodings.end()) Fail("the format is not known");
    header_.encoding = found->second;
  }

  void ReadElement(std::istringstream& words) {
    PlyElement element;
    element.name = Word(words, "the element's name");
    const std::string count = Word(words, "the element's count");
    const char* end = count.data() + count.size();
    const auto [stop, error] = std::from_chars(count.data(), end, element.count);
    if (error != std::errc() || stop != end) Fail("the element's count is no whole number");
    header_.elements.push_back(element);
  }

  void ReadProperty(std::istringstream& words) {
    if (header_.elements.empty()) Fail("a property stands ahead of every element");
    PlyProperty property;
    std::string type = Word(words, "the property's type");
    if (type == "list") {
      property.isList = true;
      property.countType = TypeNamed(Word(words, "the type of the list's count"));
      if (property.countType == PlyType::Float || property.countType == PlyType::Double) {
        Fail("the list's count is no whole number");
      }
      type = Word(words, "the type of the list's entries");
    }
    property.type = TypeNamed(type);
    property.name = Word(words, "the property's name");
    header_.elements.back().properties.push_back(property);
  }

  PlyType TypeNamed(const std::string& name) {
    static const std::map<std::string, PlyType> types = {
        {"char", PlyType::Int8},     {"int8", PlyType::Int8},     {"uchar", PlyType::UInt8},
        {"uint8", PlyType::UInt8},   {"short", PlyType::Int16},   {"int16", PlyType::Int16},
        {"ushort", PlyType::UInt16}, {"uint16", PlyType::UInt16}, {"int", PlyType::Int32},
        {"int32", PlyType::Int32},   {"uint", PlyType::UInt32},   {"uint32", PlyType::UInt32},
        {"float", PlyType::Float},   {"float32", PlyType::Float}, {"double", PlyType::Double},
        {"float64", PlyType::Double}};
    const auto found = types.find(name);
    if (found == types.end()) Fail("a property's type is not known");
    return found->second;
  }

  [[noreturn]] void Fail(const std::string& reason) const {
    throw FileError(path_ + ": " + reason + " (line " + std::to_string(header_.lines) + ")");
  }

  std::string path_;
  std::ifstream stream_;
  PlyHeader header_;
};

}  // namespace

std::size_t SizeOf(PlyType type) {
  switch (type) {
    case PlyType::Int8:
    case PlyType::UInt8:
      return 1;
    case PlyType::Int16:
    case PlyType::UInt16:
      return 2;
    case PlyType::Int32:
    case PlyType::UInt32:
    case PlyType::Float:
      return 4;
    case PlyType::Double:
      break;
  }
  return 8;
}

std::uint64_t PlyElement::SmallestSize() const {
  std::uint64_t size = 0;
  for (const PlyProperty& property : properties) {
    size += SizeOf(property.isList ? property.countType : property.type);
  }
  return size;
}

PlyHeader ReadPlyHeader(const std::string& path) { return HeaderReader(path).Read(); }

}  // namespace formats
