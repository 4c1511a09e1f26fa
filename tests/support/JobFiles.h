#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace support {

/// A mesh as a binary surface file holds it.
struct Surface {
  struct Facet {
    std::array<std::int32_t, 3> numbers;  // one-based
    unsigned char colour = 0;
    bool operator==(const Facet&) const = default;
  };
  std::vector<std::array<double, 3>> vertices;
  std::vector<Facet> facets;
  bool operator==(const Surface&) const = default;
};

/// An axis-parallel cube from the origin, closed and outward, 8 vertices and 12 facets.
Surface Cube(double edge, unsigned char colour);

/// A right-angled triangle in the plane z = 0, two edges of length `size`.
Surface OneFacet(double size, unsigned char colour);

std::string BinarySurfaceBytes(const Surface& surface);

/// The bands of a comparison. `divisions` is what the file says; the lists may be shorter.
struct Bands {
  std::int32_t stockColour = 0;
  std::int32_t divisions = 0;
  std::vector<std::uint32_t> colours;
  std::vector<double> distances;
  bool operator==(const Bands&) const = default;
};

std::string CompareInfoBytes(const Bands& bands);

struct ConvexBlock {
  std::array<double, 6> values{0, 5, 0, 90, 0, 0};  // corner and flat radius, tapers, height, bevel
};

struct UndercutBlock {
  bool useFlip = true;
  bool useRegular = true;
  std::array<double, 14> values{};
};

struct CustomBlock {
  struct Arc {
    std::int32_t index;
    std::array<double, 4> values;  // radius, angle Min, angle Max, flat Length
    bool flip;
    bool convex;
  };
  struct Line {
    std::int32_t index;
    std::array<double, 3> values;  // height, taper Angle, flat Length
    bool flip;
  };
  std::vector<Arc> arcs;
  std::vector<Line> lines;
};

/// One toolpath with ordinary values throughout; a test changes what it is about.
struct Path {
  std::int16_t pathType = 1;
  std::uint8_t colour = 3;
  double sweepToler = 0.025;
  double pathToler = 0.0125;
  double compressToler = 0.05;
  std::array<double, 9> matrix{1, 0, 0, 0, 1, 0, 0, 0, 1};
  std::array<double, 3> origin{0, 0, 0};
  std::variant<ConvexBlock, UndercutBlock, CustomBlock> tool;  // tool types 1, 2, 3
  std::vector<double> positions{0, 0, 10, 20, 0, 10};          // three or six doubles a position
};

/// A per-path file: everything up to the positions, and the whole.
std::string PathInfoHeadBytes(const Path& path);
std::string PathInfoBytes(const Path& path);

/// The interchange file that carries these paths, each with one cut of all its positions. (What
/// the combiner makes of an undercut tool is another matter: it drops the block.)
std::string InterchangeBytes(const std::vector<Path>& paths);

}  // namespace support
