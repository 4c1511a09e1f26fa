#include "toolpaths/DumpBinaryPathsText.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>

#include "SystemApi.h"
#include "blocks/BlockReader.h"
#include "toolpaths/InterchangeText.h"

namespace {

enum PathType : std::int32_t { kThreeAxis = 1, kFiveAxis = 2 };
enum ToolType : std::int32_t { kConvex = 1, kUndercut = 2, kCustom = 3 };

constexpr std::array<std::string_view, 9> kMatrixComments = {
    "matrix[0,0]", "matrix[0,1]", "matrix[0,2]", "matrix[1,0]", "matrix[1,1]",
    "matrix[1,2]", "matrix[2,0]", "matrix[2,1]", "matrix[2,2]"};
constexpr std::array<std::string_view, 3> kOriginComments = {"origin[0]", "origin[1]", "origin[2]"};
constexpr std::array<std::string_view, 6> kConvexComments = {
    "corner radius",     "flat radius",  "upper taper angle",
    "lower taper angle", "taper height", "upper bevel radius"};
constexpr std::array<std::string_view, 6> kFlipComments = {
    "flip corner radius",     "flip flat radius",  "flip upper taper angle",
    "flip lower taper angle", "flip taper height", "flip upper bevel radius"};
constexpr std::array<std::string_view, 6> kRegularComments = {
    "regular corner radius",     "regular flat radius",  "regular upper taper angle",
    "regular lower taper angle", "regular taper height", "regular upper bevel radius"};

// Reads a field, checks it, writes its line, and so on to the end: what is wrong or missing stops
// the conversion behind the lines of everything in front of it.
class Conversion {
 public:
  Conversion(FILE* binary, FILE* text) : m_in(binary), m_out(text) {}

  bool Run();

 private:
  bool Delimiter();
  bool Version();
  bool Path();
  bool PathType(std::int32_t* type);
  bool ToolBlock();
  bool UndercutTool();
  bool CustomTool();
  bool ArcPiece();
  bool LinePiece();
  bool Cut(std::int32_t pathType);
  bool Positions(std::int32_t pathType, std::uint32_t count);

  bool Integer(std::string_view comment);
  bool Number(std::string_view comment);
  bool Flag(std::string_view comment);
  bool EachNumber(std::span<const std::string_view> comments);
  template <std::size_t kCount>
  bool NumberBlock(const std::array<std::string_view, kCount>& comments);
  bool Count(std::uint32_t* count, std::string_view comment);

