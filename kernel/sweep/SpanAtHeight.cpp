// At share s of its move the tool's section at the ray's height is a disc of radius rho(s), its
// centre s B away from the start across the ray and s A along it. The ray's span ends at the
// largest and the smallest A s +- sqrt(rho(s)^2 - t^2), t = y - s B: a concave and a convex
// function of s on the shares at which the disc reaches the ray. Each piece of the outline holds
// for the shares at which the ray's height lies on it; the span is the union of what the pieces
// give.
#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "kernel/common/FindRoot.h"
#include "kernel/sweep/UprightRays.h"

namespace kernel {
namespace {

struct Span {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  void Include(double a, double b) {
    low = std::min(low, a);
    high = std::max(high, b);
  }
};

struct Shares {
  double first, last;

  bool HasInside() const { return first < last; }

  // Keeps where constant + slope * s > 0.
  void KeepPositive(double constant, double slope) {
    if (slope > 0) {
      first = std::max(first, -constant / slope);
    } else if (slope < 0) {
      last = std::min(last, -constant / slope);
    } else if (constant <= 0) {
      last = first;
    }
  }
};

// The ray and the move, in a frame that has the ray along the first axis.
struct Crossing {
  double along, across, up;  // the move
  double y, z;               // where the ray runs
};

bool SpanOfLevelMove(double rho, const Crossing& c, Span& span) {
  if (c.across == 0) {
    if (std::abs(c.y) >= rho) return false;
    const double half = std::sqrt((rho - c.y) * (rho + c.y));
    span.Include(std::min(0.0, c.along) - half, std::max(0.0, c.along) + half);
    return true;
  }
  Shares shares{0, 1};
  shares.KeepPositive(rho - c.y, c.across);
  shares.KeepPositive(rho + c.y, -c.across);
  if (!shares.HasInside()) return false;
  const double farthest =
      -c.along * std::copysign(rho, c.across) / std::sqrt(c.along * c.along + c.across * c.across);
  const auto shareAt = [&](double t) {
    return std::clamp((c.y - t) / c.across, shares.first, shares.last);
  };
  const auto half = [&](double share) {
    const double t = c.y - share * c.across;
    return std::sqrt(std::max(0.0, (rho - t) * (rho + t)));
  };
  const double high = shareAt(farthest);
  const double low = shareAt(-farthest);
  span.Include(c.along * low - half(low), c.along * high + half(high));
  return true;
}

// A cone or a cylinder: rho is linear in s, so rho^2 - t^2 is a product of two linear factors p m,
// and at the ends of the span sqrt(p / m) solves a quadratic equation.
void AddLine(const ProfilePiece& piece, const Crossing& c, Shares shares, Span& span) {
  const double widening = -piece.startNormal.z / piece.startNormal.r;
  const double rho = piece.start.r + (c.z - piece.start.z) * widening;
  const double slope = -widening * c.up;
  const double p0 = rho - c.y;
  const double p1 = slope + c.across;
  const double m0 = rho + c.y;
  const double m1 = slope - c.across;
  shares.KeepPositive(p0, p1);
  shares.KeepPositive(m0, m1);
  if (!shares.HasInside()) return;
  const auto include = [&](double s) {
    const double half = std::sqrt(std::max(0.0, (p0 + s * p1) * (m0 + s * m1)));
    span.Include(c.along * s - half, c.along * s + half);
  };
  include(shares.first);
  include(shares.last);
  const double discriminant = c.along * c.along - p1 * m1;
  if (discriminant < 0) return;
  const double sum = -(c.along + std::copysign(std::sqrt(discriminant), c.along));
  const auto includeRatio = [&](double numerator, double denominator) {
    if (denominator == 0) return;
    const double square = (numerator / denominator) * (numerator / denominator);
    const double s = (square * m0 - p0) / (p1 - square * m1);
    if (s > shares.first && s < shares.last) include(s);
  };
  includeRatio(sum, m1);
  includeRatio(p1, sum);
}

void AddSphere(const ProfilePiece& piece, const Crossing& c, Shares shares, Span& span) {
  const double z = c.z - piece.centre.z;
  const double moved = c.up * c.up + c.across * c.across;
  const double nearest = (z * c.up + c.y * c.across) / moved;
  const double distance = std::abs(z * c.across - c.y * c.up) / std::sqrt(moved);
  if (distance >= piece.radius) return;
  const double square = (piece.radius - distance) * (piece.radius + distance);
  const double reach = std::sqrt(square / moved);
  shares.first = std::max(shares.first, nearest - reach);
  shares.last = std::min(shares.last, nearest + reach);
  if (!shares.HasInside()) return;
  const double best = c.along * std::sqrt(square / (moved * (moved + c.along * c.along)));
  const auto half = [&](double s) {
    return std::sqrt(std::max(0.0, square - moved * (s - nearest) * (s - nearest)));
  };
  const double high = std::clamp(nearest + best, shares.first, shares.last);
  const double low = std::clamp(nearest - best, shares.first, shares.last);
  span.Include(c.along * low - half(low), c.along * high + half(high));
}

// A ring: no closed form on a ramp. All signs searched for change once.
void AddRing(const ProfilePiece& piece, const Crossing& c, Shares shares, Span& span) {
  const double z = c.z - piece.centre.z;
  const auto root = [&](double s) {
    const double h = z - s * c.up;
    return std::sqrt(std::max(0.0, (piece.radius - h) * (piece.radius + h)));
  };
  const auto radius = [&](double s) { return piece.centre.r + root(s); };
  const auto offset = [&](double s) { return c.y - s * c.across; };
  const auto excess = [&](double s) { return std::abs(offset(s)) - radius(s); };
  const auto search = [](auto&& function, double first, double last) {
    const double atFirst = function(first);
    const double atLast = function(last);
    if (atFirst >= 0) return first;
    if (atLast <= 0) return last;
    return FindRoot(function, first, atFirst, last, atLast);
  };
  const double deepest = search(
      [&](double s) {
        return -std::copysign(c.across, offset(s) * c.across) * root(s) - (z - s * c.up) * c.up;
      },
      shares.first, shares.last);
  if (excess(deepest) >= 0) return;
  if (excess(shares.first) > 0) {
    shares.first = search([&](double s) { return -excess(s); }, shares.first, deepest);
  }
  if (excess(shares.last) > 0) shares.last = search(excess, deepest, shares.last);
  if (!shares.HasInside()) return;
  const auto half = [&](double s) {
    return std::sqrt(std::max(0.0, (radius(s) - offset(s)) * (radius(s) + offset(s))));
  };
  const auto fall = [&](double s, double along) {
    return -(along * half(s) * root(s) + radius(s) * (z - s * c.up) * c.up +
             c.across * offset(s) * root(s));
  };
  const double high = search([&](double s) { return fall(s, c.along); }, shares.first, shares.last);
  const double low = search([&](double s) { return fall(s, -c.along); }, shares.first, shares.last);
  span.Include(c.along * low - half(low), c.along * high + half(high));
}

// The shares at which the ray's height lies on the piece.
Shares SharesOf(const ProfilePiece& piece, const Crossing& c) {
  const double toStart = (c.z - piece.start.z) / c.up;
  const double toEnd = (c.z - piece.end.z) / c.up;
  return {std::max(0.0, std::min(toStart, toEnd)), std::min(1.0, std::max(toStart, toEnd))};
}

}  // namespace

bool SpanAtHeight(const ConvexTool& tool, const Vec3& move, double y, double z, double& low,
                  double& high) {
  const Crossing crossing{move.x, move.y, move.z, y, z};
  Span span;
  if (move.z == 0) {
    if (z <= 0 || !SpanOfLevelMove(tool.RadiusAt(z), crossing, span)) return false;
  } else {
    for (const ProfilePiece& piece : tool.Profile()) {
      const bool isFlat = piece.end.z <= piece.start.z;
      const Shares shares = SharesOf(piece, crossing);
      if (isFlat || !shares.HasInside()) continue;
      if (!piece.isArc) {
        AddLine(piece, crossing, shares, span);
      } else if (piece.centre.r == 0) {
        AddSphere(piece, crossing, shares, span);
      } else {
        AddRing(piece, crossing, shares, span);
      }
    }
  }
  low = span.low;
  high = span.high;
  return low < high;
}

}  // namespace kernel
