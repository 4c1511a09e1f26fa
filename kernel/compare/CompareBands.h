#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kernel {

// Deviations: the distance of a point to the stock's surface, above 0 inside the stock (material
// left standing), below 0 outside (gouge).
//
// The bands that a comparison tells apart. Band i holds the deviations above limit i - 1 and up to
// limit i; the last band is all that lies above the highest limit.
class CompareBands {
 public:
  // Limits in any order, each with its colour, and the colour above the last; where limits are
  // equal the first given counts. Colour 256 is the byte 0. Throws FatalError that names the band
  // (counted from 1) and the field when there is no band, a limit is not finite or a colour is
  // above 256.
  CompareBands(std::span<const double> limits, std::span<const unsigned> colours,
               unsigned colourAbove);

  // From now on deviations count as equal to a limit when they exceed it by no more than this: what
  // rounding makes of surfaces that lie exactly at a limit.
  void SetSlack(double slack) { m_slack = slack; }
  double Slack() const { return m_slack; }

  std::size_t BandOf(double deviation) const;
  // The deviations of band i: above Low(i), infinite for the first, and up to High(i), infinite for
  // the last.
  double Low(std::size_t band) const;
  double High(std::size_t band) const;
  std::uint8_t ColourOf(std::size_t band) const { return m_colours[band]; }

 private:
  std::vector<double> m_limits;  // ascending
  std::vector<std::uint8_t> m_colours;
  double m_slack = 0;
};

}  // namespace kernel
