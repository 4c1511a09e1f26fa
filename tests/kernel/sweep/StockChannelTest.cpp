// The channel that takes a mesh, when memory runs out.

#include <gtest/gtest.h>
#include <new>

#include "FailingAllocation.h"
#include "kernel/sweep/StockChannel.h"

namespace {

using kernel_test::FailingAllocation;

constexpr double kPlaces[4][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

// Plays a tetrahedron without looking at what the channel returns.
void Play(kernel::StockChannel* channel) {
  channel->Reset();
  void* v[4] = {};
  for (int i = 0; i < 4; ++i) v[i] = channel->AddVertex(kPlaces[i]);
  channel->AddTriangle(v[0], v[2], v[1], 7);
  channel->AddTriangle(v[0], v[1], v[3], 7);
  channel->AddTriangle(v[1], v[2], v[3], 7);
  channel->AddTriangle(v[2], v[0], v[3], 7);
  channel->Close();
}

TEST(StockChannel, MeshThatMemoryWasTooShortForIsNotGivenOut) {
  kernel::StockChannel channel;
  long all = 0;
  {
    const FailingAllocation counting(0);
    Play(&channel);
    all = counting.Allocations();
  }
  ASSERT_GE(all, 2);
  EXPECT_EQ(channel.Mesh().facets.size(), 4u);
  for (long n = 1; n <= all; ++n) {
    {
      const FailingAllocation failing(n);
      Play(&channel);
    }
    EXPECT_THROW(channel.Mesh(), std::bad_alloc) << n;
    // The next mesh is another matter.
    Play(&channel);
    EXPECT_EQ(channel.Mesh().facets.size(), 4u) << n;
  }
}

}  // namespace
