// The doubles themselves: what they observe and what they can make fail.

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <stdexcept>

#include "SystemApi.h"
#include "callbacks/UIDialog.h"
#include "platform/HostExecutable.h"
#include "platform/IFHeal.h"
#include "platform/IFSweep.h"
#include "platform/QZCore.h"
#include "platform/files.h"
#include "stock/SurfaceTransfer.h"
#include "support/FileBuilder.h"
#include "support/JobFiles.h"
#include "support/NothrowBlocks.h"
#include "support/RecordingChannel.h"
#include "support/RecordingHostProgress.h"
#include "support/ScriptedKernel.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TestHostTest : public ::testing::Test {
 protected:
  TestHostTest() { host.events.Alias(directory.Path().string(), "job"); }

  std::string Spelled(const std::string& name) const {
    return support::AddinSpelling(directory.Path()) + name;
  }

  support::TempDirectory directory;
  support::TestHost host;
};

TEST(FileBuilder, WritesFieldsLittleEndianWithoutPadding) {
  support::FileBuilder file;
  file.Text("ab").Uint8(255).Int16(-2).Int32(-3).Uint32(0x01020304).Double(1.0);
  file.Uint16(0x8123).Floats({1.0F, -2.0F});
  const std::string expected(
      "ab\xff\xfe\xff\xfd\xff\xff\xff\x04\x03\x02\x01\0\0\0\0\0\0\xf0\x3f"
      "\x23\x81\0\0\x80\x3f\0\0\0\xc0",
      31);
  EXPECT_EQ(file.Bytes(), expected);
}

TEST(JobFiles, CubeHasTheSizeOfItsCounts) {
  const std::string bytes = support::BinarySurfaceBytes(support::Cube(10, 7));
  EXPECT_EQ(bytes.size(), 22u + 8 * 24 + 12 * 13);
  EXPECT_EQ(bytes.back(), '\7');
}

TEST(JobFiles, PathFilesHaveTheSizesOfTheirFields) {
  support::Path path;
  EXPECT_EQ(support::PathInfoBytes(path).size(), 2u + 1 + 24 + 72 + 24 + 2 + 48 + 48);
  EXPECT_EQ(support::InterchangeBytes({path}).size(), 24u + 8 + 24 + 72 + 24 + 4 + 48 + 8 + 48);
  path.tool = support::UndercutBlock{};
  EXPECT_EQ(support::PathInfoBytes(path).size(), 2u + 1 + 24 + 72 + 24 + 2 + 114 + 48);
  path.tool = support::CustomBlock{{{1, {2, 3, 4, 5}, true, false}}, {{6, {7, 8, 9}, true}}};
  EXPECT_EQ(support::PathInfoBytes(path).size(), 2u + 1 + 24 + 72 + 24 + 2 + 8 + 38 + 29 + 48);
}

TEST_F(TestHostTest, TrackedStreamIsNamedUntilItIsClosed) {
  bool status = false;
  FILE* stream = m_fopen_hl("UNIT", 7, Spelled("").c_str(), "a.tmp", "wb", &status);
  ASSERT_NE(stream, nullptr);
  EXPECT_TRUE(status);
  EXPECT_THAT(host.OpenStreams(), ElementsAre("UNIT job\\a.tmp"));
  m_fclose("UNIT", 0, stream);
  EXPECT_THAT(host.OpenStreams(), IsEmpty());
  EXPECT_THAT(host.events.Events(), ElementsAre("m_fopen_hl UNIT job\\ a.tmp wb",
                                                "m_fclose UNIT job\\a.tmp without line"));
}

TEST_F(TestHostTest, ActionOfACallRunsInsideThatCallOnlyAndMayThrow) {
  int runs = 0;
  host.faults.RunAt("file_exists", 2, [&] { ++runs; });
  host.faults.RunAt("m_fopen", 1, [] { throw 5; });
  file_exists("a", 0);
  EXPECT_EQ(runs, 0);
  file_exists("a", 0);
  file_exists("a", 0);
  EXPECT_EQ(runs, 1);
  EXPECT_THROW(m_fopen("U", 1, "a", "rb"), int);
  EXPECT_EQ(m_fopen("U", 1, Spelled("missing").c_str(), "rb"), nullptr);
}

