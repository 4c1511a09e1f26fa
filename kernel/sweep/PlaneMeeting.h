#pragma once

#include <optional>
#include <span>

#include "kernel/sweep/SurfaceMakers.h"

namespace kernel {

// The point nearest to `from` on all of one, two or three planes; none when their normals are too
// close to parallel (or to one common plane) for the meeting to be sharp.
std::optional<Vec3> MeetPlanes(std::span<const TangentPlane> planes, const Vec3& from);

}  // namespace kernel
