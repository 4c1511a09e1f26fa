#pragma once

#include <vector>

#include "formats/Mesh.h"
#include "formats/ToolpathRecords.h"

namespace support {

/// One cutting job of known outcome. Millimetres; the stock is the box 0, 0, 0 to 100, 100, 50 in
/// colour 1, the path's colour is 2, its sweep tolerance 0.025.
struct SweepInput {
  formats::Mesh stock;
  formats::PathRecord path;
  double volumeLeft = 0;
};

/// A zigzag over a waved surface, z = 40 + 5 sin(x / 10) cos(y / 10) at the tip of a ball cutter of
/// radius 5, rows along x.
SweepInput WavedSurface(double stepAlong, double stepOver, double volumeLeft);

SweepInput SweepInputA();  // 5,150 moves, steps 1 and 2
SweepInput SweepInputB();  // 40,500 moves, steps 0.25 and 1
SweepInput SweepInputC();  // 35 moves: a pocket 20 deep, flat cutter of radius 6

}  // namespace support