TEST_F(TestHostTest, EscapeIsPressedWhenTheTestSaysSoAndNoOtherKeyEverIs) {
  host.escapeFrom = 2;
  EXPECT_FALSE(KeyPress(27));
  EXPECT_TRUE(KeyPress(27));
  EXPECT_TRUE(KeyPress(27));
  EXPECT_FALSE(KeyPress(13));
  host.escapeFrom = 0;
  EXPECT_FALSE(KeyPress(27));
  host.escapePressed = true;
  EXPECT_TRUE(KeyPress(27));
}

TEST_F(TestHostTest, FullPathAsNameIsTakenAsItStands) {
  bool status = false;
  FILE* stream =
      m_fopen_hl("UNIT", 7, Spelled("").c_str(), Spelled("a.tmp").c_str(), "wb", &status);
  m_fclose("UNIT", 8, stream);
  EXPECT_THAT(support::NamesIn(directory.Path()), ElementsAre("a.tmp"));
}

TEST_F(TestHostTest, StatusOfASuccessfulOpenIsLeftAloneWhenToldSo) {
  host.statusWrites = support::TestHost::StatusWrites::kOnlyOnFailure;
  host.faults.FailCall("m_fopen_hl", 2);
  bool status = false;
  FILE* stream = m_fopen_hl("UNIT", 7, "", Spelled("a.tmp").c_str(), "wb", &status);
  ASSERT_NE(stream, nullptr);
  EXPECT_FALSE(status);
  status = true;
  EXPECT_EQ(m_fopen_hl("UNIT", 7, "", Spelled("a.tmp").c_str(), "rb", &status), nullptr);
  EXPECT_FALSE(status);
}

TEST_F(TestHostTest, StatusIsLeftAloneAltogetherWhenToldSo) {
  host.statusWrites = support::TestHost::StatusWrites::kNever;
  bool status = true;
  EXPECT_EQ(m_fopen_hl("UNIT", 7, "", Spelled("a.tmp").c_str(), "rb", &status), nullptr);
  EXPECT_TRUE(status);
}

TEST_F(TestHostTest, ChosenCallsOfTheStandardLibraryFail) {
  host.faults.FailCall("fopen", 2);
  host.faults.FailCall("fwrite", 2);
  host.faults.FailCall("fread", 1);
  host.faults.FailCall("fseek", 1);
  host.faults.FailCall("remove", 1);
  FILE* stream = nullptr;
  ASSERT_EQ(fopen_s(&stream, Spelled("a.tmp").c_str(), "w+b"), 0);
  FILE* refused = nullptr;
  EXPECT_NE(fopen_s(&refused, Spelled("a.tmp").c_str(), "rb"), 0);
  EXPECT_EQ(refused, nullptr);
  char byte = 'x';
  EXPECT_EQ(std::fwrite(&byte, 1, 1, stream), 1u);
  EXPECT_EQ(std::fwrite(&byte, 1, 1, stream), 0u);
  EXPECT_NE(std::fseek(stream, 0, SEEK_SET), 0);
  EXPECT_EQ(std::fseek(stream, 0, SEEK_SET), 0);
  EXPECT_EQ(std::fread(&byte, 1, 1, stream), 0u);
  EXPECT_EQ(std::fread(&byte, 1, 1, stream), 1u);
  EXPECT_EQ(std::fclose(stream), 0);
  EXPECT_NE(RemoveStdFile(Spelled("a.tmp").c_str()), 0);
  EXPECT_EQ(RemoveStdFile(Spelled("a.tmp").c_str()), 0);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("fopen job\\a.tmp w+b", "fopen job\\a.tmp rb fails", "fclose job\\a.tmp",
                          "remove job\\a.tmp fails", "remove job\\a.tmp"));
}

TEST_F(TestHostTest, FullDiskCutsAWriteShort) {
  host.faults.LimitDisk(5);
  FILE* stream = OpenStdFile(Spelled("a.tmp").c_str(), "wb");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(std::fwrite("abcdefgh", 2, 4, stream), 2u);
  std::fclose(stream);
  EXPECT_EQ(support::ReadWholeFile(directory.Path() / "a.tmp"), "abcde");
}

