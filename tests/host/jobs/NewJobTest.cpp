#include <algorithm>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "host/jobs/NewJob.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kTools =
    R"({"units": "mm", "tools": [{"number": 1, "name": "mill", "kind": "flat", "diameter": 6},
        {"number": 2, "kind": "ball", "diameter": 4, "colour": 8},
        {"number": 3, "kind": "undercut", "armRadius": 1, "regular": {"cornerRadius": 2}}]})";
constexpr const char* kProgram =
    "T1 M6\nG0 X1 Y2 Z3\nG1 Z-1\nT2 M6\nG0 X4 Y5 Z6\nT1 M6\nG0 X7 Y8 Z9\n";

class NewJob : public testing::Test {
 protected:
  NewJob()
      : folder_(fs::temp_directory_path() / ("jobs_" + std::to_string(std::random_device{}()))) {
    fs::create_directories(folder_);
    Write("t.json", kTools);
    Write("p.ngc", kProgram);
    settings_.directory = (folder_ / "job").string();
    settings_.stock = "box:0,0,0,10,20,30";
    settings_.program = (folder_ / "p.ngc").string();
    settings_.tools = (folder_ / "t.json").string();
    settings_.tolerance = 0.025;
    settings_.pathTolerance = 0.01;
    settings_.compressTolerance = 0.125;
  }
  ~NewJob() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  void Write(const std::string& name, const std::string& content) {
    fs::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name, std::ios::binary) << content;
  }

  std::string Read(const std::string& name) const {
    std::ifstream stream(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  }

  std::vector<std::string> Names(const std::string& directory = "job") const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_ / directory)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  std::string Fault() const {
    try {
      host::MakeJob(settings_);
    } catch (const formats::FileError& error) {
      return error.what();
    }
    return {};
  }

  fs::path folder_;
  host::NewJobSettings settings_;
};

template <typename T>
void Append(std::string& bytes, T value) {
  char raw[sizeof value];
  std::memcpy(raw, &value, sizeof value);
  bytes.append(raw, sizeof raw);
}

using Names = std::vector<std::string>;

TEST_F(NewJob, WritesTheStockAndOneFileAToolLoad) {
  const host::NewJobResult result = host::MakeJob(settings_);
  EXPECT_EQ(Names(), (::Names{"StockModelInput.tmp", "TmpPathInfo0.tmp", "TmpPathInfo1.tmp",
                              "TmpPathInfo2.tmp"}));
  EXPECT_EQ(
      formats::ReadBinarySurface((folder_ / "job/StockModelInput.tmp").string()).facets.size(),
      12U);
  ASSERT_EQ(result.paths.size(), 3U);
  EXPECT_EQ(result.paths[0].toolName, "mill");
  EXPECT_EQ(result.paths[1].tool, 2);
  EXPECT_EQ(result.paths[1].colour, 8);
  EXPECT_EQ(result.files.size(), 4U);
}

TEST_F(NewJob, WritesEveryFieldOfAPathInItsPlace) {
  host::MakeJob(settings_);
  std::string bytes;
  Append(bytes, std::int16_t{1});
  Append(bytes, std::uint8_t{1});
  for (const double value : {0.025, 0.01, 0.125}) Append(bytes, value);
  for (const double value : {1, 0, 0, 0, 1, 0, 0, 0, 1}) Append(bytes, value);
  for (const double value : {0, 0, 0}) Append(bytes, double{static_cast<double>(value)});
  Append(bytes, std::int16_t{1});
  for (const double value : {0, 3, 0, 90, 0, 0}) Append(bytes, double{static_cast<double>(value)});
  for (const double value : {1, 2, 3, 1, 2, -1}) Append(bytes, double{static_cast<double>(value)});
  EXPECT_EQ(Read("job/TmpPathInfo0.tmp"), bytes);
}

