#include <chrono>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "formats/InterchangeFile.h"
#include "formats/PathInfoFile.h"
#include "host/files/DescribeFile.h"
#include "host/files/DescribeJob.h"
#include "host/files/DescriptionText.h"
#include "host/files/FileKind.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"

namespace {

using Json = nlohmann::ordered_json;
using formats::FileError;
using host::FileKind;
using support::MessageOf;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;
using testing::Contains;
using testing::HasSubstr;

formats::Mesh Tetrahedron() {
  return {{{0, 0, 0}, {3, 0, 0}, {0, 4, 0}, {0, 0, 6}},
          {{{0, 2, 1}, 1}, {{0, 1, 3}, 1}, {{0, 3, 2}, 2}, {{1, 2, 3}, 2}}};
}

// Two cuts of 5 and 12 in length.
formats::PathRecord Path() {
  formats::PathRecord record;
  record.colour = 4;
  record.sweepToler = 0.025;
  record.tool = formats::ConvexTool{5, 0, 0, 90, 0, 0};
  record.cuts = {{{0, 0, 0, 3, 4, 0}}, {{0, 0, 0, 0, 0, -12}}};
  return record;
}

formats::PathRecord OneCut() {
  formats::PathRecord record = Path();
  record.cuts.pop_back();
  return record;
}

TEST(DescribeFile, MeasuresASurface) {
  const TempDirectory directory;
  formats::WriteBinarySurface(directory / "a.iff", Tetrahedron());
  const Json d = host::DescribeFile(directory / "a.iff");
  EXPECT_EQ(d["kind"], "surface");
  EXPECT_EQ(d["format"], "binary surface");
  EXPECT_EQ(d["bytes"], 22 + 4 * 24 + 4 * 13);
  EXPECT_EQ(d["trailing_bytes"], 0);
  EXPECT_DOUBLE_EQ(d["volume"].get<double>(), 12);
  EXPECT_EQ(d["topology"]["closed"], true);
  EXPECT_EQ(d["topology"]["genus"], 0);
  EXPECT_EQ(d["colours"].size(), 2U);
  EXPECT_EQ(d["colours"][1]["colour"], 2);
  EXPECT_EQ(d["colours"][1]["facets"], 2);
  EXPECT_EQ(d["box"]["upper"], Json({3.0, 4.0, 6.0}));
}

TEST(DescribeFile, JoinsCoincidentVerticesForASecondOpinion) {
  formats::Mesh soup;
  for (const formats::Facet& facet : Tetrahedron().facets) {
    const auto first = static_cast<std::int32_t>(soup.vertices.size());
    for (const std::int32_t v : facet.vertices) {
      soup.vertices.push_back(Tetrahedron().vertices[static_cast<size_t>(v)]);
    }
    soup.facets.push_back({{first, first + 1, first + 2}, 0});
  }
  const Json d = host::DescribeMesh(soup);
  EXPECT_EQ(d["topology"]["open_edges"], 12);
  EXPECT_EQ(d["coincident_vertices"], 8);
  EXPECT_EQ(d["topology_when_joined"]["oriented_manifold"], true);
}

TEST(DescribeFile, SaysHowManyBytesFollowASurface) {
  const TempDirectory directory;
  formats::WriteBinarySurface(directory / "a.iff", Tetrahedron());
  WriteWholeFile(directory / "b.iff", ReadWholeFile(directory / "a.iff") + "xyz");
  EXPECT_EQ(host::DescribeFile(directory / "b.iff")["trailing_bytes"], 3);
}

TEST(DescribeFile, DescribesTheInterchangeFile) {
  const TempDirectory directory;
  formats::WriteInterchangeFile(directory / "b.tmp", {Path(), OneCut()});
  const Json d = host::DescribeFile(directory / "b.tmp");
  EXPECT_EQ(d["kind"], "toolpath interchange file");
  ASSERT_EQ(d["paths"].size(), 2U);
  const Json& path = d["paths"][0];
  EXPECT_EQ(path["axes"], 3);
  EXPECT_EQ(path["colour"], 4);
  EXPECT_EQ(path["tool"]["type"], "convex");
  EXPECT_EQ(path["tool"]["corner_radius"], 5);
  EXPECT_EQ(path["cuts"], 2);
  EXPECT_EQ(path["positions"], 4);
  EXPECT_EQ(path["moves"], 2);
  EXPECT_DOUBLE_EQ(path["length"].get<double>(), 17);
  EXPECT_EQ(path["box"]["lower"], Json({0.0, 0.0, -12.0}));
}

TEST(DescribeFile, CountsPositionsThatAreNotFiniteAndMeasuresTheRest) {
  formats::PathRecord record = OneCut();
  record.cuts[0].coordinates = {0, 0, 0, 3, 4, 0, std::nan(""), 0, 0, 0, 0, 0, 0, 0, 2};
  const Json d = host::DescribePath(record);
  EXPECT_EQ(d["non_finite_positions"], 1);
  EXPECT_DOUBLE_EQ(d["length"].get<double>(), 7);
}

TEST(DescribeFile, ListsCapturedMessages) {
  const TempDirectory directory;
  WriteWholeFile(directory / "x.txt",
                 "\nWarning Message Received:\na\n\nError Message Received:\nb\n");
  const Json d = host::DescribeFile(directory / "x.txt");
  EXPECT_EQ(d["kind"], "error capture file");
  ASSERT_EQ(d["entries"].size(), 2U);
  EXPECT_EQ(d["entries"][1]["fatal"], true);
  EXPECT_EQ(d["entries"][1]["text"], "b");
}

TEST(KindOf, GoesByNameWhereAFileHasNoMark) {
  const TempDirectory directory;
  formats::WritePathInfoFile(directory / "TmpPathInfo12.tmp", OneCut());
  EXPECT_EQ(host::KindOf(directory / "TmpPathInfo12.tmp"), FileKind::kPath);
  formats::WritePathInfoFile(directory / "renamed.bin", OneCut());
  EXPECT_EQ(host::KindOf(directory / "renamed.bin"), FileKind::kPath);
  WriteWholeFile(directory / "BinaryPaths.tmp", "damaged");
  EXPECT_EQ(host::KindOf(directory / "BinaryPaths.tmp"), FileKind::kInterchange);
  WriteWholeFile(directory / "StockModelInput.tmp", "");
  EXPECT_EQ(host::KindOf(directory / "StockModelInput.tmp"), FileKind::kSurface);
  WriteWholeFile(directory / "BinaryPaths.txt", "binary toolpaths //16 chars delimiter is not\n");
  EXPECT_EQ(host::KindOf(directory / "BinaryPaths.txt"), FileKind::kInterchangeText);
  WriteWholeFile(directory / "notes.md", "hello\n");
  EXPECT_EQ(host::KindOf(directory / "notes.md"), FileKind::kOther);
}

TEST(PathNumber, TakesOnlyTheSpellingThatTheAddInLooksFor) {
  EXPECT_EQ(host::PathNumber("TmpPathInfo0.tmp"), 0);
  EXPECT_EQ(host::PathNumber("TmpPathInfo120.tmp"), 120);
  for (const char* name :
       {"TmpPathInfo.tmp", "TmpPathInfo-1.tmp", "TmpPathInfo01.tmp", "TmpPathInfo1.txt",
        "xTmpPathInfo1.tmp", "TmpPathInfo1x.tmp", "TmpPathInfo99999999999.tmp"}) {
    EXPECT_EQ(host::PathNumber(name), std::nullopt) << name;
  }
}

class DescribeJob : public testing::Test {
 protected:
  DescribeJob() {
    formats::WriteBinarySurface(directory_ / "StockModelInput.tmp", Tetrahedron());
    formats::WritePathInfoFile(directory_ / "TmpPathInfo0.tmp", OneCut());
    formats::WritePathInfoFile(directory_ / "TmpPathInfo1.tmp", OneCut());
    formats::WriteInterchangeFile(directory_ / "BinaryPaths.tmp", {OneCut(), OneCut()});
    formats::WriteBinarySurface(directory_ / "StockModelOutput.tmp", Tetrahedron());
    int age = 50;
    for (const char* name : {"StockModelInput.tmp", "TmpPathInfo0.tmp", "TmpPathInfo1.tmp",
                             "BinaryPaths.tmp", "StockModelOutput.tmp"}) {
      SetAge(name, age);
      age -= 5;
    }
  }

