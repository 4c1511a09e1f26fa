// The operations with the shift to the origin around their kernel's run.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "OutlineJob.h"
#include "callbacks/RunFlags.h"
#include "callbacks/UIDialog.h"
#include "curves/SpinSilhouetteBoundary.h"
#include "support/NothrowBlocks.h"

namespace {

using support::ScriptedKernel;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ShiftedOperationsTest : public OutlineJob, public ::testing::WithParamInterface<Operation> {
 protected:
  bool IsSpin() const {
    return GetParam() == Operation::kSpin || GetParam() == Operation::kSpinTree;
  }
  void Call() { OutlineJob::Call(GetParam()); }

  /// Far away in X, so that every operation is moved.
  void MoveFar() {
    boxMin = {30, 0, 0};
    boxMax = {40, 1, 1};
  }
  /// The centre that MoveFar makes: along X alone for the spun ones.
  Triple FarCentre() const {
    const double x = (30.0 + 40.0) * 0.5 + 5 * 0.04;
    return IsSpin() ? Triple{x, 0, 0} : Triple{x, (0.0 + 1.0) * 0.5 + 0.04, 0.5};
  }

  support::Surface Input(const Triple& c, double s) const {
    support::Surface surface = support::OneFacet(4, 7);
    surface.vertices = Moved(surface.vertices, c, s);
    return surface;
  }
  /// The input as it comes back.
  std::string InputBack(const Triple& c, double s) const {
    support::Surface surface = Input(c, s);
    surface.vertices = MovedBack(surface.vertices, c, s);
    return support::BinarySurfaceBytes(surface);
  }
  /// The kernel's answer as it is moved back.
  std::string AnswerBack(const Triple& c, double s) {
    const auto keptOutline = kernel.outline;
    const auto keptResult = kernel.result;
    kernel.outline.points = MovedBack(kernel.outline.points, c, s);
    kernel.result.vertices = MovedBack(kernel.result.vertices, c, s);
    std::string bytes = Answer(GetParam());
    kernel.outline = keptOutline;
    kernel.result = keptResult;
    return bytes;
  }

  /// Looks at everything while the kernel works.
  struct Seen {
    int times = 0;
    std::string input;
    Triple boxMin{}, boxMax{};
    unsigned char result = 99;
  };
  Seen CallAndLook() {
    Seen seen;
    kernel.At(RunCall(GetParam()) + " ends", [&](UIDialog&) {
      ++seen.times;
      seen.input = JobHas("in.iff") ? InputBytes() : "";
      seen.boxMin = boxMin;
      seen.boxMax = boxMax;
      seen.result = result;
    });
    Call();
    kernel.At(RunCall(GetParam()) + " ends", [](UIDialog&) {});
    return seen;
  }
};

std::string ParameterName(const ::testing::TestParamInfo<Operation>& info) {
  return NameOf(info.param);
}

INSTANTIATE_TEST_SUITE_P(Operations, ShiftedOperationsTest,
                         ::testing::Values(Operation::kSilhouette, Operation::kSpin,
                                           Operation::kSpinTree, Operation::kOffset),
                         ParameterName);

const std::vector<std::string> kShiftEvents = {"IsMetric", "exists", "m_fopen_hl",
                                               "m_fclose QZTUtlA"};

TEST_P(ShiftedOperationsTest, NearTheOriginNothingIsMovedAndNoFileOpenedForIt) {
  const std::string before = InputBytes();
  const Seen seen = CallAndLook();
  EXPECT_EQ(result, 1);
  EXPECT_THAT(host.events.Only(kShiftEvents),
              ElementsAre("IsMetric", "IsMetric", "IsMetric", "IsMetric"));
  EXPECT_EQ(seen.input, before);
  EXPECT_EQ(seen.boxMax, (Triple{10, 10, 10}));
  EXPECT_EQ(kernel.distance, 0.25);
  EXPECT_EQ(OutputBytes(), Answer(GetParam()));
}

TEST_P(ShiftedOperationsTest, FarAwayInputAndBoxAreMovedAndEverythingComesBack) {
  MoveFar();
  const Triple c = FarCentre();
  const Seen seen = CallAndLook();
  EXPECT_EQ(seen.input, support::BinarySurfaceBytes(Input(c, 1)));
  const Points corners = Moved({{30, 0, 0}, {40, 1, 1}}, c, 1);
  EXPECT_EQ(seen.boxMin, corners[0]);
  EXPECT_EQ(seen.boxMax, corners[1]);
  EXPECT_EQ(kernel.distance, 0.25);

  EXPECT_EQ(result, 1);
  EXPECT_EQ(OutputBytes(), AnswerBack(c, 1));
  EXPECT_EQ(InputBytes(), InputBack(c, 1));
  const Points back = MovedBack(corners, c, 1);
  EXPECT_EQ(boxMin, back[0]);
  EXPECT_EQ(boxMax, back[1]);
}

TEST_P(ShiftedOperationsTest, OutputIsMovedBackBeforeTheInput) {
  MoveFar();
  Call();
  EXPECT_THAT(
      host.events.Only(kShiftEvents),
      ElementsAre("IsMetric", "IsMetric", "exists job\\in.iff",
                  "m_fopen_hl QZTUtlA job\\ job\\in.iff rb+", "m_fclose QZTUtlA job\\in.iff",
                  "exists job\\out.tmp", "m_fopen_hl QZTUtlA job\\ job\\out.tmp rb+",
                  "m_fclose QZTUtlA job\\out.tmp", "exists job\\in.iff",
                  "m_fopen_hl QZTUtlA job\\ job\\in.iff rb+", "m_fclose QZTUtlA job\\in.iff"));
}

TEST_P(ShiftedOperationsTest, KernelRunsBetweenMovingAndMovingBack) {
  MoveFar();
  Call();
  const auto events = host.events.Only({"m_fopen_hl", RunCall(GetParam())});
  ASSERT_EQ(events.size(), 5u);
  EXPECT_TRUE(events[1].starts_with(RunCall(GetParam())));
  EXPECT_EQ(events[2], RunCall(GetParam()) + " ends");
}

TEST_P(ShiftedOperationsTest, SmallDistanceScalesFilesBoxAndDistanceEvenNearTheOrigin) {
  distance = 0.00002;
  const double s = 5e-5 / 0.00001;
  const double x = (0.0 + 10.0) * 0.5 + 5 * 0.04;
  const Triple c = IsSpin() ? Triple{x, 0, 0} : Triple{x, 5.04, 5};
  const Seen seen = CallAndLook();
  EXPECT_EQ(kernel.distance, 0.00002 * s);
  EXPECT_EQ(seen.input, support::BinarySurfaceBytes(Input(c, s)));
  const Points corners = Moved({{0, 0, 0}, {10, 10, 10}}, c, s);
  EXPECT_EQ(seen.boxMin, corners[0]);
  EXPECT_EQ(seen.boxMax, corners[1]);

  EXPECT_EQ(OutputBytes(), AnswerBack(c, s));
  EXPECT_EQ(InputBytes(), InputBack(c, s));
  const Points back = MovedBack(corners, c, s);
  EXPECT_EQ(boxMin, back[0]);
  EXPECT_EQ(boxMax, back[1]);
  // With a scale nobody asks how far the centre is.
  EXPECT_THAT(host.events.Only({"IsMetric"}), ElementsAre("IsMetric"));
}

TEST_P(ShiftedOperationsTest, LargeBoxIsScaledDown) {
  boxMax = {5000, 10, 10};
  distance = 1.0;
  const Seen seen = CallAndLook();
  EXPECT_EQ(seen.times, 1);
  EXPECT_EQ(kernel.distance, 0.78);
  const double x = 5000.0 * 0.5 + 5 * 0.04;
  const Triple c = IsSpin() ? Triple{x, 0, 0} : Triple{x, 5.04, 5};
  EXPECT_EQ(seen.input, support::BinarySurfaceBytes(Input(c, 0.78)));
  EXPECT_EQ(OutputBytes(), AnswerBack(c, 0.78));
}

TEST_P(ShiftedOperationsTest, UnscaledValueIsNeverScaled) {
  distance = 0.00002;
  Call();
  EXPECT_EQ(kernel.unscaledValue, GetParam() == Operation::kOffset ? 12.5 : 0.0);
}

TEST_P(ShiftedOperationsTest, DistanceOfZeroOrBelowIsNeverScaled) {
  for (const double none : {0.0, -2.0}) {
    boxMin = {0, 0, 0};
    boxMax = {5000, 10, 10};
    distance = none;
    Call();
    EXPECT_EQ(kernel.distance, none);
  }
}

TEST_P(ShiftedOperationsTest, InMillimetresTheSameBoxIsNear) {
  host.metric = true;
  MoveFar();
  const Seen seen = CallAndLook();
  EXPECT_EQ(seen.boxMin, (Triple{30, 0, 0}));
  EXPECT_THAT(host.events.Only({"m_fopen_hl"}), IsEmpty());
}

TEST_P(ShiftedOperationsTest, OnlyTheSpunOnesStayWhereTheyAreWhenTheyAreFarFromTheAxisAlone) {
  boxMin = {0, 1000, 1000};
  boxMax = {1, 1001, 1001};
  const Seen seen = CallAndLook();
  EXPECT_EQ(seen.boxMin == (Triple{0, 1000, 1000}), IsSpin());
  EXPECT_EQ(host.events.Only({"m_fopen_hl"}).empty(), IsSpin());
}

TEST_P(ShiftedOperationsTest, ResultIsZeroFromTheFirstEffectOnUntilTheKernelHasRun) {
  MoveFar();
  unsigned char atTheFirstEffect = 99;
  host.faults.RunAt("file_exists", 1, [&] { atTheFirstEffect = result; });
  const Seen seen = CallAndLook();
  EXPECT_EQ(atTheFirstEffect, 0);
  EXPECT_EQ(seen.result, 0);
  EXPECT_EQ(result, 1);
}

TEST_P(ShiftedOperationsTest, ResultIsThereBeforeAnythingIsMovedBack) {
  MoveFar();
  unsigned char behindTheRun = 99;
  host.faults.RunAt("file_exists", 2, [&] {
    behindTheRun = result;
    throw std::runtime_error("the host cannot say");
  });
  EXPECT_THROW(Call(), std::runtime_error);
  EXPECT_EQ(behindTheRun, 1);
  EXPECT_EQ(result, 1);
}

TEST_P(ShiftedOperationsTest, InputThatIsMissingIsNotRewrittenAndTheKernelIsMadeAllTheSame) {
  MoveFar();
  std::filesystem::remove(InJob("in.iff"));
  Call();
  EXPECT_GT(kernel.Calls(), 0);
  EXPECT_FALSE(JobHas("in.iff"));
  if (GetParam() == Operation::kSilhouette) {
    EXPECT_EQ(result, 1);
    EXPECT_EQ(OutputBytes(), AnswerBack(FarCentre(), 1));
  } else {
    EXPECT_EQ(result, 0);
    EXPECT_EQ(OutputBytes(), Unfinished(GetParam()));
  }
  EXPECT_EQ(boxMin, MovedBack(Moved({{30, 0, 0}}, FarCentre(), 1), FarCentre(), 1)[0]);
  EXPECT_EQ(host.events.Only({"m_fopen_hl"}).size(), 1u) << "the output alone";
}

TEST_P(ShiftedOperationsTest, OutputOfTheHeaderAloneIsNotRewrittenAndItsStreamStaysOpen) {
  if (GetParam() == Operation::kSilhouette) return;
  MoveFar();
  std::filesystem::remove(InJob("in.iff"));
  Call();
  EXPECT_THAT(host.OpenStreams(), ElementsAre("QZTUtlA job\\out.tmp"));
}

TEST_P(ShiftedOperationsTest, OutputThatIsNotThereIsNotRewritten) {
  MoveFar();
  host.existsAnswers["job\\out.tmp"] = false;
  Call();
  EXPECT_EQ(OutputBytes(), Answer(GetParam()));
  EXPECT_EQ(InputBytes(), InputBack(FarCentre(), 1));
}

TEST_P(ShiftedOperationsTest,
       ExistenceIsAskedForTheNameAsItIsAndItIsOpenedInTheTemporaryDirectory) {
  // A host that looks for bare names in its temporary directory.
  MoveFar();
  input = "in.iff";
  output = "out.tmp";
  host.existsAnswers = {{"in.iff", true}, {"out.tmp", true}};
  const auto home = std::filesystem::current_path();
  std::filesystem::current_path(InJob(""));
  Call();
  std::filesystem::current_path(home);
  EXPECT_THAT(host.events.Only({"exists", "m_fopen_hl"}),
              ElementsAre("exists in.iff", "m_fopen_hl QZTUtlA job\\ in.iff rb+", "exists out.tmp",
                          "m_fopen_hl QZTUtlA job\\ out.tmp rb+", "exists in.iff",
                          "m_fopen_hl QZTUtlA job\\ in.iff rb+"));
  EXPECT_EQ(OutputBytes(), AnswerBack(FarCentre(), 1));
  EXPECT_EQ(InputBytes(), InputBack(FarCentre(), 1));
}

TEST_P(ShiftedOperationsTest, FileThatCannotBeRewrittenGoesUnnoticed) {
  MoveFar();
  const Triple c = FarCentre();
  const support::Surface plain = support::OneFacet(4, 7);
  support::Surface onlyBack = plain;
  onlyBack.vertices = MovedBack(plain.vertices, c, 1);
  const std::vector<std::pair<std::string, std::string>> inputAndOutput = {
      {support::BinarySurfaceBytes(onlyBack), AnswerBack(c, 1)},
      {InputBack(c, 1), Answer(GetParam())},
      {support::BinarySurfaceBytes(Input(c, 1)), AnswerBack(c, 1)}};
  for (int k = 1; k <= 3; ++k) {
    SCOPED_TRACE(k);
    MoveFar();
    PutInput(plain);
    host.faults = {};
    host.faults.FailCall("m_fopen_hl", k);
    result = 77;
    Call();
    EXPECT_EQ(result, 1);
    EXPECT_EQ(InputBytes(), inputAndOutput[static_cast<std::size_t>(k) - 1].first);
    EXPECT_EQ(OutputBytes(), inputAndOutput[static_cast<std::size_t>(k) - 1].second);
    EXPECT_EQ(boxMin, MovedBack(Moved({{30, 0, 0}}, c, 1), c, 1)[0]);
    EXPECT_THAT(host.OpenStreams(), IsEmpty());
  }
}

TEST_P(ShiftedOperationsTest, EverythingComesBackAfterTheUsersStopToo) {
  MoveFar();
  host.escapePressed = true;
  kernel.At(RunCall(GetParam()) + " ends", ScriptedKernel::Progress("Generating", 10));
  Call();
  EXPECT_EQ(result, GetParam() == Operation::kSilhouette ? 0 : 1);
  EXPECT_EQ(OutputBytes(), AnswerBack(FarCentre(), 1));
  EXPECT_EQ(InputBytes(), InputBack(FarCentre(), 1));
  EXPECT_EQ(boxMin, MovedBack(Moved({{30, 0, 0}}, FarCentre(), 1), FarCentre(), 1)[0]);
}

TEST_P(ShiftedOperationsTest, EverythingComesBackAfterAKernelErrorToo) {
  MoveFar();
  kernel.At(RunCall(GetParam()) + " ends", ScriptedKernel::Fatal("no way on"));
  Call();
  EXPECT_EQ(result, 1);
  if (GetParam() == Operation::kSilhouette) {
    EXPECT_FALSE(JobHas("out.tmp"));
  } else {
    EXPECT_EQ(OutputBytes(), AnswerBack(FarCentre(), 1));
  }
  EXPECT_EQ(InputBytes(), InputBack(FarCentre(), 1));
  EXPECT_EQ(boxMin, MovedBack(Moved({{30, 0, 0}}, FarCentre(), 1), FarCentre(), 1)[0]);
}

TEST_P(ShiftedOperationsTest, WhatPassesThroughLeavesZeroAndInputAndBoxMoved) {
  MoveFar();
  kernel.At(RunCall(GetParam()) + " ends", ScriptedKernel::Foreign());
  EXPECT_THROW(Call(), std::runtime_error);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(InputBytes(), support::BinarySurfaceBytes(Input(FarCentre(), 1)));
  EXPECT_EQ(OutputBytes(), Answer(GetParam()));
  EXPECT_EQ(boxMin, Moved({{30, 0, 0}}, FarCentre(), 1)[0]);
  EXPECT_EQ(boxMax, Moved({{40, 1, 1}}, FarCentre(), 1)[0]);
  EXPECT_EQ(kernel.LivingObjects(), 0);
  EXPECT_EQ(support::LivingBlocks(), 0u);
  EXPECT_TRUE(IsAtHome());
}

TEST_P(ShiftedOperationsTest, NothingIsKeptFromOneCallToTheNext) {
  MoveFar();
  Call();
  boxMin = {0, 0, 0};
  boxMax = {10, 10, 10};
  PutInput(support::OneFacet(4, 7));
  host.events.Clear();
  Call();
  EXPECT_EQ(OutputBytes(), Answer(GetParam()));
  EXPECT_THAT(host.events.Only({"m_fopen_hl"}), IsEmpty());
}

TEST_F(OutlineJob, SpunSilhouetteOfAnUnknownModeLeavesItsEmptyOutputOpenWhenItIsShifted) {
  boxMin = {30, 0, 0};
  boxMax = {40, 1, 1};
  SpinSilhouetteBoundary(input.c_str(), 2, output.c_str(), distance, boxMin.data(), boxMax.data(),
                         &result);
  EXPECT_EQ(result, 1) << "the kernel has had its first point refused, and that is an error";
  EXPECT_EQ(OutputBytes(), "");
  EXPECT_THAT(host.OpenStreams(), ElementsAre("QZTUtlA job\\out.tmp"));
  EXPECT_DOUBLE_EQ(boxMin[0], 30);
}

}  // namespace