TEST_F(NewJob, RefusesADirectoryThatHoldsAJob) {
  for (const char* name : {"StockModelInput.tmp", "StockModelOutput.tmp", "TmpPathInfo17.tmp",
                           "CompareResults.iff", "BinaryPaths.tmp", "BinaryPaths.txt"}) {
    fs::remove_all(folder_ / "job");
    Write(std::string("job/") + name, "old");
    EXPECT_NE(Fault().find("holds a job already"), std::string::npos) << name;
    EXPECT_EQ(Names(), ::Names{name});
    EXPECT_EQ(Read(std::string("job/") + name), "old");
  }
}

TEST_F(NewJob, StandsBesideFilesThatAreNoneOfAJobs) {
  Write("job/notes.txt", "mine");
  Write("job/TmpPathInfo.tmp", "mine");
  Write("job/TmpPathInfoX.tmp", "mine");
  EXPECT_EQ(Fault(), "");
  EXPECT_EQ(Read("job/notes.txt"), "mine");
  EXPECT_EQ(Read("job/TmpPathInfoX.tmp"), "mine");
}

TEST_F(NewJob, ForceTakesAwayWhatBelongedToTheOldJob) {
  for (const char* name :
       {"StockModelInput.tmp", "StockModelOutput.tmp", "TmpPathInfo0.tmp", "TmpPathInfo5.tmp",
        "TmpPathInfo123.tmp", "CompareResults.iff", "ErrorCapture.txt", "BinaryPaths.tmp"}) {
    Write(std::string("job/") + name, "old");
  }
  settings_.force = true;
  host::MakeJob(settings_);
  EXPECT_EQ(Names(), (::Names{"BinaryPaths.tmp", "ErrorCapture.txt", "StockModelInput.tmp",
                              "TmpPathInfo0.tmp", "TmpPathInfo1.tmp", "TmpPathInfo2.tmp"}));
  EXPECT_NE(Read("job/StockModelInput.tmp"), "old");
  EXPECT_NE(Read("job/TmpPathInfo0.tmp"), "old");
}

TEST_F(NewJob, AFailureLeavesTheOldJobAsItWas) {
  const ::Names old = {"StockModelInput.tmp", "StockModelOutput.tmp", "TmpPathInfo0.tmp",
                       "TmpPathInfo7.tmp"};
  for (const std::string& name : old) Write("job/" + name, "old");
  settings_.force = true;
  Write("p.ngc", std::string(kProgram) + "G0 X[\n");
  EXPECT_NE(Fault().find("(line 8, column 6)"), std::string::npos) << Fault();
  EXPECT_EQ(Names(), old);
  for (const std::string& name : old) EXPECT_EQ(Read("job/" + name), "old");
}

TEST_F(NewJob, AFileThatCannotBePutInPlaceBringsTheOldJobBack) {
  // A directory with something in it, of the name that the second path takes.
  Write("job/TmpPathInfo1.tmp/blocked", "mine");
  Write("job/TmpPathInfo0.tmp", "old path");
  Write("job/StockModelInput.tmp", "old stock");
  Write("job/StockModelOutput.tmp", "old result");
  settings_.force = true;
  EXPECT_NE(Fault(), "");
  EXPECT_EQ(Names(), (::Names{"StockModelInput.tmp", "StockModelOutput.tmp", "TmpPathInfo0.tmp",
                              "TmpPathInfo1.tmp"}));
  EXPECT_EQ(Read("job/TmpPathInfo0.tmp"), "old path");
  EXPECT_EQ(Read("job/StockModelInput.tmp"), "old stock");
  EXPECT_EQ(Read("job/StockModelOutput.tmp"), "old result");
  EXPECT_EQ(Read("job/TmpPathInfo1.tmp/blocked"), "mine");
}

TEST_F(NewJob, AFailureLeavesNoDirectoryBehind) {
  settings_.directory = (folder_ / "a/b/job").string();
  Write("p.ngc", "T9 M6\n");
  EXPECT_NE(Fault().find("tool 9 is not in the tool table (line 1, column 4)"), std::string::npos);
  EXPECT_FALSE(fs::exists(folder_ / "a"));
}

