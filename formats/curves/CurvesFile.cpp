#include "formats/curves/CurvesFile.h"

#include <string_view>

#include "formats/BinaryReader.h"
#include "formats/OpenFile.h"

namespace formats {
namespace {

constexpr std::string_view plainHeader = "binary curves";
constexpr std::string_view treeHeader = "binary tree_curves";
constexpr std::uint64_t pointSize = 3 * sizeof(double);
constexpr std::uint64_t segmentSize = 2 * sizeof(std::int32_t);
constexpr std::int32_t fewestSegments = 2;

// The longer header's beginning is as long as the shorter one, and another text.
CurvesVariant ReadHeader(BinaryReader& reader) {
  std::string header(plainHeader.size(), '\0');
  reader.ReadBytes(header.data(), header.size(), "header");
  if (header == plainHeader) return CurvesVariant::Plain;
  if (treeHeader.starts_with(header)) {
    std::string rest(treeHeader.size() - header.size(), '\0');
    reader.ReadBytes(rest.data(), rest.size(), "header");
    if (header + rest == treeHeader) return CurvesVariant::Tree;
  }
  reader.Fail("the header is neither \"binary curves\" nor \"binary tree_curves\"", 0);
}

std::int32_t ReadCount(BinaryReader& reader, std::string_view field) {
  const std::uint64_t offset = reader.Offset();
  const auto count = reader.Read<std::int32_t>(field);
  if (count < 0) reader.Fail("the " + std::string(field) + " is negative", offset);
  return count;
}

class CurveReader {
 public:
  CurveReader(BinaryReader& reader, CurvesVariant variant, std::size_t pointCount)
      : m_reader(reader), m_variant(variant), m_pointCount(pointCount) {}

  Curve Read() {
    Curve curve;
    const std::int32_t segments = ReadSegmentCount();
    if (m_variant == CurvesVariant::Tree) {
      for (std::int32_t& field : curve.treeFields) {
        field = m_reader.Read<std::int32_t>("curve's tree fields");
      }
    }
    const auto count = static_cast<std::size_t>(segments);
    m_reader.RequireRecords(count, segmentSize, "curve's segments");
    curve.points.reserve(count);
    for (std::size_t i = 0; i < count; ++i) ReadSegment(curve);
    if (m_end != curve.points.front()) {
      Refuse("the curve ends at point ", m_end, curve.points.front(), ", where it starts");
    }
    return curve;
  }

 private:
  std::int32_t ReadSegmentCount() {
    const std::uint64_t offset = m_reader.Offset();
    const auto count = m_reader.Read<std::int32_t>("curve's segment count");
    if (count < fewestSegments) {
      m_reader.Fail("the curve's segment count " + std::to_string(count) + " is below 2", offset);
    }
    return count;
  }

  void ReadSegment(Curve& curve) {
    const std::int32_t start = ReadPointNumber("segment's start");
    if (!curve.points.empty() && start != m_end) {
      Refuse("the segment starts at point ", start, m_end, ", where the one before it ends");
    }
    m_end = ReadPointNumber("segment's end");
    curve.points.push_back(start);
  }

  std::int32_t ReadPointNumber(std::string_view field) {
    const std::uint64_t offset = m_reader.Offset();
    const auto number = m_reader.Read<std::int32_t>(field);
    if (number < 1 || static_cast<std::size_t>(number) > m_pointCount) {
      m_reader.Fail("the " + std::string(field) + " " + std::to_string(number) + " is not in 1.." +
                        std::to_string(m_pointCount),
                    offset);
    }
    return number - 1;
  }

  // Of the number that was read last.
  [[noreturn]] void Refuse(const std::string& what, std::int32_t is, std::int32_t expected,
                           const std::string& where) const {
    m_reader.Fail(
        what + std::to_string(is + 1) + " and not at " + std::to_string(expected + 1) + where,
        m_reader.Offset() - sizeof is);
  }

  BinaryReader& m_reader;
  CurvesVariant m_variant;
  std::size_t m_pointCount;
  std::int32_t m_end = 0;  // of the segment before
};

}  // namespace

const char* NameOf(CurvesVariant variant) {
  return variant == CurvesVariant::Tree ? treeHeader.data() : plainHeader.data();
}

std::optional<CurvesVariant> CurvesVariantByContent(const std::string& path) {
  std::ifstream stream = OpenForReading(path);
  std::string head(treeHeader.size(), '\0');
  stream.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(stream.gcount()));
  if (head == treeHeader) return CurvesVariant::Tree;
  if (head.starts_with(plainHeader)) return CurvesVariant::Plain;
  return std::nullopt;
}

Curves ReadCurves(const std::string& path) {
  BinaryReader reader(path);
  Curves curves;
  curves.variant = ReadHeader(reader);
  const auto pointCount = static_cast<std::size_t>(ReadCount(reader, "point count"));
  curves.segments = ReadCount(reader, "segment count");
  reader.RequireRecords(pointCount, pointSize, "points");
  curves.points.resize(pointCount);
  reader.ReadBytes(curves.points.data(), pointCount * pointSize, "points");
  CurveReader curveReader(reader, curves.variant, pointCount);
  while (reader.Remaining() > 0) curves.curves.push_back(curveReader.Read());
  return curves;
}

}  // namespace formats
