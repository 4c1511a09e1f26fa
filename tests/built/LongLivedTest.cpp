// A host's day in one process: operations one after the other, and the add-in loaded again and
// again. What the process holds must be the same in the evening as in the morning.

#include <cstdio>
#include <gtest/gtest.h>
#include <list>

#include "built/BuiltJobs.h"
#include "built/FaultyHost.h"
#include "built/ProcessFigures.h"
#include "built/Workplace.h"
#include "host/QZCore/HostControl.h"
#include "host/qzhost/AddIn.h"

namespace {

// Less than a hundred operations or loads would lose if each lost no more than the smallest block.
constexpr std::size_t kSlack = 1'000;

void ExpectNoMore(const ProcessFigures& after, const ProcessFigures& before) {
  EXPECT_LE(after.memory, before.memory + kSlack);
  EXPECT_LE(after.handles, before.handles);
  EXPECT_LE(after.threads, before.threads);
  std::printf("memory %zu -> %zu bytes, handles %zu -> %zu, threads %zu -> %zu\n", before.memory,
              after.memory, before.handles, after.handles, before.threads, after.threads);
}

TEST(LongLivedProcess, HundredOperationsTakeNothingThatTheyDoNotGiveBack) {
  const host::AddIn addIn(BuiltAddIn());
  FaultyHost host;
  std::list<Workplace> places;
  for (const BuiltJob& job : BuiltJobs()) places.emplace_back(job);
  int operations = 0;
  const auto run = [&](int rounds) {
    for (int round = 0; round < rounds; ++round) {
      for (const Workplace& place : places) {
        place.Fill();
        EXPECT_EQ(place.Call(addIn, &host), 1) << place.Job().name;
        ++operations;
      }
    }
  };
  // What is made once and kept.
  run(3);
  const ProcessFigures before = FiguresOfThisProcess();
  operations = 0;
  run(13);
  EXPECT_GE(operations, 100);
  ExpectNoMore(FiguresOfThisProcess(), before);
  EXPECT_EQ(OpenStreamCount(), 0) << OpenStreamReport().GetString();
}

TEST(LongLivedProcess, AddInThatIsLoadedHundredTimesIsUnloadedWithAllThatItTook) {
  FaultyHost host;
  const Workplace place(JobOf("qztutlFilterStockByColor"));
  const auto run = [&](int times) {
    for (int i = 0; i < times; ++i) {
      const host::AddIn addIn(BuiltAddIn());
      place.Fill();
      EXPECT_EQ(place.Call(addIn, &host), 1);
    }
  };
  run(5);
  const ProcessFigures before = FiguresOfThisProcess();
  run(100);
  ExpectNoMore(FiguresOfThisProcess(), before);
}

}  // namespace