TEST_F(NewJob, MakesDirectoriesOnTheWayInEitherSpelling) {
  settings_.directory = folder_.string() + "/a\\b/";
  EXPECT_EQ(Fault(), "");
  EXPECT_TRUE(fs::exists(folder_ / "a/b/TmpPathInfo2.tmp"));
}

TEST_F(NewJob, RefusesToolsThatTheKernelCannotCutWith) {
  Write("p.ngc", "T3 M6\nG0 X0 Y0 Z0\n");
  EXPECT_EQ(Fault(), settings_.tools +
                         ": tool 3 is no standard convex tool, and the kernel cannot cut with "
                         "others yet");
  EXPECT_FALSE(fs::exists(folder_ / "job"));
}

TEST_F(NewJob, RefusesAnOpenStock) {
  formats::Mesh open = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{{0, 1, 2}, 0}}};
  formats::WriteBinarySurface((folder_ / "open.iff").string(), open);
  settings_.stock = (folder_ / "open.iff").string();
  EXPECT_NE(Fault().find("the stock is open"), std::string::npos);
}

TEST_F(NewJob, KeepsTheStocksOwnColours) {
  settings_.directory = (folder_ / "first").string();
  host::MakeJob(settings_);
  formats::Mesh stock =
      formats::ReadBinarySurface((folder_ / "first/StockModelInput.tmp").string());
  stock.facets[3].colour = 77;
  formats::WriteBinarySurface((folder_ / "mine.iff").string(), stock);
  settings_.stock = (folder_ / "mine.iff").string();
  settings_.directory = (folder_ / "job").string();
  host::MakeJob(settings_);
  EXPECT_EQ(Read("job/StockModelInput.tmp"), Read("mine.iff"));
}

TEST_F(NewJob, RefusesAnInputWhosePlaceItWouldTake) {
  host::MakeJob(settings_);
  settings_.force = true;
  settings_.stock = (folder_ / "job/../job/StockModelInput.tmp").string();
  EXPECT_NE(Fault().find("the new job would take this file's place"), std::string::npos);
  EXPECT_TRUE(fs::exists(folder_ / "job/TmpPathInfo2.tmp"));
}

TEST_F(NewJob, NumbersTheRapidsOfALoadAheadOfItsCuts) {
  settings_.rapidColour = 9;
  Write("p.ngc", "T1 M6\nG0 X0 Y0 Z5\nG1 Z0\nG0 Z5\nX9\nG1 Z0\nT2 M6\nG0 X1 Y1 Z1\nX2\nG1 Z0\n");
  const auto paths = host::MakeJob(settings_).paths;
  ASSERT_EQ(paths.size(), 5U);
  std::string order;
  for (const auto& path : paths) order += std::to_string(path.tool) + (path.rapid ? "r " : "f ");
  EXPECT_EQ(order, "1r 1f 1f 2r 2f ");
  EXPECT_EQ(Read("job/TmpPathInfo0.tmp")[2], 9);
  EXPECT_EQ(Read("job/TmpPathInfo1.tmp")[2], 1);
}

TEST_F(NewJob, RefusesAProgramThatMovesNothing) {
  Write("p.ngc", "T1 M6\nG0 X1\n");
  EXPECT_NE(Fault().find("no move of a tool between known positions"), std::string::npos);
  EXPECT_FALSE(fs::exists(folder_ / "job"));
}

TEST_F(NewJob, RefusesADirectoryThatIsAFile) {
  Write("job", "file");
  EXPECT_NE(Fault().find("is no directory"), std::string::npos);
  EXPECT_EQ(Read("job"), "file");
}

TEST_F(NewJob, WorksInInches) {
  settings_.metric = false;
  Write("p.ngc", "T1 M6\nG0 X1 Y2 Z3\nG21 X25.4\nG20 X5\n");
  host::MakeJob(settings_);
  std::string positions;
  for (const double value : {1.0, 2.0, 3.0, 5.0, 2.0, 3.0}) Append(positions, value);
  const std::string file = Read("job/TmpPathInfo0.tmp");
  ASSERT_EQ(file.size(), 173 + positions.size());
  EXPECT_EQ(file.substr(173), positions);
}

}  // namespace
