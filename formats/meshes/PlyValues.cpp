#include "formats/meshes/PlyValues.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "formats/BinaryReader.h"
#include "formats/meshes/TextScanner.h"

namespace formats {
namespace {

class AsciiValues : public PlyValues {
 public:
  AsciiValues(const std::string& path, const PlyHeader& header) : scanner_(path) {
    // The scanner passes over empty lines, the header's count has them.
    while (scanner_.LineNumber() < header.lines) scanner_.NextLine();
    scanner_.SkipLine();
  }

  void BeginElements(const PlyElement& element) override {
    if (element.count > scanner_.BytesLeft()) Fail("the file ends within its " + element.name);
  }

  void BeginElement() override {
    if (!scanner_.NextLine()) Fail("the file ends where a line should stand");
  }

  double Value(PlyType type) override {
    const double value = scanner_.Number("a value");
    const bool whole = type != PlyType::Float && type != PlyType::Double;
    if (whole && value != std::floor(value)) Fail("a whole number should stand here");
    return value;
  }

  void Fail(const std::string& reason) const override { scanner_.Fail(reason); }

 protected:
  void CheckRoom(std::uint64_t, PlyType) const override {}  // the line's end is room's end

 private:
  TextScanner scanner_;
};

class BinaryValues : public PlyValues {
 public:
  BinaryValues(const std::string& path, const PlyHeader& header)
      : reader_(path), swap_(header.encoding == PlyEncoding::BigEndian) {
    std::vector<char> text(static_cast<std::size_t>(header.size));
    reader_.ReadBytes(text.data(), text.size(), "header");
  }

  void BeginElements(const PlyElement& element) override {
    reader_.RequireRecords(element.count, element.SmallestSize(), element.name);
  }

  void BeginElement() override {}

  double Value(PlyType type) override {
    switch (type) {
      case PlyType::Int8:
        return Read<std::int8_t>();
      case PlyType::UInt8:
        return Read<std::uint8_t>();
      case PlyType::Int16:
        return Read<std::int16_t>();
      case PlyType::UInt16:
        return Read<std::uint16_t>();
      case PlyType::Int32:
        return Read<std::int32_t>();
      case PlyType::UInt32:
        return Read<std::uint32_t>();
      case PlyType::Float:
        return Read<float>();
      case PlyType::Double:
        break;
    }
    return Read<double>();
  }

  void Fail(const std::string& reason) const override { reader_.Fail(reason, reader_.Offset()); }

 protected:
  void CheckRoom(std::uint64_t entries, PlyType type) const override {
    reader_.RequireRecords(entries, SizeOf(type), "list");
  }

 private:
  template <typename T>
  T Read() {
    char bytes[sizeof(T)];
    reader_.ReadBytes(bytes, sizeof bytes, "value");
    if (swap_) std::reverse(bytes, bytes + sizeof bytes);
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
  }

  BinaryReader reader_;
  bool swap_;
};

}  // namespace

std::vector<double> PlyValues::List(const PlyProperty& property) {
  const double count = Value(property.countType);
  // A binary count has 32 bits at most; an ASCII one may be anything.
  if (!(count >= 0 && count <= 4294967295.0)) Fail("a list's count is out of range");
  const auto entries = static_cast<std::uint64_t>(count);
  CheckRoom(entries, property.type);
  std::vector<double> values;
  for (std::uint64_t i = 0; i < entries; ++i) values.push_back(Value(property.type));
  return values;
}

std::unique_ptr<PlyValues> OpenPlyValues(const std::string& path, const PlyHeader& header) {
  if (header.encoding == PlyEncoding::Ascii) return std::make_unique<AsciiValues>(path, header);
  return std::make_unique<BinaryValues>(path, header);
}

}  // namespace formats