  BlockReader m_in;
  InterchangeText m_out;
};

bool Conversion::Run() {
  std::uint32_t paths = 0;
  if (!Delimiter() || !Version() || !m_in.Read(&paths)) return false;
  // The counts are unsigned but printed signed: -1 stands for 4294967295, which runs on until the
  // data gives out.
  if (!m_out.Integer(static_cast<std::int32_t>(paths), "number of paths (0 or more)")) return false;
  for (std::uint32_t i = 0; i < paths; ++i) {
    if (!Path()) return false;
  }
  return m_out.Flush();
}

bool Conversion::Delimiter() {
  // Compared with nothing, and printed only up to its first zero byte.
  char delimiter[17] = {};
  return m_in.Read(delimiter, 16) && m_out.Text(delimiter, "16 chars delimiter is not written");
}

bool Conversion::Version() {
  std::int32_t version = 0;
  return m_in.Read(&version) && version == 0 && m_out.Integer(0, "file format version");
}

bool Conversion::Path() {
  std::int32_t pathType = 0;
  if (!PathType(&pathType)) return false;
  if (!Integer("color") || !Number("sweepToler (aka toolToler)") || !Number("pathToler") ||
      !Number("compressToler")) {
    return false;
  }
  if (!NumberBlock(kMatrixComments) || !NumberBlock(kOriginComments) || !ToolBlock()) return false;
  std::uint32_t cuts = 0;
  if (!Count(&cuts, "number of Cuts (1 or more)")) return false;
  for (std::uint32_t i = 0; i < cuts; ++i) {
    if (!Cut(pathType)) return false;
  }
  return true;
}

bool Conversion::PathType(std::int32_t* type) {
  return m_in.Read(type) && (*type == kThreeAxis || *type == kFiveAxis) &&
         m_out.Integer(*type, "pathType 1=3-axis, 2=5-axis");
}

bool Conversion::ToolBlock() {
  std::int32_t type = 0;
  if (!m_in.Read(&type) || type < kConvex || type > kCustom) return false;
  if (!m_out.Integer(type, "tool type 1=standard convex, 2=standard undercut, 3=standard custom")) {
    return false;
  }
  switch (type) {
    case kConvex:
      return NumberBlock(kConvexComments);
    case kUndercut:
      return UndercutTool();
    default:
      return CustomTool();
  }
}

bool Conversion::UndercutTool() {
  return Number("arm radius") && Number("arm height") && Flag("use flip tool") &&
         EachNumber(kFlipComments) && Flag("use regular tool") && EachNumber(kRegularComments);
}

bool Conversion::CustomTool() {
  std::int32_t arcs = 0;
  std::int32_t lines = 0;
  if (!m_in.Read(&arcs) || !m_out.Integer(arcs, "number of custom arc segments")) return false;
  if (!m_in.Read(&lines) || !m_out.Integer(lines, "number of custom line segments")) return false;
  if (arcs < 0 || lines < 0 || (arcs == 0 && lines == 0)) return false;
  for (std::int32_t i = 0; i < arcs; ++i) {
    if (!ArcPiece()) return false;
  }
  for (std::int32_t i = 0; i < lines; ++i) {
    if (!LinePiece()) return false;
  }
  return true;
}

bool Conversion::ArcPiece() {
  return Integer("custom arc piece index") && Number("radius") && Number("angle Min") &&
         Number("angle Max") && Number("flat Length") && Flag("flip") && Flag("convex");
}

bool Conversion::LinePiece() {
  return Integer("custom line piece index") && Number("height") && Number("taper Angle") &&
         Number("flat Length") && Flag("flip");
}

bool Conversion::Cut(std::int32_t pathType) {
  std::uint32_t positions = 0;
  return Count(&positions, "number of Tool Positions (1 or more)") &&
         Positions(pathType, positions);
}

bool Conversion::Positions(std::int32_t pathType, std::uint32_t count) {
  const std::size_t size = (pathType == kFiveAxis ? 6 : 3) * sizeof(double);
  while (count > 0) {
    const BlockReader::Records records = m_in.ReadRecords(size, count);
    if (records.count == 0) return false;
    for (std::size_t i = 0; i < records.count; ++i) {
      double position[6];
      std::memcpy(position, records.bytes + i * size, size);
      const bool written = pathType == kFiveAxis
                               ? m_out.Triple(position, " 5axis tip position") &&
                                     m_out.Triple(position + 3, " 5axis ijk vector")
                               : m_out.Triple(position, " 3axis tip position");
      if (!written) return false;
    }
    count -= static_cast<std::uint32_t>(records.count);
  }
  return true;
}

bool Conversion::Integer(std::string_view comment) {
  std::int32_t value = 0;
  return m_in.Read(&value) && m_out.Integer(value, comment);
}

bool Conversion::Number(std::string_view comment) {
  double value = 0;
  return m_in.Read(&value) && m_out.Number(value, comment);
}

bool Conversion::Flag(std::string_view comment) {
  unsigned char value = 0;
  return m_in.Read(&value) && m_out.Flag(value != 0, comment);
}

bool Conversion::EachNumber(std::span<const std::string_view> comments) {
  for (std::string_view comment : comments) {
    if (!Number(comment)) return false;
  }
  return true;
}

// All of the block is read before its first line is written: a block that is cut short leaves no
// line.
template <std::size_t kCount>
bool Conversion::NumberBlock(const std::array<std::string_view, kCount>& comments) {
  double values[kCount];
  if (!m_in.Read(&values)) return false;
  for (std::size_t i = 0; i < kCount; ++i) {
    if (!m_out.Number(values[i], comments[i])) return false;
  }
  return true;
}

bool Conversion::Count(std::uint32_t* count, std::string_view comment) {
  return m_in.Read(count) && *count != 0 &&
         m_out.Integer(static_cast<std::int32_t>(*count), comment);
}

struct CloseStdFile {
  void operator()(FILE* stream) const { std::fclose(stream); }
};
using StdFile = std::unique_ptr<FILE, CloseStdFile>;

StdFile Open(const CString& path, const char* mode) {
  FILE* stream = nullptr;
  return StdFile(fopen_s(&stream, path.GetString(), mode) == 0 ? stream : nullptr);
}

}  // namespace

bool DumpBinaryPathsText(CString workingDirectory) {
  const StdFile binary = Open(workingDirectory + "BinaryPaths.tmp", "rb");
  if (binary == nullptr) return false;
  const StdFile text = Open(workingDirectory + "BinaryPaths.txt", "w");
  if (text == nullptr) return false;
  return Conversion(binary.get(), text.get()).Run();
}
