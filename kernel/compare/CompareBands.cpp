#include "kernel/compare/CompareBands.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <string>

#include "kernel/common/FatalError.h"

namespace kernel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::uint8_t ColourByte(unsigned colour, const std::string& place) {
  if (colour > 256) {
    throw FatalError(place + " is above 256: " + std::to_string(colour));
  }
  return static_cast<std::uint8_t>(colour & 0xFFU);
}

}  // namespace

CompareBands::CompareBands(std::span<const double> limits, std::span<const unsigned> colours,
                           unsigned colourAbove) {
  if (limits.empty()) throw FatalError("the number of divisions is below 1");
  const std::uint8_t above = ColourByte(colourAbove, "the stock's colour");
  std::vector<std::size_t> order(limits.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  for (const std::size_t i : order) {
    if (std::isfinite(limits[i])) continue;
    throw FatalError("band " + std::to_string(i + 1) + ": the distance is not finite");
  }
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return limits[a] < limits[b]; });
  for (const std::size_t i : order) {
    m_limits.push_back(limits[i]);
    m_colours.push_back(ColourByte(colours[i], "band " + std::to_string(i + 1) + ": the colour"));
  }
  m_colours.push_back(above);
}

std::size_t CompareBands::BandOf(double deviation) const {
  const auto first =
      std::lower_bound(m_limits.begin(), m_limits.end(), deviation,
                       [this](double limit, double value) { return limit + m_slack < value; });
  return static_cast<std::size_t>(first - m_limits.begin());
}

double CompareBands::Low(std::size_t band) const {
  return band == 0 ? -kInfinity : m_limits[band - 1] + m_slack;
}

double CompareBands::High(std::size_t band) const {
  return band == m_limits.size() ? kInfinity : m_limits[band] + m_slack;
}

}  // namespace kernel
