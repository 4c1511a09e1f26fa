// Memory that runs out, at one allocation after the other.

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "FailingAllocation.h"
#include "OutlineRun.h"
#include "SilentDialog.h"
#include "formats/BinarySurface.h"
#include "platform/IFSilhouette.h"
#include "platform/IFSpinsil.h"
#include "stock/SurfaceTransfer.h"
#include "support/TempDirectory.h"

namespace outline_test {
namespace {

using kernel_test::FailingAllocation;
using kernel_test::SilentDialog;

// Takes all points, and asks for no memory.
struct SilentCurves final : CurveTransfer {
  int Reset() override { return points = 0; }
  const int* AddPoint(const double* xyz) override {
    sum += xyz[0] + 3 * xyz[1];
    return &++points;
  }
  void* AddSegment(const int*, const int*) override { return this; }
  int Close() override { return ++closes; }

  int points = 0, closes = 0;
  double sum = 0;
};

struct Outcome {
  long allocations = 0, balance = 0;
  int errors = 0;
  bool saysMemory = false;
};

// Bodies whose edges cross each other, seen from above and spun.
formats::Mesh Crossing() {
  formats::Mesh mesh = Torus(10, 4, 14, 8);
  Add(mesh, Moved(Torus(10, 4, 14, 8), 1, {5.3, 3.1, 0.7}));
  return mesh;
}

// The first allocations each, of the others as many as a test has time for.
template <typename Visit>
void ForSomeOf(long all, const Visit& visit) {
  const long step = std::max(1L, all / 100);
  for (long n = 1; n <= all; n += n < 40 ? 1 : step) visit(n);
}

class SilhouetteMemory : public testing::Test {
 protected:
  SilhouetteMemory() { formats::WriteBinarySurface(m_input, Crossing()); }

  Outcome Run(long n) {
    support::WriteWholeFile(m_output, kOlderOutput);
    Outcome outcome;
    SilentDialog dialog;
    {
      const FailingAllocation failing(n);
      IFSilhouette().Run(m_input.data(), m_output.data(), 0.01, &dialog);
      outcome = {failing.Allocations(), failing.Balance(), 0, false};
    }
    outcome.errors = dialog.errors;
    outcome.saysMemory = dialog.saysMemory;
    return outcome;
  }

  std::string Output() const { return support::ReadWholeFile(m_output); }

  support::TempDirectory m_directory;
  std::string m_input = m_directory / "in.iff";
  std::string m_output = m_directory / "out.crv";
};

TEST_F(SilhouetteMemory, AllocationThatFailsAnywhereIsAFatalErrorAndTheOlderOutputStays) {
  const Outcome first = Run(0);
  ASSERT_EQ(first.errors, 0);
  ASSERT_GT(first.allocations, 100);
  const std::string whole = Output();
  int failures = 0;
  ForSomeOf(first.allocations, [&](long n) {
    SCOPED_TRACE(n);
    const Outcome outcome = Run(n);
    EXPECT_EQ(outcome.balance, 0);
    if (outcome.errors == 0) {
      // The standard library sorts without spare memory as well.
      EXPECT_TRUE(Output() == whole);
    } else {
      ++failures;
      EXPECT_TRUE(outcome.saysMemory);
      EXPECT_EQ(Output(), kOlderOutput);
    }
    EXPECT_EQ(support::NamesIn(m_directory.Path()),
              (std::vector<std::string>{"in.iff", "out.crv"}));
  });
  EXPECT_GT(failures, 80);
  Run(0);
  EXPECT_TRUE(Output() == whole) << "the next run works";
}

struct SpinOutcome : Outcome {
  SilentCurves curves;
};

SpinOutcome RunSpinWithout(long n, const formats::Mesh& mesh) {
  SpinOutcome outcome;
  SilentDialog dialog;
  std::vector<void*> handles(mesh.vertices.size());
  FailingAllocation counting(0);
  {
    IFSpinsil spin(&dialog);
    SurfaceTransfer* channel = spin.OpenInputChannel();
    channel->Reset();
    for (std::size_t i = 0; i < handles.size(); ++i) {
      handles[i] = channel->AddVertex(mesh.vertices[i].data());
    }
    for (const formats::Facet& facet : mesh.facets) {
      const auto handle = [&](std::size_t i) {
        return handles[static_cast<std::size_t>(facet.vertices[i])];
      };
      channel->AddTriangle(handle(0), handle(1), handle(2), 1);
    }
    channel->Close();
    counting.Restart(n);
    spin.Run(&outcome.curves, 0.01);
    outcome.allocations = counting.Allocations();
  }
  outcome.balance = counting.Balance();
  outcome.errors = dialog.errors;
  outcome.saysMemory = dialog.saysMemory;
  return outcome;
}

TEST(SpinMemory, AllocationThatFailsAnywhereIsAFatalErrorAndTheOutputIsNotClosed) {
  const formats::Mesh mesh = Crossing();
  const SpinOutcome first = RunSpinWithout(0, mesh);
  ASSERT_EQ(first.errors, 0);
  ASSERT_GT(first.allocations, 1000);
  ASSERT_GT(first.curves.points, 20);
  EXPECT_EQ(first.balance, 0);
  int failures = 0;
  ForSomeOf(first.allocations, [&](long n) {
    SCOPED_TRACE(n);
    const SpinOutcome outcome = RunSpinWithout(n, mesh);
    EXPECT_EQ(outcome.balance, 0);
    if (outcome.errors == 0) {
      EXPECT_EQ(outcome.curves.closes, 1);
      EXPECT_EQ(outcome.curves.sum, first.curves.sum);
    } else {
      ++failures;
      EXPECT_TRUE(outcome.saysMemory);
      EXPECT_EQ(outcome.curves.closes, 0);
    }
  });
  EXPECT_GT(failures, 100);
}

}  // namespace
}  // namespace outline_test
