// A host whose locale has a decimal comma gets the same bytes as every other one.

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <map>
#include <string>

#include "built/BuiltJobs.h"
#include "built/CommaLocale.h"
#include "built/FaultyHost.h"
#include "built/Workplace.h"
#include "host/files/ConvertMesh.h"
#include "host/jobs/NewJob.h"
#include "host/qzhost/AddIn.h"
#include "host/qzhost/Report.h"
#include "support/JobFiles.h"
#include "support/TempDirectory.h"

namespace {

using ::testing::HasSubstr;

constexpr const char* kNoSuchLocale = "this system has no locale with a decimal comma";
const std::string kSamples = std::string(QZ_SOURCE_DIR) + "/samples/";

using Files = std::map<std::string, std::string>;

Files RunJob(const Workplace& place, const host::AddIn& addIn, FaultyHost* host) {
  place.Fill();
  EXPECT_EQ(place.Call(addIn, host), 1);
  Files files = support::FilesIn(place.Directory());
  files.merge(support::FilesIn(place.Copies()));
  return files;
}

// Two slots with a wall between them that is thinner than the rays lie apart, of which the kernel
// says a figure.
BuiltJob ThinWall() {
  constexpr double kTolerance = 0.025;
  support::Surface block = support::Cube(40, 7);
  for (auto& vertex : block.vertices) {
    vertex[1] *= 0.75;
    vertex[2] *= 0.5;
  }
  support::Path slot;
  slot.sweepToler = slot.pathToler = kTolerance;
  slot.tool = support::ConvexBlock{{0, 4, 0, 90, 0, 0}};
  slot.positions = {-10, 10, 13, 50, 10, 13};
  support::Path other = slot;
  other.positions = {-10, 18.1, 13, 50, 18.1, 13};
  BuiltJob job = BuiltJobs().front();
  job.inputs = {{"StockModelInput.tmp", support::BinarySurfaceBytes(block)},
                {"TmpPathInfo0.tmp", support::PathInfoBytes(slot)},
                {"TmpPathInfo1.tmp", support::PathInfoBytes(other)}};
  return job;
}

TEST(DecimalComma, EveryOperationMakesTheSameFiles) {
  const host::AddIn addIn(BuiltAddIn());
  FaultyHost host;
  for (const BuiltJob& job : BuiltJobs()) {
    SCOPED_TRACE(job.name);
    const Workplace place(job);
    const Files files = RunJob(place, addIn, &host);
    const CommaLocale locale;
    if (!locale.IsThere()) GTEST_SKIP() << kNoSuchLocale;
    EXPECT_TRUE(RunJob(place, addIn, &host) == files);
  }
}

TEST(DecimalComma, FiguresOfTheKernelAreWrittenDownWithAPoint) {
  const host::AddIn addIn(BuiltAddIn());
  FaultyHost host;
  const Workplace place(ThinWall());
  const Files files = RunJob(place, addIn, &host);
  EXPECT_THAT(files.at("ErrorCapture.txt"), HasSubstr("ray spacing of 0."));
  const CommaLocale locale;
  if (!locale.IsThere()) GTEST_SKIP() << kNoSuchLocale;
  EXPECT_EQ(RunJob(place, addIn, &host), files);
}

// A surface with figures behind the point, as every mesh format, and each of them read again.
Files Converted() {
  const support::TempDirectory directory;
  support::WriteWholeFile(directory / "in.iff",
                          support::BinarySurfaceBytes(support::Cube(10.0 / 3, 7)));
  for (const std::string ending : {"stl", "ply", "obj", "off"}) {
    host::ConvertMesh(
        {directory / "in.iff", directory / ("text." + ending), formats::MeshEncoding::Ascii});
    host::ConvertMesh({directory / ("text." + ending), directory / (ending + ".iff"), {}});
  }
  return support::FilesIn(directory.Path());
}

TEST(DecimalComma, MeshesOfOtherProgramsAreReadAndWrittenAlike) {
  const Files files = Converted();
  const CommaLocale locale;
  if (!locale.IsThere()) GTEST_SKIP() << kNoSuchLocale;
  EXPECT_TRUE(Converted() == files);
}

Files Jobs() {
  const support::TempDirectory directory;
  host::NewJobSettings settings;
  settings.tolerance = 0.025;
  settings.stock = "box:-10.5,-10.5,-5.25,10.5,10.5,0";
  settings.directory = directory / "gcode";
  settings.program = kSamples + "two-tools.ngc";
  settings.tools = kSamples + "tools-two.json";
  host::MakeJob(settings);
  settings.directory = directory / "apt";
  settings.program = kSamples + "bracket.apt";
  settings.tools.clear();
  settings.language = host::ProgramLanguage::kApt;
  host::MakeJob(settings);
  Files files;
  for (const char* job : {"gcode", "apt"}) {
    for (const auto& [name, bytes] : support::FilesIn(directory.Path() / job)) {
      files[job + name] = bytes;
    }
  }
  return files;
}

TEST(DecimalComma, ProgramsAndToolTablesAreReadAlike) {
  const Files files = Jobs();
  const CommaLocale locale;
  if (!locale.IsThere()) GTEST_SKIP() << kNoSuchLocale;
  EXPECT_TRUE(Jobs() == files);
}

TEST(DecimalComma, ReportsHaveAPoint) {
  const CommaLocale locale;
  if (!locale.IsThere()) GTEST_SKIP() << kNoSuchLocale;
  EXPECT_EQ(host::Fixed(1234.5678, 2), "1234.57");
  EXPECT_EQ(host::JsonText({{"tolerance", 0.25}}), "{\n  \"tolerance\": 0.25\n}\n");
}

}  // namespace
