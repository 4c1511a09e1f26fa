#pragma once

#include <benchmark/benchmark.h>
#include <functional>
#include <map>
#include <string>

/// Runs benchmarks five times each and keeps the best time, so that what the machine does besides
/// counts as little as possible.
class BestOfFive {
 public:
  /// `work` is one whole run; false ends the program, a time of a failed run means nothing.
  void Add(const std::string& name, std::function<bool()> work);

  /// Runs everything added, printing the usual table. False when the arguments are wrong.
  bool Run(int argc, char** argv);

  /// Prints how much longer `a` takes than `b`, and what the ratio ought to be. The ratio of the
  /// processor times tells more when the machine is busy with other things.
  void PrintRatio(const std::string& a, const std::string& b, const std::string& wanted) const;

  /// The least processor time of a run, in seconds, over all threads; 0 when it was not run.
  double ProcessorTime(const std::string& name) const;

 private:
  struct Times {
    double wall;
    double processor;
  };
  std::map<std::string, Times> m_best;
};

/// A directory of the program's own on the memory file system where there is one, with a trailing
/// separator; removed with all its files at the end.
class BenchDirectory {
 public:
  BenchDirectory();
  ~BenchDirectory();
  BenchDirectory(const BenchDirectory&) = delete;
  BenchDirectory& operator=(const BenchDirectory&) = delete;

  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
};

/// The most memory that `work`, run in a process of its own, holds at a time; 0 when it failed.
/// Call it before this process has grown.
double PeakMebibytes(const std::function<bool()>& work);
