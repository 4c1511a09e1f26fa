#include "kernel/common/SymmetricEigen.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kernel {
namespace {

constexpr int kMostSweeps = 12;

using Matrix = std::array<std::array<double, 3>, 3>;

void Rotate(Matrix& a, Matrix& v, std::size_t p, std::size_t q) {
  if (a[p][q] == 0) return;
  const double theta = (a[q][q] - a[p][p]) / (2 * a[p][q]);
  const double t = (theta >= 0 ? 1 : -1) / (std::abs(theta) + std::sqrt(theta * theta + 1));
  const double c = 1 / std::sqrt(t * t + 1);
  const double s = t * c;
  const double apq = a[p][q];
  a[p][p] -= t * apq;
  a[q][q] += t * apq;
  a[p][q] = a[q][p] = 0;
  const std::size_t r = 3 - p - q;
  const double arp = a[r][p];
  const double arq = a[r][q];
  a[r][p] = a[p][r] = c * arp - s * arq;
  a[r][q] = a[q][r] = s * arp + c * arq;
  for (auto& row : v) {
    const double vp = row[p];
    const double vq = row[q];
    row[p] = c * vp - s * vq;
    row[q] = s * vp + c * vq;
  }
}

}  // namespace

std::array<EigenPair, 3> SymmetricEigen(const SymmetricMatrix& m) {
  Matrix a = {{{m[0], m[1], m[2]}, {m[1], m[3], m[4]}, {m[2], m[4], m[5]}}};
  Matrix v = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  const double scale = std::abs(m[0]) + std::abs(m[3]) + std::abs(m[5]);
  for (int sweep = 0; sweep < kMostSweeps; ++sweep) {
    const double off = std::abs(a[0][1]) + std::abs(a[0][2]) + std::abs(a[1][2]);
    if (off <= 1e-18 * scale) break;
    Rotate(a, v, 0, 1);
    Rotate(a, v, 0, 2);
    Rotate(a, v, 1, 2);
  }
  std::array<EigenPair, 3> pairs;
  for (std::size_t i = 0; i < 3; ++i) pairs[i] = {a[i][i], {v[0][i], v[1][i], v[2][i]}};
  std::stable_sort(pairs.begin(), pairs.end(),
                   [](const EigenPair& x, const EigenPair& y) { return x.value > y.value; });
  return pairs;
}

}  // namespace kernel
