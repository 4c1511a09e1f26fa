#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "stock/SurfaceTransfer.h"
#include "support/JobFiles.h"

/// A channel that lists what it is given. Handles are the vertices' numbers of arrival, from 1.
class ListChannel final : public SurfaceTransfer {
 public:
  /// Thrown by the operation whose number (from 1, all operations counted) is `throwAt`.
  struct Thrown {};

  int Reset() override;
  void* AddVertex(const double* xyz) override;
  void* AddTriangle(void* a, void* b, void* c, char colour) override;
  void Close() override;

  std::size_t throwAt = 0;
  std::size_t nullVertexFrom = 0;  // from this vertex on AddVertex returns null; 0: never

  support::Surface mesh;
  /// 'R', 'V', 'T', 'C' in the order of the calls.
  std::string calls;

 private:
  void Enter(char operation);
};