  void SetAge(const char* name, int seconds) {
    std::filesystem::last_write_time(
        directory_ / name,
        std::filesystem::file_time_type::clock::now() - std::chrono::seconds(seconds));
  }

  Json Describe() const { return host::DescribeJob(directory_ / ""); }

  Json File(const std::string& name) const {
    const Json job = Describe();
    for (const Json& file : job["files"]) {
      if (host::FileName(file["file"]) == name) return file;
    }
    return {};
  }

  TempDirectory directory_;
};

TEST_F(DescribeJob, ListsAFreshJobInTheOrderOfUseWithNothingStale) {
  const Json job = Describe();
  EXPECT_EQ(job["paths"], 2);
  std::vector<std::string> names;
  for (const Json& file : job["files"]) {
    names.push_back(host::FileName(file["file"]));
    EXPECT_EQ(file["stale"], false) << file;
  }
  EXPECT_THAT(names,
              testing::ElementsAre("StockModelInput.tmp", "TmpPathInfo0.tmp", "TmpPathInfo1.tmp",
                                   "BinaryPaths.tmp", "StockModelOutput.tmp"));
}

TEST_F(DescribeJob, MarksWhatIsOlderThanItsSources) {
  SetAge("TmpPathInfo1.tmp", 1);
  EXPECT_EQ(File("BinaryPaths.tmp")["remarks"], Json({"older than TmpPathInfo1.tmp"}));
  EXPECT_EQ(File("StockModelOutput.tmp")["remarks"], Json({"older than TmpPathInfo1.tmp"}));
  EXPECT_EQ(File("StockModelInput.tmp")["stale"], false);
  SetAge("StockModelInput.tmp", 0);
  EXPECT_EQ(File("StockModelOutput.tmp")["remarks"], Json({"older than StockModelInput.tmp"}));
}

TEST_F(DescribeJob, MarksPathFilesBehindAGap) {
  formats::WritePathInfoFile(directory_ / "TmpPathInfo3.tmp", OneCut());
  EXPECT_EQ(File("TmpPathInfo3.tmp")["remarks"],
            Json({"takes no part: there is no TmpPathInfo2.tmp"}));
  EXPECT_EQ(File("BinaryPaths.tmp")["stale"], false);
}

TEST_F(DescribeJob, MarksAnInterchangeFileOfAnotherNumberOfPaths) {
  std::filesystem::remove(directory_ / "TmpPathInfo1.tmp");
  EXPECT_EQ(File("BinaryPaths.tmp")["remarks"], Json({"holds 2 paths, the job has 1"}));
}

TEST_F(DescribeJob, ComparesDiagnosticCopiesWithTheirOriginals) {
  WriteWholeFile(directory_ / "Job_TmpSaveOutputStock.iff",
                 ReadWholeFile(directory_ / "StockModelOutput.tmp"));
  EXPECT_EQ(File("Job_TmpSaveOutputStock.iff")["copy_of"], "StockModelOutput.tmp");
  EXPECT_EQ(File("Job_TmpSaveOutputStock.iff")["stale"], false);
  WriteWholeFile(directory_ / "Job_TmpSaveOutputStock.iff", "something else");
  EXPECT_EQ(File("Job_TmpSaveOutputStock.iff")["remarks"],
            Json({"differs from StockModelOutput.tmp"}));
}

TEST_F(DescribeJob, TakesTheSavedResultsOfAComparisonForTheCopyOfThePartThatTheyAre) {
  WriteWholeFile(directory_ / "PartFileToCompare.iff",
                 ReadWholeFile(directory_ / "StockModelInput.tmp"));
  WriteWholeFile(directory_ / "Job_TmpSaveCompareResults.iff",
                 ReadWholeFile(directory_ / "StockModelInput.tmp"));
  EXPECT_EQ(File("Job_TmpSaveCompareResults.iff")["copy_of"], "PartFileToCompare.iff");
  EXPECT_EQ(File("Job_TmpSaveCompareResults.iff")["stale"], false);
}

TEST_F(DescribeJob, MarksCopiesOfWhatTheJobNoLongerHas) {
  WriteWholeFile(directory_ / "Job_TmpSaveErrorCapture.txt", "\nError Message Received:\na\n");
  EXPECT_EQ(File("Job_TmpSaveErrorCapture.txt")["remarks"],
            Json({"the job has no ErrorCapture.txt"}));
}

TEST_F(DescribeJob, LeavesCopiesInADirectoryOfTheirOwnUnmarked) {
  std::filesystem::create_directory(directory_ / "keep");
  WriteWholeFile(directory_ / "keep/Job_TmpSaveErrorCapture.txt", "\nError Message Received:\na\n");
  const Json job = host::DescribeJob(directory_ / "keep");
  EXPECT_EQ(job["files"][0]["stale"], false);
}

TEST_F(DescribeJob, MarksMessagesOfAnEarlierRun) {
  WriteWholeFile(directory_ / "ErrorCapture.txt", "\nError Message Received:\nb\n");
  EXPECT_EQ(File("ErrorCapture.txt")["stale"], false);
  SetAge("ErrorCapture.txt", 100);
  EXPECT_EQ(File("ErrorCapture.txt")["remarks"], Json({"older than BinaryPaths.tmp"}));
}

TEST_F(DescribeJob, KeepsGoingWhenAFileCannotBeRead) {
  WriteWholeFile(directory_ / "TmpPathInfo1.tmp", "short");
  EXPECT_THAT(File("TmpPathInfo1.tmp")["error"].get<std::string>(), HasSubstr("the path type is"));
  EXPECT_EQ(File("StockModelOutput.tmp")["facets"], 4);
}

TEST_F(DescribeJob, ThrowsWithoutADirectory) {
  const auto describe = [&] { host::DescribeJob(directory_ / "none"); };
  EXPECT_THAT(MessageOf<FileError>(describe), HasSubstr("there is no such directory"));
}

TEST(DescriptionText, SaysItForPeople) {
  const TempDirectory directory;
  formats::WriteBinarySurface(directory / "a.iff", Tetrahedron());
  Json description = host::DescribeFile(directory / "a.iff");
  description["remarks"] = {"older than b"};
  const auto lines = host::DescriptionText(description, "mm");
  EXPECT_THAT(lines[0], HasSubstr("a.iff: surface (binary surface), 170 bytes"));
  EXPECT_THAT(lines, Contains("  STALE: older than b"));
  EXPECT_THAT(lines, Contains("  facets 4, vertices 4"));
  EXPECT_THAT(lines, Contains("  box x 0 .. 3, y 0 .. 4, z 0 .. 6 mm"));
  EXPECT_THAT(lines, Contains("  volume 12 mm^3"));
  EXPECT_THAT(lines, Contains("  topology: closed, manifold, consistently oriented, components 1, "
                              "genus 0"));
}

TEST(DescriptionText, NamesTheFaultsOfASurface) {
  const TempDirectory directory;
  formats::Mesh mesh = Tetrahedron();
  mesh.facets.pop_back();
  std::swap(mesh.facets[0].vertices[0], mesh.facets[0].vertices[1]);
  formats::WriteBinarySurface(directory / "a.iff", mesh);
  const auto lines = host::DescriptionText(host::DescribeFile(directory / "a.iff"), "mm");
  EXPECT_THAT(lines, Contains("  topology: open, components 1, 3 open edges, 1 holes, "
                              "2 flipped edges, 1 flipped facets"));
  EXPECT_THAT(lines, Contains("  colour 1: facets 2, area 15 mm^2"));
}

TEST(DescriptionText, DescribesAPathsToolAndTravel) {
  const TempDirectory directory;
  formats::WriteInterchangeFile(directory / "b.tmp", {Path()});
  const auto lines = host::DescriptionText(host::DescribeFile(directory / "b.tmp"), "inch");
  EXPECT_THAT(lines, Contains("  path 0: 3-axis, colour 4, tolerances sweep 0.025, path 0, "
                              "compression 0"));
  EXPECT_THAT(lines, Contains("    tool: convex, corner radius 5, flat radius 0, upper taper angle "
                              "0, lower taper angle 90, taper height 0, upper bevel radius 0"));
  EXPECT_THAT(lines, Contains("    moves 2 in 2 cuts, length 17 inch"));
}

TEST(DescriptionText, LeavesTheNumberOfAPerPathFileToItsName) {
  const TempDirectory directory;
  formats::WritePathInfoFile(directory / "TmpPathInfo4.tmp", OneCut());
  const auto lines =
      host::DescriptionText(host::DescribeFile(directory / "TmpPathInfo4.tmp"), "mm");
  EXPECT_THAT(lines.at(1), testing::StartsWith("  3-axis, colour "));
}

TEST(DescriptionText, SaysThatNothingIsLeftOfAnEmptySurface) {
  const TempDirectory directory;
  formats::WriteBinarySurface(directory / "a.iff", {});
  const auto lines = host::DescriptionText(host::DescribeFile(directory / "a.iff"), "mm");
  EXPECT_THAT(lines, Contains("  empty: nothing is left"));
  EXPECT_THAT(lines, Contains("  box none mm"));
}

}  // namespace
