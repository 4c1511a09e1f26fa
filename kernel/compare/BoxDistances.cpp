#include "kernel/compare/FacetBoxes.h"

namespace kernel {
namespace {

constexpr float Away(float low, float high, float at) {
  const float below = low - at;
  const float above = at - high;
  const float outside = below > above ? below : above;
  return outside > 0.0F ? outside : 0.0F;
}

}  // namespace

void FacetBoxes::Boxes::SquaredDistances(const Place& place, float* __restrict squares) const {
  for (std::size_t c = 0; c < kWidth; ++c) {
    const float x = Away(low[0][c], high[0][c], place.at[0]);
    const float y = Away(low[1][c], high[1][c], place.at[1]);
    const float z = Away(low[2][c], high[2][c], place.at[2]);
    squares[c] = x * x + y * y + z * z;
  }
}

}  // namespace kernel
