#include "BestOfFive.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

void BestOfFive::Add(const std::string& name, std::function<bool()> work) {
  const auto body = [this, name, work = std::move(work)](benchmark::State& state) {
    for (auto _ : state) {
      const Clock::time_point start = Clock::now();
      if (!work()) {
        std::fprintf(stderr, "%s failed\n", name.c_str());
        std::exit(1);
      }
      const double seconds = SecondsSince(start);
      state.SetIterationTime(seconds);
      const auto best = m_bestSeconds.try_emplace(name, seconds).first;
      if (seconds < best->second) best->second = seconds;
    }
  };
  benchmark::RegisterBenchmark(name.c_str(), body)
      ->Iterations(1)
      ->Repetitions(5)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}

bool BestOfFive::Run(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return false;
  benchmark::RunSpecifiedBenchmarks();
  return true;
}

void BestOfFive::PrintRatio(const std::string& a, const std::string& b,
                            const std::string& wanted) const {
  const auto first = m_bestSeconds.find(a);
  const auto second = m_bestSeconds.find(b);
  if (first == m_bestSeconds.end() || second == m_bestSeconds.end()) return;
  std::printf("%s / %s: %.2f (%s); best of five %.1f ms and %.1f ms\n", a.c_str(), b.c_str(),
              first->second / second->second, wanted.c_str(), 1e3 * first->second,
              1e3 * second->second);
}

BenchDirectory::BenchDirectory() {
  const std::filesystem::path memory = "/dev/shm";
  const std::filesystem::path root =
      std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
  m_path = (root / "qz-bench-XXXXXX").string();
  if (mkdtemp(m_path.data()) == nullptr) {
    std::fprintf(stderr, "cannot make a directory for the measured files\n");
    std::exit(1);
  }
  m_path += '/';
}

BenchDirectory::~BenchDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

double PeakMebibytes(const std::function<bool()>& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work() ? 0 : 1);
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) return 0;
  return static_cast<double>(usage.ru_maxrss) / 1024;
}
