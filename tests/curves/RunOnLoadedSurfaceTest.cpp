// The kernel runs of the spun silhouette and the offset, without the shift.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "OutlineJob.h"
#include "callbacks/RunFlags.h"
#include "callbacks/UIDialog.h"
#include "callbacks/UIExceptionKernel.h"
#include "callbacks/UIExceptionQZC.h"
#include "curves/RunSpinSilhouette.h"
#include "support/NothrowBlocks.h"

namespace {

using support::ScriptedKernel;
using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RunOnLoadedSurfaceTest : public OutlineJob, public ::testing::WithParamInterface<Operation> {
 protected:
  unsigned char Run() { return OutlineJob::Run(GetParam()); }
  bool IsOffset() const { return GetParam() == Operation::kOffset; }
  std::string Unfinished() const { return OutlineJob::Unfinished(GetParam()); }
  std::string Answer() const { return OutlineJob::Answer(GetParam()); }
  std::string Unit() const { return IsOffset() ? "SurfaceXferQZ" : "CurveXferQZ"; }

  std::vector<std::string> CallsOfARun() {
    EXPECT_EQ(Run(), 1);
    return kernel.CallNames();
  }
  /// The calls that come while the surface is played in.
  static bool IsLoading(const std::string& call) { return call.starts_with("input."); }
  bool IsBehindLoading(const std::string& call) const {
    return call.starts_with("output.") || call.starts_with(RunCall(GetParam()));
  }
  /// Whether the output has been closed, so that it is whole whatever happens then.
  bool IsWholeAt(const std::string& call) const { return call == RunCall(GetParam()) + " ends"; }
  bool WasWritten() const { return OutputBytes() == Answer(); }

  void ExpectFreed(const std::string& call) {
    EXPECT_EQ(kernel.LivingObjects(), 0);
    // The loader leaves its stream and its handles behind when it is thrown through.
    const std::size_t lost = IsLoading(call) ? 1 : 0;
    EXPECT_EQ(host.OpenStreams().size(), m_left += lost);
    EXPECT_EQ(support::TakeLostBlocks(), lost);
    EXPECT_TRUE(IsAtHome());
    EXPECT_THAT(OutputBytes(), AnyOf(Unfinished(), Answer()));
    EXPECT_EQ(WasWritten(), IsWholeAt(call));
  }

 private:
  std::size_t m_left = 0;
};

std::string ParameterName(const ::testing::TestParamInfo<Operation>& info) {
  return NameOf(info.param);
}

INSTANTIATE_TEST_SUITE_P(Operations, RunOnLoadedSurfaceTest,
                         ::testing::Values(Operation::kSpin, Operation::kSpinTree,
                                           Operation::kOffset),
                         ParameterName);

TEST_P(RunOnLoadedSurfaceTest, AnswerBecomesTheOutput) {
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(OutputBytes(), Answer());
  EXPECT_EQ(kernel.input, support::OneFacet(4, 7));
  EXPECT_EQ(kernel.curvesClosed, IsOffset() ? -1 : 1);
}

TEST_P(RunOnLoadedSurfaceTest, ArgumentsReachTheKernelAsTheyAre) {
  for (const double value : {0.0, -3.0, 1e300}) {
    distance = value;
    unscaledValue = value + 1;
    EXPECT_EQ(Run(), 1);
    EXPECT_EQ(kernel.distance, value);
    EXPECT_EQ(kernel.unscaledValue, IsOffset() ? value + 1 : 0);
  }
}

TEST_P(RunOnLoadedSurfaceTest, EffectsComeInThisOrderAndTheDirectoryStays) {
  Run();
  const std::string name = IsOffset() ? "IFSphoffset()" : "IFSpinsil()";
  std::vector<std::string> expected = {"m_fopen " + Unit() + " job\\out.tmp wb",
                                       name,
                                       "OpenInputChannel",
                                       "m_fopen QZTUTLA2 job\\in.iff rb",
                                       "input.Reset",
                                       "input.AddVertex 1",
                                       "input.AddVertex 2",
                                       "input.AddVertex 3",
                                       "input.AddTriangle 1",
                                       "input.Close",
                                       "m_fclose QZTUTLA2 job\\in.iff",
                                       RunCall(GetParam()),
                                       "output.Reset"};
  const std::string closed = "m_fclose " + Unit() + " job\\out.tmp";
  const std::string ends = RunCall(GetParam()) + " ends";
  const std::vector<std::string> ofTheOffset = {"output.AddVertex 1",
                                                "output.AddVertex 2",
                                                "output.AddVertex 3",
                                                "output.AddTriangle 1",
                                                "output.Close",
                                                closed,
                                                ends,
                                                "~" + name};
  const std::vector<std::string> ofTheSpin = {"output.BeginGroup",
                                              "output.AddPoint 1",
                                              "output.AddPoint 2",
                                              "output.AddPoint 3",
                                              "output.AddPoint 4",
                                              "output.AddSegment 1",
                                              "output.AddSegment 2",
                                              "output.AddSegment 3",
                                              "output.AddSegment 4",
                                              "output.EndGroup",
                                              "output.Close",
                                              ends,
                                              "~" + name,
                                              closed};
  const auto& rest = IsOffset() ? ofTheOffset : ofTheSpin;
  expected.insert(expected.end(), rest.begin(), rest.end());
  EXPECT_EQ(host.events.Events(), expected);
}

TEST_P(RunOnLoadedSurfaceTest, RunFlagsAreClearedBeforeTheOutputIsOpened) {
  SetExceptionRaised();
  host.escapePressed = true;
  PollEscape();
  host.escapePressed = false;
  bool looked = false;
  kernel.At(IsOffset() ? "IFSphoffset()" : "IFSpinsil()", [&](UIDialog&) {
    EXPECT_FALSE(CurrentRunFlags().abort || CurrentRunFlags().exceptionRaised);
    looked = true;
  });
  host.faults.RunAt("m_fopen", 1, [] { EXPECT_FALSE(CurrentRunFlags().abort); });
  Run();
  EXPECT_TRUE(looked);
}

TEST_P(RunOnLoadedSurfaceTest, InputThatIsNotThereIsZeroAndTheOutputHasItsHeader) {
  std::filesystem::remove(InJob("in.iff"));
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(OutputBytes(), Unfinished());
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
  EXPECT_THAT(kernel.CallNames(), ::testing::SizeIs(2)) << "made and its channel opened";
  EXPECT_EQ(kernel.LivingObjects(), 0);
}

TEST_P(RunOnLoadedSurfaceTest, InputThatEndsShortAnywhereIsZeroAndTheKernelDoesNotRun) {
  const std::string whole = InputBytes();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    support::WriteWholeFile(InJob("in.iff"), whole.substr(0, length));
    EXPECT_EQ(Run(), 0) << length;
    EXPECT_EQ(OutputBytes(), Unfinished()) << length;
  }
  EXPECT_THAT(kernel.CallNames(), ::testing::Not(::testing::Contains(RunCall(GetParam()))));
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_P(RunOnLoadedSurfaceTest, WithoutMemoryForTheKernelNothingIsRunAndThatIsOne) {
  // The curve channel has taken memory of its own before.
  host.faults.FailCall("new", IsOffset() ? 1 : 2);
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(OutputBytes(), Unfinished());
  EXPECT_EQ(kernel.Calls(), 0);
  EXPECT_THAT(host.events.Events(), ElementsAre("m_fopen " + Unit() + " job\\out.tmp wb",
                                                "m_fclose " + Unit() + " job\\out.tmp"));
}

TEST_P(RunOnLoadedSurfaceTest, WithoutMemoryForTheLoadersHandlesItIsZero) {
  host.faults.FailCall("new", IsOffset() ? 2 : 3);
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(OutputBytes(), Unfinished());
}

TEST_P(RunOnLoadedSurfaceTest, OutputThatCannotBeOpenedIsNoticedByTheKernelAlone) {
  std::filesystem::create_directory(InJob("out.tmp"));
  EXPECT_EQ(Run(), 1);
  // The offset's channel takes everything; that of the curves refuses the first point, which the
  // kernel takes for fatal.
  EXPECT_EQ(CurrentRunFlags().exceptionRaised, !IsOffset());
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
}

TEST_P(RunOnLoadedSurfaceTest, KernelThatDoesNotCloseLeavesTheHeader) {
  kernel.closesOutput = false;
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(OutputBytes(), Unfinished());
}

TEST_P(RunOnLoadedSurfaceTest, KernelErrorInAnyCallIsOneAndRemovesNothing) {
  const std::vector<std::string> calls = CallsOfARun();
  for (std::size_t k = 1; k <= calls.size(); ++k) {
    SCOPED_TRACE(calls[k - 1] + " " + std::to_string(k));
    const auto call = static_cast<int>(k) + kernel.Calls();
    kernel.AtCall(call, ScriptedKernel::Fatal("no way on"));
    host.events.Clear();
    EXPECT_EQ(Run(), 1);
    EXPECT_EQ(kernel.Calls(), call) << "it goes no further";
    EXPECT_FALSE(CurrentRunFlags().abort);
    EXPECT_THAT(host.events.Only({"remove", "exists"}), IsEmpty());
    ExpectFreed(calls[k - 1]);
  }
}

TEST_P(RunOnLoadedSurfaceTest, UsersStopIsZeroUntilTheSurfaceIsLoadedAndOneFromThenOn) {
  const std::vector<std::string> calls = CallsOfARun();
  int zeros = 0;
  for (std::size_t k = 1; k <= calls.size(); ++k) {
    SCOPED_TRACE(calls[k - 1] + " " + std::to_string(k));
    const auto call = static_cast<int>(k) + kernel.Calls();
    kernel.AtCall(call, ScriptedKernel::Progress("Generating", 10));
    host.escapePressed = true;
    host.events.Clear();
    const unsigned char stopped = Run();
    EXPECT_EQ(stopped, IsBehindLoading(calls[k - 1]) ? 1 : 0);
    EXPECT_EQ(kernel.Calls(), call) << "it goes no further";
    EXPECT_TRUE(CurrentRunFlags().abort);
    EXPECT_THAT(host.events.Only({"remove", "exists"}), IsEmpty());
    ExpectFreed(calls[k - 1]);
    if (stopped == 0) ++zeros;

    host.escapePressed = false;
    EXPECT_EQ(Run(), 1) << "the next run works";
    EXPECT_EQ(OutputBytes(), Answer());
  }
  // The kernel and its channel made; reset, three vertices, a triangle, close.
  EXPECT_EQ(zeros, 8);
}

TEST_P(RunOnLoadedSurfaceTest, OtherExceptionsPassFromAnyCallWithEverythingFreed) {
  const std::vector<std::string> calls = CallsOfARun();
  for (std::size_t k = 1; k <= calls.size(); ++k) {
    SCOPED_TRACE(calls[k - 1] + " " + std::to_string(k));
    kernel.AtCall(static_cast<int>(k) + kernel.Calls(), ScriptedKernel::Foreign());
    EXPECT_THROW(Run(), std::runtime_error);
    ExpectFreed(calls[k - 1]);
    kernel.AtCall(static_cast<int>(k) + kernel.Calls(),
                  [](UIDialog&) { throw UIExceptionKernel(); });
    EXPECT_THROW(Run(), UIExceptionKernel);
    ExpectFreed(calls[k - 1]);
  }
}

TEST_P(RunOnLoadedSurfaceTest, WhatTheOutputsOpeningThrowsIsNotCaught) {
  host.faults.RunAt("m_fopen", 1, [] { throw UIExceptionQZC(); });
  EXPECT_THROW(Run(), UIExceptionQZC);
  EXPECT_EQ(kernel.Calls(), 0);
}

TEST_P(RunOnLoadedSurfaceTest, OutputThatCannotBeWrittenIsNoFailure) {
  host.faults.LimitDisk(30);
  EXPECT_EQ(Run(), 1);
  if (IsOffset()) {
    EXPECT_FALSE(JobHas("out.tmp"));
  } else {
    EXPECT_EQ(OutputBytes(), Answer().substr(0, 30));
    EXPECT_EQ(kernel.curvesClosed, 0);
  }
}

TEST_F(OutlineJob, SpunSilhouetteOfAnUnknownModeLeavesAnEmptyFile) {
  EXPECT_EQ(RunSpinSilhouette(input.c_str(), 2, output.c_str(), distance), 1);
  EXPECT_EQ(OutputBytes(), "");
  EXPECT_TRUE(CurrentRunFlags().exceptionRaised) << "the kernel has had its first point refused";
}

}  // namespace
