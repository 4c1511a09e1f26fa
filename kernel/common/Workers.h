#pragma once

#include <cstddef>
#include <functional>

namespace kernel {

// How many threads the kernel uses: one for each core, unless LimitWorkers has set another number.
unsigned WorkerCount();

// From now on `count` threads, 0 for one a core again. For checks that results do not depend on it.
void LimitWorkers(unsigned count);

// Runs task(0) .. task(count - 1), each once, in any order, on WorkerCount() threads of its own.
// The calling thread runs none of them: it calls `watch` with the number of finished tasks, at
// least every 50 ms and once at the end, so that callbacks come on time however long a task takes.
// The first exception of a task or of `watch` stops the run: tasks that have not begun are left
// out, all threads are joined, and it is thrown to the caller.
void RunTasks(std::size_t count, const std::function<void(std::size_t)>& task,
              const std::function<void(std::size_t)>& watch);

}  // namespace kernel
