#pragma once

#include <cstdint>

namespace formats {

struct Rgb {
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;

  bool operator==(const Rgb&) const = default;
};

// What a colour number looks like in files that hold colours as red, green and blue. The host keeps
// its own palette to itself, so this one is ours: fixed for good, 256 different colours, each as
// far from those before it as the grid of colours allows.
Rgb RgbOfColour(std::uint8_t colour);

// The colour number that looks most like it: its own for a colour of the table, else the nearest by
// red, green and blue, of equally near ones the lowest.
std::uint8_t ColourOfRgb(const Rgb& rgb);

}  // namespace formats
