// Two makers of the same files, the add-in's rooms and formats/, check each other.
#include <cstdint>
#include <gmock/gmock.h>
#include <string>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "formats/InterchangeFile.h"
#include "formats/PathInfoFile.h"
#include "stock/LoadBinarySurface.h"
#include "stock/SurfaceXferQZ.h"
#include "support/FileBuilder.h"
#include "support/MessageOf.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"
#include "toolpaths/CombinePathInfoFiles.h"
#include "toolpaths/DumpBinaryPathsText.h"
#include "toolpaths/WriteSinglePointPaths.h"

namespace {

using formats::FileError;
using formats::PathRecord;
using support::MessageOf;
using support::ReadWholeFile;
using support::WriteWholeFile;

PathRecord ConvexPath() {
  PathRecord record;
  record.colour = 200;
  record.sweepToler = 0.1;
  record.pathToler = 0.2;
  record.compressToler = 0.3;
  record.matrix = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  record.origin = {10, 20, 30};
  record.tool = formats::ConvexTool{1.5, 2.5, 5, 45, 12, 0.5};
  record.cuts = {{{1, 2, 3, 4, 5, 6}}};
  return record;
}

PathRecord CustomPath() {
  PathRecord record = ConvexPath();
  record.pathType = 2;
  formats::CustomTool tool;
  tool.arcs = {{0, 1, 2, 3, 4, true, false}, {2, 5, 6, 7, 8, false, true}};
  tool.lines = {{1, 9, 10, 11, true}, {3, 12, 13, 14, false}};
  record.tool = tool;
  record.cuts = {{{1, 2, 3, 0, 0, 1, 4, 5, 6, 0, 1, 0}}};
  return record;
}

PathRecord UndercutPath() {
  PathRecord record = ConvexPath();
  record.tool =
      formats::UndercutTool{1, 2, true, {3, 4, 5, 6, 7, 8}, false, {9, 10, 11, 12, 13, 14}};
  return record;
}

class AddInCrossCheck : public testing::Test {
 protected:
  std::string File(const char* name) const { return (directory_.Path() / name).string(); }
  CString Directory() const { return support::AddinSpelling(directory_.Path()).c_str(); }

  support::TestHost host_;
  support::TempDirectory directory_;
};

TEST_F(AddInCrossCheck, TheCombinerMakesOfOurPathFilesWhatWeWriteOurselves) {
  formats::WritePathInfoFile(File("TmpPathInfo0.tmp"), ConvexPath());
  formats::WritePathInfoFile(File("TmpPathInfo1.tmp"), CustomPath());
  ASSERT_TRUE(CombinePathInfoFiles(Directory()));
  formats::WriteInterchangeFile(File("ours.tmp"), {ConvexPath(), CustomPath()});
  EXPECT_EQ(ReadWholeFile(File("BinaryPaths.tmp")), ReadWholeFile(File("ours.tmp")));
  EXPECT_EQ(formats::ReadInterchangeFile(File("BinaryPaths.tmp")).size(), 2U);
}

TEST_F(AddInCrossCheck, TheConverterTakesEveryToolTypeThatWeWrite) {
  formats::WriteInterchangeFile(File("BinaryPaths.tmp"),
                                {ConvexPath(), UndercutPath(), CustomPath()});
  EXPECT_TRUE(DumpBinaryPathsText(Directory()));
}

// The delimiter is left out: the converter does not look at it.
TEST_F(AddInCrossCheck, BothRefuseTheSameCutOrDamagedInterchangeFiles) {
  formats::WriteInterchangeFile(File("ours.tmp"), {ConvexPath(), UndercutPath(), CustomPath()});
  const std::string whole = ReadWholeFile(File("ours.tmp"));
  const auto expectAgreement = [&](const std::string& content) {
    WriteWholeFile(File("BinaryPaths.tmp"), content);
    const auto read = [&] { formats::ReadInterchangeFile(File("BinaryPaths.tmp")); };
    const bool weTakeIt = MessageOf<FileError>(read).empty();
    EXPECT_EQ(DumpBinaryPathsText(Directory()), weTakeIt);
  };
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    SCOPED_TRACE(length);
    expectAgreement(whole.substr(0, length));
  }
  for (std::size_t byte = 16; byte < whole.size(); ++byte) {
    SCOPED_TRACE(byte);
    for (const char value : {'\x02', '\xff'}) {
      std::string content = whole;
      content[byte] = value;
      expectAgreement(content);
    }
  }
}

TEST_F(AddInCrossCheck, WeReadTheSinglePointFile) {
  const double point[3] = {1, 2, 3};
  ASSERT_TRUE(WriteSinglePointPaths(Directory(), 0.5, point));
  const auto records = formats::ReadInterchangeFile(File("BinaryPaths.tmp"));
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].compressToler, 0.5);
  EXPECT_THAT(records[0].cuts.at(0).coordinates, testing::ElementsAre(1, 2, 3, 1, 2, 3));
}

formats::Mesh Fan(std::int32_t facets) {
  formats::Mesh mesh{{{0, 0, 0}, {1, 0, 0}}, {}};
  for (std::int32_t i = 0; i < facets; ++i) {
    mesh.vertices.push_back({0.1 * i, 1.0 / (i + 1), -1e-300 * i});
    mesh.facets.push_back({{0, i + 1, i + 2}, static_cast<std::uint8_t>(i)});
  }
  return mesh;
}

TEST_F(AddInCrossCheck, OurSurfaceGoesThroughLoaderAndChannelToTheSameBytes) {
  formats::WriteBinarySurface(File("ours.iff"), Fan(300));
  SurfaceXferQZ channel(File("theirs.iff").c_str());
  ASSERT_TRUE(LoadBinarySurface(File("ours.iff").c_str(), &channel, 0, 0, nullptr));
  EXPECT_EQ(ReadWholeFile(File("theirs.iff")), ReadWholeFile(File("ours.iff")));
}

TEST_F(AddInCrossCheck, WeReadTheChannelsReorderedBlocksAsTheSameFacets) {
  const formats::Mesh mesh = Fan(1200);
  formats::WriteBinarySurface(File("ours.iff"), mesh);
  SurfaceXferQZ channel(File("theirs.iff").c_str());
  ASSERT_TRUE(LoadBinarySurface(File("ours.iff").c_str(), &channel, 0, 0, nullptr));
  const formats::Mesh back = formats::ReadBinarySurface(File("theirs.iff"));
  ASSERT_EQ(back.facets.size(), 1200U);
  // Blocks of 500 come newest first: facets 1000 to 1199, 500 to 999, 0 to 499.
  for (std::size_t i = 0; i < back.facets.size(); ++i) {
    const std::size_t original = i < 200 ? 1000 + i : i < 700 ? 300 + i : i - 700;
    for (std::size_t corner = 0; corner < 3; ++corner) {
      const auto ours = static_cast<std::size_t>(mesh.facets[original].vertices[corner]);
      const auto theirs = static_cast<std::size_t>(back.facets[i].vertices[corner]);
      ASSERT_EQ(back.vertices[theirs], mesh.vertices[ours]) << i;
    }
    ASSERT_EQ(back.facets[i].colour, mesh.facets[original].colour);
  }
}

}  // namespace
