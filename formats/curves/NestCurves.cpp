// Which curve lies in which, by a sweep along x (as in de Berg et al., Computational Geometry,
// chapter 2). The pieces that a line x = constant cuts stand in a set, from the lowest to the
// highest. A curve begins at its leftmost point, the lowest of these; the piece just below it
// belongs to the curve around it, or to one beside it that has the same one around it.
//
// Upright pieces stand in no set. Pieces that touch are told apart by where they lie just to the
// right of the place. Orientations are those of doubles: of what lies closer together than they are
// exact, either may come out as the lower. Curves that cross give some answer, in no more time.

#include "formats/curves/NestCurves.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>
#include <utility>

namespace formats {
namespace {

// Products of two lengths must not overflow.
constexpr double kLargestCoordinate = 1e150;

struct Place {
  double x, y;

  bool IsUsable() const {
    return std::abs(x) <= kLargestCoordinate && std::abs(y) <= kLargestCoordinate;
  }
};

struct Piece {
  Place left, right;
  std::size_t curve;
  bool goesRight;  // along its curve

  // Of pieces that begin at one x, the lower one's is the smaller.
  std::tuple<double, double, double> BeginningKey() const {
    return {left.x, left.y, (right.y - left.y) / (right.x - left.x)};
  }
};

// Above 0 when c lies to the left of the way from a to b.
double Orientation(const Place& a, const Place& b, const Place& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// Whether a lies below b, just to the right of where both have begun.
struct LiesBelow {
  const std::vector<Piece>& pieces;

  bool operator()(std::size_t first, std::size_t second) const {
    const Piece& a = pieces[first];
    const Piece& b = pieces[second];
    if (a.left.x == b.left.x && a.left.y != b.left.y) return a.left.y < b.left.y;
    const bool aIsFirst = a.left.x <= b.left.x;
    const Piece& earlier = aIsFirst ? a : b;
    const Piece& later = aIsFirst ? b : a;
    double side = Orientation(earlier.left, earlier.right, later.left);
    if (side == 0) side = Orientation(earlier.left, earlier.right, later.right);
    if (side == 0) return first < second;
    return (side > 0) == aIsFirst;
  }
};

class Sweep {
 public:
  Sweep(const Curves& curves, std::vector<CurveMeasures>& measures)
      : m_measures(measures), m_below(LiesBelow{m_pieces}) {
    for (std::size_t i = 0; i < curves.curves.size(); ++i) AddCurve(curves, i);
  }

  void Run() {
    std::vector<std::size_t> beginnings = Numbers(m_pieces.size());
    std::vector<std::size_t> ends = beginnings;
    SortBy(beginnings, [this](std::size_t i) { return m_pieces[i].left.x; });
    SortBy(ends, [this](std::size_t i) { return m_pieces[i].right.x; });
    // From the lowest up, so that those of the curves below are known.
    SortBy(m_lowestFirstPieces, [this](std::size_t i) { return m_pieces[i].BeginningKey(); });
    m_positions.resize(m_pieces.size());
    auto end = ends.begin();
    auto first = m_lowestFirstPieces.begin();
    for (auto next = beginnings.begin(); next != beginnings.end();) {
      const double x = m_pieces[*next].left.x;
      for (; m_pieces[*end].right.x <= x; ++end) m_below.erase(m_positions[*end]);
      for (; next != beginnings.end() && m_pieces[*next].left.x == x; ++next) {
        m_positions[*next] = m_below.insert(*next);
      }
      for (; first != m_lowestFirstPieces.end() && m_pieces[*first].left.x == x; ++first) {
        PlaceCurve(*first);
      }
    }
  }

 private:
  static std::vector<std::size_t> Numbers(std::size_t count) {
    std::vector<std::size_t> numbers(count);
    for (std::size_t i = 0; i < count; ++i) numbers[i] = i;
    return numbers;
  }

  template <typename Key>
  static void SortBy(std::vector<std::size_t>& numbers, Key key) {
    std::sort(numbers.begin(), numbers.end(), [&key](std::size_t a, std::size_t b) {
      return std::make_tuple(key(a), a) < std::make_tuple(key(b), b);
    });
  }

  void AddCurve(const Curves& curves, std::size_t number) {
    const std::vector<Place> places = PlacesOf(curves, curves.curves[number]);
    if (!std::all_of(places.begin(), places.end(),
                     [](const Place& place) { return place.IsUsable(); })) {
      return;
    }
    const std::size_t before = m_pieces.size();
    for (std::size_t i = 0; i < places.size(); ++i) {
      const Place& a = places[i];
      const Place& b = places[i + 1 == places.size() ? 0 : i + 1];
      if (a.x < b.x) m_pieces.push_back({a, b, number, true});
      if (b.x < a.x) m_pieces.push_back({b, a, number, false});
    }
    if (m_pieces.size() > before) m_lowestFirstPieces.push_back(LowestFirstPiece(before));
  }

  static std::vector<Place> PlacesOf(const Curves& curves, const Curve& curve) {
    std::vector<Place> places;
    places.reserve(curve.points.size());
    for (const std::int32_t number : curve.points) {
      const auto& point = curves.points[static_cast<std::size_t>(number)];
      places.push_back({point[0], point[1]});
    }
    return places;
  }

  // Of those from `from` on.
  std::size_t LowestFirstPiece(std::size_t from) const {
    const auto lowest = std::min_element(
        m_pieces.begin() + static_cast<std::ptrdiff_t>(from), m_pieces.end(),
        [](const Piece& a, const Piece& b) { return a.BeginningKey() < b.BeginningKey(); });
    return static_cast<std::size_t>(lowest - m_pieces.begin());
  }

  void PlaceCurve(std::size_t lowestFirstPiece) {
    const auto position = m_positions[lowestFirstPiece];
    if (position == m_below.begin()) return;
    const Piece& below = m_pieces[*std::prev(position)];
    const std::size_t curve = m_pieces[lowestFirstPiece].curve;
    if (below.curve == curve) return;
    const CurveMeasures& neighbour = m_measures[below.curve];
    const bool isInside = neighbour.area != 0 && below.goesRight == (neighbour.area > 0);
    CurveMeasures& measures = m_measures[curve];
    measures.outside = isInside ? below.curve : neighbour.outside;
    measures.depth = neighbour.depth + (isInside ? 1 : 0);
  }

  // Takes in two that rounding makes equal, too.
  using Set = std::multiset<std::size_t, LiesBelow>;

  std::vector<CurveMeasures>& m_measures;
  std::vector<Piece> m_pieces;
  std::vector<std::size_t> m_lowestFirstPieces;  // a piece for each curve that has any
  std::vector<Set::iterator> m_positions;        // of the pieces
  Set m_below;
};

}  // namespace

void NestCurves(const Curves& curves, std::vector<CurveMeasures>& measures) {
  Sweep(curves, measures).Run();
}

}  // namespace formats
