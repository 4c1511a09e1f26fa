#include "kernel/common/Workers.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace kernel {
namespace {

constexpr std::chrono::milliseconds kWatchInterval{25};

std::atomic<unsigned> workerLimit{0};

class Run {
 public:
  Run(std::size_t count, const std::function<void(std::size_t)>& task)
      : m_count(count), m_task(task) {}
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  ~Run() {
    m_stopped = true;
    for (std::thread& thread : m_threads) thread.join();
  }

  void Start(std::size_t threads) {
    m_threads.reserve(threads);
    for (std::size_t i = 0; i < threads; ++i) {
      {
        const std::lock_guard lock(m_mutex);
        ++m_running;
      }
      try {
        m_threads.emplace_back([this] { Work(); });
      } catch (const std::system_error&) {
        const std::lock_guard lock(m_mutex);
        --m_running;
        // The system has no thread left: those that run do the work.
        if (m_threads.empty()) throw;
        return;
      }
    }
  }

  // True when the run has ended; waits a moment at most.
  bool WaitForEnd() {
    std::unique_lock lock(m_mutex);
    return m_ended.wait_for(lock, kWatchInterval, [this] { return m_running == 0; });
  }

  std::size_t Finished() const { return m_finished; }

  void ThrowFailure() const {
    if (m_failure) std::rethrow_exception(m_failure);
  }

 private:
  void Work() {
    try {
      for (std::size_t i = m_next++; i < m_count && !m_stopped; i = m_next++) {
        m_task(i);
        ++m_finished;
      }
    } catch (...) {
      const std::lock_guard lock(m_mutex);
      if (!m_failure) m_failure = std::current_exception();
      m_stopped = true;
    }
    const std::lock_guard lock(m_mutex);
    if (--m_running == 0) m_ended.notify_one();
  }

  const std::size_t m_count;
  const std::function<void(std::size_t)>& m_task;
  std::atomic<std::size_t> m_next{0}, m_finished{0};
  std::atomic<bool> m_stopped{false};
  std::mutex m_mutex;
  std::condition_variable m_ended;
  std::size_t m_running = 0;
  std::exception_ptr m_failure;
  std::vector<std::thread> m_threads;
};

}  // namespace

unsigned WorkerCount() {
  constexpr unsigned kMost = 256;
  const unsigned limit = workerLimit;
  if (limit > 0) return std::min(limit, kMost);
  return std::clamp(std::thread::hardware_concurrency(), 1U, kMost);
}

void LimitWorkers(unsigned count) { workerLimit = count; }

void RunTasks(std::size_t count, const std::function<void(std::size_t)>& task,
              const std::function<void(std::size_t)>& watch) {
  if (count == 0) return;
  Run run(count, task);
  run.Start(std::min<std::size_t>(count, WorkerCount()));
  while (!run.WaitForEnd()) watch(run.Finished());
  run.ThrowFailure();
  watch(count);
}

}  // namespace kernel
