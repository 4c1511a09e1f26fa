#include "kernel/compare/FacetLeaf.h"

namespace kernel {
namespace {

constexpr std::size_t kWidth = FacetLeaf::kWidth;

constexpr float Least(float a, float b) { return a < b ? a : b; }
constexpr float Within01(float a) {
  const float atLeast = a > 0.0F ? a : 0.0F;
  return atLeast < 1.0F ? atLeast : 1.0F;
}

void SetAxes(float (&axes)[3][kWidth], std::size_t i, const Vec3& direction) {
  for (int axis = 0; axis < 3; ++axis) axes[axis][i] = static_cast<float>(direction[axis]);
}

}  // namespace

FacetLeaf::FacetLeaf() {
  for (std::size_t i = 0; i < kWidth; ++i) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      origin[axis][i] = 1e18F;
      along[axis][i] = across[axis][i] = 0;
      normal[axis][i] = 1;
    }
    length[i] = apex[i] = height[i] = overLeft[i] = overRight[i] = 0;
  }
}

void FacetLeaf::Set(std::size_t i, const FacetBoxes& boxes, const TriangleFrame& frame) {
  const FacetBoxes::Place place = boxes.PlaceOf(frame.Origin());
  for (std::size_t axis = 0; axis < 3; ++axis) origin[axis][i] = place.at[axis];
  SetAxes(along, i, frame.Along());
  SetAxes(across, i, frame.Across());
  SetAxes(normal, i, frame.Normal());
  const double scale = boxes.Scale();
  const double l = frame.Length() * scale, k = frame.Apex() * scale, h = frame.Height() * scale;
  const auto over = [](double square) {
    return static_cast<float>(square > 1e-30 ? 1 / square : 0);
  };
  length[i] = static_cast<float>(l);
  apex[i] = static_cast<float>(k);
  height[i] = static_cast<float>(h);
  overLeft[i] = over(k * k + h * h);
  overRight[i] = over((l - k) * (l - k) + h * h);
}

void FacetLeaf::SquaredDistances(const FacetBoxes::Place& place, float* __restrict squares) const {
  for (std::size_t i = 0; i < kWidth; ++i) {
    const float ax = place.at[0] - origin[0][i];
    const float ay = place.at[1] - origin[1][i];
    const float az = place.at[2] - origin[2][i];
    const float x = ax * along[0][i] + ay * along[1][i] + az * along[2][i];
    const float y = ax * across[0][i] + ay * across[1][i] + az * across[2][i];
    const float z = ax * normal[0][i] + ay * normal[1][i] + az * normal[2][i];
    const float l = length[i], k = apex[i], h = height[i];
    const float back = l - x, rest = l - k;
    // The longest side, then the two others.
    const float before = x < 0.0F ? x : 0.0F;
    const float behind = back < 0.0F ? back : 0.0F;
    const float base = before * before + behind * behind + y * y;
    const float t = Within01((x * k + y * h) * overLeft[i]);
    const float leftX = x - t * k, leftY = y - t * h;
    const float s = Within01((back * rest + y * h) * overRight[i]);
    const float rightX = back - s * rest, rightY = y - s * h;
    const float sides =
        Least(base, Least(leftX * leftX + leftY * leftY, rightX * rightX + rightY * rightY));
    // Below 0 where the point lies beyond a side.
    const float inner = Least(y, Least(x * h - y * k, back * h - y * rest));
    squares[i] = z * z + (inner < 0.0F ? sides : 0.0F);
  }
}

}  // namespace kernel
