// Memory that runs out, at one allocation after the other.

#include <algorithm>
#include <gtest/gtest.h>

#include "FailingAllocation.h"
#include "HealRun.h"
#include "SilentDialog.h"
#include "formats/BinarySurface.h"
#include "platform/IFHeal.h"
#include "support/TempDirectory.h"
#include "support/geometry/MeshChecks.h"

namespace heal_test {
namespace {

using kernel_test::FailingAllocation;
using kernel_test::SilentDialog;
using support::Box;

// Needs every stage but the last cleaning: the geometry library, which unites bodies, loses a few
// blocks of its own when it finds no memory.
formats::Mesh Damaged() {
  formats::Mesh mesh = Box({0, 0, 0}, {2, 2, 2}, 1);
  Add(mesh, Reversed(Box({3, 1, 1}, {4, 3, 3}, 2)));
  Add(mesh, Torus(10, 6, {50, 0, 0}));
  mesh.facets.erase(mesh.facets.begin() + 40, mesh.facets.begin() + 44);
  std::swap(mesh.facets[60].vertices[0], mesh.facets[60].vertices[1]);
  mesh.facets.push_back(mesh.facets[70]);
  return mesh;
}

class HealMemory : public testing::Test {
 protected:
  HealMemory() { formats::WriteBinarySurface(m_input, Damaged()); }

  // Runs with the n-th allocation failing; how many there were.
  long Run(long n, SilentDialog& dialog) {
    support::WriteWholeFile(m_output, kOlderOutput);
    IFHeal heal(&dialog);
    const FailingAllocation failing(n);
    heal.Run(0.01, m_input.data(), m_output.data());
    return failing.Allocations();
  }

  std::string Output() const { return support::ReadWholeFile(m_output); }

  support::TempDirectory m_directory;
  std::string m_input = m_directory / "in.iff";
  std::string m_output = m_directory / "out.iff";
};

TEST_F(HealMemory, AllocationThatFailsAnywhereIsAFatalErrorAndTheOlderOutputStays) {
  SilentDialog first;
  const long all = Run(0, first);
  ASSERT_EQ(first.errors, 0);
  ASSERT_GT(all, 1000);
  const std::string whole = Output();
  // The first ones each, of the others as many as a test has time for.
  const long step = std::max(1L, all / 400);
  int failures = 0;
  for (long n = 1; n <= all; n += n < 100 ? 1 : step) {
    SilentDialog dialog;
    Run(n, dialog);
    // The standard library sorts without spare memory as well.
    if (dialog.errors == 0) {
      EXPECT_TRUE(Output() == whole) << n;
    } else {
      ++failures;
      EXPECT_EQ(dialog.errors, 1) << n;
      EXPECT_TRUE(dialog.saysMemory) << n;
      EXPECT_EQ(Output(), kOlderOutput) << n;
    }
    EXPECT_EQ(support::NamesIn(m_directory.Path()), (std::vector<std::string>{"in.iff", "out.iff"}))
        << n;
  }
  EXPECT_GT(failures, 200);
  SilentDialog last;
  Run(0, last);
  EXPECT_TRUE(Output() == whole) << "the next run works";
}

TEST_F(HealMemory, ObjectThatCannotBeMadeThrows) {
  SilentDialog dialog;
  const FailingAllocation failing(1);
  EXPECT_THROW(IFHeal heal(&dialog), std::bad_alloc);
}

}  // namespace
}  // namespace heal_test
