// The info and convert subcommands through the command line's parser.
#include <CLI/CLI.hpp>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/commands/commands.h"
#include "support/CurveFile.h"
#include "support/TempDirectory.h"

namespace {

using Json = nlohmann::ordered_json;
using support::ReadWholeFile;
using support::TempDirectory;
using support::WriteWholeFile;
using testing::HasSubstr;

class FileCommands : public testing::Test {
 protected:
  FileCommands() {
    formats::WriteBinarySurface(directory_ / "a.iff",
                                {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{{0, 1, 2}, 7}}});
  }

  // What the run prints; its exit code goes into exitCode_.
  std::string Run(const std::vector<std::string>& arguments) {
    CLI::App app;
    app.require_subcommand(1);
    host::AddInfoCommand(app, options_);
    host::AddConvertCommand(app, options_);
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    testing::internal::CaptureStdout();
    try {
      exitCode_ = options_.run();
    } catch (...) {
      testing::internal::GetCapturedStdout();
      throw;
    }
    return testing::internal::GetCapturedStdout();
  }

  TempDirectory directory_;
  host::Options options_;
  int exitCode_ = -1;
};

TEST_F(FileCommands, InfoSaysTheUnitsAndTheFile) {
  options_.units = host::Units::kInches;
  const std::string text = Run({"info", directory_ / "a.iff"});
  EXPECT_EQ(exitCode_, host::kSuccess);
  EXPECT_THAT(text, HasSubstr("units  inch\n"));
  EXPECT_THAT(text, HasSubstr("  facets 1, vertices 3\n"));
  EXPECT_THAT(text, HasSubstr("area 0.5 inch^2\n"));
}

TEST_F(FileCommands, InfoPutsOneObjectOnStandardOutputForMachines) {
  options_.json = true;
  const Json object = Json::parse(Run({"info", directory_ / "a.iff"}));
  EXPECT_EQ(object["command"], "info");
  EXPECT_EQ(object["files"][0]["facets"], 1);
}

TEST_F(FileCommands, InfoRefusesAFileThatIsNoneOfAJobs) {
  WriteWholeFile(directory_ / "x.md", "hello\n");
  EXPECT_THROW(Run({"info", directory_ / "x.md"}), host::CommandError);
  EXPECT_THROW(Run({"info", directory_ / "none"}), formats::FileError);
}

TEST_F(FileCommands, InfoOnAJobEndsBadlyWhenAFileThatTakesPartCannotBeRead) {
  WriteWholeFile(directory_ / "TmpPathInfo0.tmp", "short");
  options_.json = true;
  const Json object = Json::parse(Run({"info", directory_ / "."}));
  EXPECT_EQ(exitCode_, host::kBadInput);
  EXPECT_EQ(object["exit_code"], 2);
  EXPECT_EQ(object["files"].size(), 2U);
}

TEST_F(FileCommands, InfoOnAJobForgivesUnreadableFilesThatTakeNoPart) {
  WriteWholeFile(directory_ / "TmpPathInfo5.tmp", "short");
  EXPECT_THAT(Run({"info", directory_ / "."}),
              HasSubstr("STALE: takes no part: there is no TmpPathInfo0.tmp"));
  EXPECT_EQ(exitCode_, host::kSuccess);
}

TEST_F(FileCommands, ConvertTakesEncodingAndColour) {
  Run({"convert", directory_ / "a.iff", directory_ / "b.stl", "--ascii"});
  EXPECT_EQ(exitCode_, host::kSuccess);
  EXPECT_EQ(ReadWholeFile(directory_ / "b.stl").substr(0, 11), "solid mesh\n");
  Run({"convert", directory_ / "b.stl", directory_ / "c.iff", "--color", "9"});
  EXPECT_EQ(formats::ReadBinarySurface(directory_ / "c.iff").facets.at(0).colour, 9);
}

// Two squares, the second one a hole in the first, at z = 3.
void WriteSquareWithHole(const std::string& path) {
  support::CurveFile file;
  file.mode = 1;
  file.segmentCount = 8;
  file.points = {{0, 0, 3}, {8, 0, 3}, {8, 8, 3}, {0, 8, 3},
                 {2, 2, 3}, {2, 6, 3}, {6, 6, 3}, {6, 2, 3}};
  file.curves = {{{1, 2}, {2, 3}, {3, 4}, {4, 1}}, {{5, 6}, {6, 7}, {7, 8}, {8, 5}}};
  WriteWholeFile(path, support::CurveFileBytes(file));
}

TEST_F(FileCommands, InfoDescribesCurves) {
  WriteSquareWithHole(directory_ / "a.curves");
  const std::string text = Run({"info", directory_ / "a.curves"});
  EXPECT_THAT(text, HasSubstr("a.curves: curves (binary tree_curves), 306 bytes\n"));
  EXPECT_THAT(text, HasSubstr("  curves 2, of these holes 1\n"));
  EXPECT_THAT(text, HasSubstr("  box x 0 .. 8, y 0 .. 8, z 3 .. 3 mm\n"));
  EXPECT_THAT(text, HasSubstr("  length 48 mm\n  area 48 mm^2\n"));
  EXPECT_THAT(text,
              HasSubstr("  curve 1: points 4, counter-clockwise, length 32 mm, area 64 mm^2\n"));
  EXPECT_THAT(text, HasSubstr("  curve 2: hole of curve 1, points 4, clockwise, length 16 mm, "
                              "area -16 mm^2\n"));
}

TEST_F(FileCommands, ConvertMakesDrawingsOfCurvesInTheUnitsAsked) {
  WriteSquareWithHole(directory_ / "a.curves");
  options_.units = host::Units::kInches;
  const std::string text = Run({"convert", directory_ / "a.curves", directory_ / "b.svg"});
  EXPECT_EQ(exitCode_, host::kSuccess);
  EXPECT_THAT(text, HasSubstr("(binary tree_curves)\n"));
  EXPECT_THAT(text, HasSubstr("b.svg (SVG)\n"));
  EXPECT_THAT(text, HasSubstr("the drawing is flat: the points' z is lost"));
  EXPECT_THAT(ReadWholeFile(directory_ / "b.svg"), HasSubstr("width=\"8.32in\""));
  options_.json = true;
  const Json object = Json::parse(Run({"convert", directory_ / "a.curves", directory_ / "b.dxf"}));
  EXPECT_EQ(object["output_format"], "DXF");
  EXPECT_EQ(object["curves"], 2);
  EXPECT_EQ(object["points"], 8);
  EXPECT_EQ(object["heights_lost"], false);
  EXPECT_THAT(ReadWholeFile(directory_ / "b.dxf"), testing::StartsWith("999\nlengths in inches\n"));
}

TEST_F(FileCommands, ConvertRefusesOptionsThatCurvesHaveNoUseFor) {
  WriteSquareWithHole(directory_ / "a.curves");
  for (const std::string option : {"--ascii", "--binary", "--colour=0"}) {
    EXPECT_THROW(Run({"convert", directory_ / "a.curves", directory_ / "b.svg", option}),
                 host::CommandError);
  }
}

TEST_F(FileCommands, ConvertRefusesColoursThatAreNone) {
  EXPECT_THROW(Run({"convert", directory_ / "a.iff", directory_ / "b.stl", "--colour", "256"}),
               CLI::ParseError);
  EXPECT_THROW(Run({"convert", directory_ / "a.iff", directory_ / "b.stl", "--ascii", "--binary"}),
               CLI::ParseError);
}

}  // namespace
