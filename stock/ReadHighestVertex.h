#pragma once

#include "platform/SystemTypes.h"

/// Reads a binary surface file up to its last vertex and keeps the one with the greatest z; of
/// several the first. `xyz`: three doubles. Neither the header's text nor the number of triangles
/// is looked at. False when the file ends before that or has no vertex.
bool ReadHighestVertex(FILE* stream, double* xyz);