TEST_F(TestHostTest, SystemCallsAreObservedAndFail) {
  support::WriteWholeFile(directory.Path() / "a", "text");
  char before[256] = "";
  GetCurrentDirectoryA(256, before);
  host.faults.FailCall("CopyFileA", 2);
  EXPECT_TRUE(CopyFileA(Spelled("a").c_str(), Spelled("b").c_str(), 0));
  EXPECT_FALSE(CopyFileA(Spelled("a").c_str(), Spelled("c").c_str(), 0));
  EXPECT_TRUE(SetCurrentDirectoryA(Spelled("").c_str()));
  EXPECT_TRUE(SetCurrentDirectoryA(before));
  host.events.Alias(before, "home");
  EXPECT_EQ(host.events.Events().at(0), "getcwd 256");
  EXPECT_EQ(host.events.Events().at(1), "copy job\\a -> job\\b");
  EXPECT_EQ(host.events.Events().at(2), "copy job\\a -> job\\c fails");
  EXPECT_EQ(host.events.Events().at(3), "chdir job\\");
  EXPECT_EQ(host.events.Events().size(), 5u);
  EXPECT_EQ(support::ReadWholeFile(directory.Path() / "b"), "text");
}

TEST_F(TestHostTest, ChosenAllocationFails) {
  host.faults.FailCall("new", 1);
  host.faults.FailCall("new", 3);
  EXPECT_EQ(new (std::nothrow) int, nullptr);
  int* one = new (std::nothrow) int;
  EXPECT_NE(one, nullptr);
  delete one;
  EXPECT_EQ(new (std::nothrow) double[3], nullptr);
}

TEST_F(TestHostTest, BlocksThatMayBeRefusedAreCountedUntilTheyAreGivenBack) {
  {
    const std::unique_ptr<int[]> array(new (std::nothrow) int[4]);
    const std::unique_ptr<int> ordinary(new int);
    EXPECT_NE(new (std::nothrow) int, nullptr);
    EXPECT_EQ(support::LivingBlocks(), 2u);
  }
  EXPECT_EQ(support::TakeLostBlocks(), 1u);
  EXPECT_EQ(support::LivingBlocks(), 0u);
}

TEST(TestHostEnd, BlocksThatAreLeftFailTheTest) {
  std::unique_ptr<int> left;
  EXPECT_NONFATAL_FAILURE(
      {
        support::TestHost host;
        left.reset(new (std::nothrow) int);
      },
      "was not given back");
}

TEST_F(TestHostTest, FlushAndPlaceOfAStreamFailWhenToldSo) {
  FILE* stream = OpenStdFile(Spelled("a.tmp").c_str(), "wb");
  ASSERT_NE(stream, nullptr);
  host.faults.FailCall("fflush", 2);
  host.faults.FailCall("fgetpos", 1);
  host.faults.FailCall("fsetpos", 1);
  host.faults.FailCall("fseek", 1);
  EXPECT_EQ(std::fflush(stream), 0);
  EXPECT_EQ(std::fflush(stdout), 0) << "not a stream of the code under test";
  EXPECT_NE(std::fflush(stream), 0);
  std::fpos_t place;
  EXPECT_NE(std::fgetpos(stream, &place), 0);
  EXPECT_EQ(std::fgetpos(stream, &place), 0);
  EXPECT_NE(std::fsetpos(stream, &place), 0);
  EXPECT_EQ(std::fsetpos(stream, &place), 0);
  EXPECT_NE(SeekStdFile(stream, 0), 0);
  EXPECT_EQ(SeekStdFile(stream, 0), 0);
  std::fclose(stream);
}

TEST_F(TestHostTest, RegistryAnswersAsSet) {
  host.stockDataDirectory = "D:\\Keep";
  HKEY key = nullptr;
  ASSERT_EQ(RegOpen("Software\\Key", &key, nullptr, 131097), 1);
  char value[260] = "";
  unsigned long size = sizeof value;
  EXPECT_EQ(GetStringValue(key, "Name", value, &size), 1);
  EXPECT_STREQ(value, "D:\\Keep");
  RegClose(key);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("RegOpen Software\\Key 131097", "GetStringValue Name 260", "RegClose"));
}

TEST_F(TestHostTest, ProgressQuestionsAreCounted) {
  support::RecordingHostProgress progress;
  progress.cancelFrom = 2;
  EXPECT_FALSE(progress.IsCancelled());
  EXPECT_TRUE(progress.IsCancelled());
  CString text;
  EXPECT_TRUE(progress.LoadMessage(44, &text));
  progress.ShowProgress(&text, 250);
  EXPECT_THAT(host.events.Events(), ElementsAre("IsCancelled", "IsCancelled", "LoadMessage 44",
                                                "ShowProgress \"message 44\" 250"));
}

