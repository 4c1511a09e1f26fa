#pragma once

#include <functional>
#include <queue>
#include <vector>

#include "formats/Mesh.h"
#include "host/measure/FacetTree.h"

namespace host {

enum class Side { kAny, kInside, kOutside };

struct Ball {
  Point centre{};
  double radius = 0;
};

/// How far one surface gets from another, not at sample points but anywhere on it.
///
/// Branch and bound: the distance from one facet of the other surface is a convex function, so over
/// a piece it is largest at a corner, and the other surface is nowhere further than its facet.
/// Pieces whose bound is above the largest distance found are quartered, the highest bound first,
/// until none is left.
class FarthestPoint {
 public:
  using StopAsked = std::function<bool()>;

  /// Both must outlive the object. When the user asks to stop, Search returns what it has.
  FarthestPoint(const formats::Mesh& from, const FacetTree& to, StopAsked stopAsked);

  struct Found {
    double distance = 0;
    Point place{};     // on the first surface; without meaning when the distance is 0
    double bound = 0;  // proven: no point is further away
  };

  /// When a search ends: `bound` is above `distance` by no more than this share of it, or so many
  /// pieces have been quartered.
  struct Effort {
    double accuracy = 1e-3;
    std::size_t pieces = 40'000;
  };

  /// The farthest point on that side of the other surface and outside the balls.
  Found Search(Side side, const std::vector<Ball>& leftOut, const Effort& effort) const;

 private:
  struct Corner {
    Point place{};
    double distance = 0;
    std::int32_t facet = -1;
  };
  struct Piece {
    std::array<Corner, 3> corners;
    Corner centre;
    double radius = 0;  // about the centre
    double bound = 0;
  };
  class Run;

  Corner Ask(const Point& place) const;
  Piece MakePiece(const std::array<Corner, 3>& corners) const;
  std::array<Piece, 4> Quarter(const Piece& piece) const;
  bool IsOnSide(const Corner& corner, Side side) const;

  const FacetTree& m_to;
  StopAsked m_stopAsked;
  std::vector<Piece> m_facets;
};

}  // namespace host
