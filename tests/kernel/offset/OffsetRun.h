#pragma once

#include <cstdint>
#include <string>

#include "ResultChannel.h"
#include "formats/Mesh.h"

namespace offset_test {

using kernel_test::RecordingDialog;
using kernel_test::SweepResult;

/// One run of IFSphoffset. `channelMemory`: how many vertices and triangles the output takes before
/// it has no memory.
SweepResult RunOffset(const formats::Mesh& surface, double distance, double degrees = 0,
                      int throwAt = 0, std::size_t channelMemory = SIZE_MAX);

/// Stops the run at its first warning, which is returned; empty when there is none.
std::string FirstWarning(const formats::Mesh& surface, double distance, double degrees);

/// How far an offset may be from the exact one: the height of a chord that turns by so many
/// degrees.
double Allowed(double distance, double degrees);

/// Fails the test when a message was given, or when the result is not closed, edge-manifold and
/// outward, or has a facet of no area.
void ExpectSound(const SweepResult& run);

/// Fails the test when the result is not sound, or it and the exact offset are further apart than
/// allowed.
void ExpectFits(const SweepResult& run, const formats::Mesh& surface, double distance,
                double degrees);

/// Fails the test when the volume is further from the exact one than the allowed deviation
/// explains.
void ExpectVolume(const SweepResult& run, double exact, double distance, double degrees);

double AreaOf(const formats::Mesh& mesh);

/// How many bodies and cavities: pieces that hang together by their vertices.
int CountPieces(const formats::Mesh& mesh);

}  // namespace offset_test