TEST_F(TestHostTest, ScriptedKernelNumbersItsCallsAndRunsScripts) {
  support::ScriptedKernel kernel;
  kernel.result = {{{1, 2, 3}}, {}};
  kernel.AtCall(5, support::ScriptedKernel::Foreign());
  UIDialog silent;
  {
    IFSweep sweep(&silent);
    SurfaceTransfer* stock = sweep.OpenStockChannel();
    const double xyz[3] = {4, 5, 6};
    stock->AddVertex(xyz);
    sweep.SetFiveAxisBufferingLevel(0);
    std::string paths = Spelled("BinaryPaths.tmp");
    EXPECT_THROW(sweep.Run(stock, paths.data()), std::runtime_error);
    EXPECT_EQ(kernel.LivingObjects(), 1);
  }
  EXPECT_EQ(kernel.LivingObjects(), 0);
  EXPECT_THAT(kernel.stock.vertices, ElementsAre(std::array<double, 3>{4, 5, 6}));
  EXPECT_THAT(host.events.Events(),
              ElementsAre("IFSweep()", "OpenStockChannel", "stock.AddVertex 1",
                          "SetFiveAxisBufferingLevel 0", "Run job\\BinaryPaths.tmp", "~IFSweep()"));
}

TEST(ScriptedKernelTest, ComparisonNamesItsChannelsAndKeepsItsBands) {
  support::TestHost host;
  support::ScriptedKernel kernel;
  kernel.result = {{{1, 2, 3}}, {}};
  UIDialog callbacks;
  unsigned int colours[] = {3, 256};
  double distances[] = {0.5, 1.5};
  support::Surface received;
  support::RecordingChannel results("results", callbacks, received);
  {
    IFSweep sweep(&callbacks);
    SurfaceTransfer* part = sweep.OpenCompareSurfaceChannel();
    SurfaceTransfer* stock = sweep.OpenCompareSurfaceChannel();
    const double corner[] = {1, 2, 3};
    part->AddVertex(corner);
    sweep.Compare(stock, part, 7, 2, colours, distances, &results);
    sweep.Compare(part, &results, 7, 2, colours, distances, &results);
  }
  EXPECT_EQ(kernel.bands, (support::Bands{7, 2, {3, 256}, {0.5, 1.5}}));
  EXPECT_EQ(kernel.part.vertices.size(), 1u);
  EXPECT_EQ(received, kernel.result);
  EXPECT_THAT(host.events.Only({"Compare"}), ElementsAre("Compare stock part", "Compare ends",
                                                         "Compare part not-ours", "Compare ends"));
}

TEST(TempDirectoryTest, FilesOfADirectoryComeWithAllTheirBytes) {
  const support::TempDirectory directory;
  support::WriteWholeFile(directory / "b", std::string("x\r\n\0y", 5));
  support::WriteWholeFile(directory / "a", "");
  EXPECT_EQ(support::FilesIn(directory.Path()),
            (std::map<std::string, std::string>{{"a", ""}, {"b", std::string("x\r\n\0y", 5)}}));
}

TEST(TempDirectoryTest, TextHasTheLineEndsThatATextStreamWrites) {
  const support::TempDirectory directory;
  FILE* stream = OpenStdFile((directory / "text").c_str(), "w");
  std::fputs("\none\ntwo\n", stream);
  std::fclose(stream);
  EXPECT_EQ(support::ReadWholeFile(directory / "text"), support::TextFileBytes("\none\ntwo\n"));
}

TEST(ScriptedKernelTest, HealIsNumberedRecordedAndScripted) {
  support::TestHost host;
  support::ScriptedKernel kernel;
  UIDialog callbacks;
  char input[] = "in";
  char output[] = "out";
  int destructions = 0;
  kernel.AtDestruction([&] { ++destructions; });
  kernel.AtCall(3, support::ScriptedKernel::Foreign());
  {
    IFHeal heal(&callbacks);
    EXPECT_EQ(kernel.LivingObjects(), 1);
    EXPECT_THROW(heal.Run(0.5, input, output), std::runtime_error);
    EXPECT_EQ(destructions, 0);
  }
  EXPECT_EQ(destructions, 1);
  EXPECT_EQ(kernel.LivingObjects(), 0);
  EXPECT_EQ(kernel.healTolerance, 0.5);
  EXPECT_THAT(kernel.CallNames(), ElementsAre("IFHeal()", "heal.Run", "heal.Run ends"));
  EXPECT_THAT(host.events.Events(),
              ElementsAre("IFHeal()", "heal.Run in out", "heal.Run ends", "~IFHeal()"));
}

}  // namespace
