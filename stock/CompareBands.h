#pragma once

#include <memory>

#include "platform/SystemTypes.h"

/// How a part is coloured by its distance from the stock: `divisions` colours, each with the
/// distance up to which it goes, and the colour of what lies beyond. Colours are the host's
/// numbers, distances in the host's unit; the arrays may be written to by whoever gets them.
struct CompareBands {
  unsigned int stockColour = 0;
  int divisions = 0;
  std::unique_ptr<unsigned int[]> colours;
  std::unique_ptr<double[]> distances;
};

/// Reads the bands as the host wrote them: stock colour, number of divisions, all colours, all
/// distances. False when the two numbers are not there, there is no division, or there is no
/// memory. Colours and distances that the file does not hold are 0, and that is no failure, except
/// where more than a million (2 to the 20th) are announced and most of either are missing.
bool ReadCompareBands(FILE* stream, CompareBands* bands);

/// Whether every colour is one that the host has: 0 to 256.
bool HaveHostColours(const CompareBands& bands);
