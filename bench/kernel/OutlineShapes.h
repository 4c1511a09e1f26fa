#pragma once

#include "formats/Mesh.h"

/// r = 50 (1 + 0.2 sin 5 theta sin 4 phi), theta from the pole; fans around the poles.
formats::Mesh Blob(int grid);

/// A ball of radius 10 about the x axis, of round (round - 2) facets in rings around it, each
/// coordinate of each vertex moved by no more than `jitter`, the same in each run.
formats::Mesh TurnedBall(int round, double jitter);
