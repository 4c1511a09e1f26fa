#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>

#include "kernel/common/Workers.h"
#include "kernel/offset/LocalOffset.h"

namespace kernel {

// Runs find(solid, i) for each i below `count` on all threads; each chunk, of `size` of them, has a
// solid of its own.
// `watch` hears the share that is done.
template <typename Find>
void ForEachInChunks(std::size_t count, const OffsetMakers& makers,
                     const std::function<void(double)>& watch, const Find& find,
                     std::size_t size = 1024) {
  const std::size_t chunks = (count + size - 1) / size;
  RunTasks(
      chunks,
      [&](std::size_t chunk) {
        const LocalOffset solid(makers);
        const std::size_t end = std::min(count, (chunk + 1) * size);
        for (std::size_t i = chunk * size; i < end; ++i) find(solid, i);
      },
      [&](std::size_t done) { watch(static_cast<double>(done) / static_cast<double>(chunks)); });
}

}  // namespace kernel
