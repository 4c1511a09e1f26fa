#include "BestOfFive.h"

#include <algorithm>
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

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

double ProcessorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

}  // namespace

void BestOfFive::Add(const std::string& name, std::function<bool()> work) {
  const auto body = [this, name, work = std::move(work)](benchmark::State& state) {
    for (auto _ : state) {
      const Clock::time_point start = Clock::now();
      const double processorStart = ProcessorSeconds();
      if (!work()) {
        std::fprintf(stderr, "%s failed\n", name.c_str());
        std::exit(1);
      }
      const Times times{SecondsSince(start), ProcessorSeconds() - processorStart};
      state.SetIterationTime(times.wall);
      Times& best = m_best.try_emplace(name, times).first->second;
      best.wall = std::min(best.wall, times.wall);
      best.processor = std::min(best.processor, times.processor);
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
  const auto first = m_best.find(a);
  const auto second = m_best.find(b);
  if (first == m_best.end() || second == m_best.end()) return;
  const Times& ofA = first->second;
  const Times& ofB = second->second;
  std::printf("%s / %s: %.2f (%s), processor time %.2f; best of five %.1f and %.1f ms\n", a.c_str(),
              b.c_str(), ofA.wall / ofB.wall, wanted.c_str(), ofA.processor / ofB.processor,
              1e3 * ofA.wall, 1e3 * ofB.wall);
}

double BestOfFive::ProcessorTime(const std::string& name) const {
  const auto found = m_best.find(name);
  return found == m_best.end() ? 0 : found->second.processor;
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
