#include "formats/curves/DxfFile.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "formats/TextBuilder.h"
#include "formats/curves/CurveMeasures.h"

namespace formats {
namespace {

using Point = std::array<double, 3>;

constexpr int closedFlag = 1;
constexpr int inSpaceFlag = 8;
constexpr int vertexInSpaceFlag = 32;

// Without an exponent, which not all readers understand, and with a point, by which they tell a
// real number. The fewest digits that read back as the same double.
std::string RealText(double value) {
  char digits[400];  // the smallest double takes 345 or fewer
  const auto end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed).ptr;
  std::string text(digits, end);
  if (text.find('.') == std::string::npos) text += ".0";
  return text;
}

// A file is a list of pairs: a group code that says what the value is, and the value.
class Groups {
 public:
  explicit Groups(const std::string& path) : m_text(path) {}

  void Add(int code, std::string_view value) { m_text.Add(code, "\n", value, "\n"); }
  void Add(int code, int value) { m_text.Add(code, "\n", value, "\n"); }
  void Add(const Point& point) {
    for (int axis = 0; axis < 3; ++axis) {
      Add(10 * (axis + 1), RealText(point[static_cast<std::size_t>(axis)]));
    }
  }
  void Variable(std::string_view name, const Point& value) {
    Add(9, name);
    Add(value);
  }
  void BeginSection(std::string_view name) {
    Add(0, "SECTION");
    Add(2, name);
  }
  void EndSection() { Add(0, "ENDSEC"); }
  // On the one layer that needs no table.
  void BeginEntity(std::string_view name) {
    Add(0, name);
    Add(8, "0");
  }
  void Finish() { m_text.Finish(); }

 private:
  TextBuilder m_text;
};

void WriteHeader(Groups& groups, const Curves& curves) {
  groups.BeginSection("HEADER");
  groups.Add(9, "$ACADVER");
  groups.Add(1, "AC1009");
  if (const std::optional<Box> box = BoxOf(curves)) {
    groups.Variable("$EXTMIN", box->lower);
    groups.Variable("$EXTMAX", box->upper);
  }
  groups.EndSection();
}

void WriteCurve(Groups& groups, const Curves& curves, const Curve& curve) {
  const auto place = [&](std::int32_t number) -> const Point& {
    return curves.points[static_cast<std::size_t>(number)];
  };
  const double height = place(curve.points.front())[2];
  const bool isFlat = std::all_of(curve.points.begin(), curve.points.end(),
                                  [&](std::int32_t number) { return place(number)[2] == height; });
  groups.BeginEntity("POLYLINE");
  groups.Add(66, 1);  // vertices follow
  groups.Add({0, 0, isFlat ? height : 0});
  groups.Add(70, isFlat ? closedFlag : closedFlag + inSpaceFlag);
  for (const std::int32_t number : curve.points) {
    groups.BeginEntity("VERTEX");
    groups.Add(place(number));
    if (!isFlat) groups.Add(70, vertexInSpaceFlag);
  }
  groups.BeginEntity("SEQEND");
}

}  // namespace

void WriteDxf(const std::string& path, const Curves& curves, DrawingUnit unit) {
  Groups groups(path);
  groups.Add(999, unit == DrawingUnit::Inch ? "lengths in inches" : "lengths in millimetres");
  WriteHeader(groups, curves);
  groups.BeginSection("ENTITIES");
  for (const Curve& curve : curves.curves) WriteCurve(groups, curves, curve);
  groups.EndSection();
  groups.Add(0, "EOF");
  groups.Finish();
}

}  // namespace formats
