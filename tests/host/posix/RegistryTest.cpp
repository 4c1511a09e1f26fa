#include <gtest/gtest.h>
#include <stdlib.h>
#include <string>

#include "host/QZCore/HostControl.h"
#include "support/TempDirectory.h"

namespace {

constexpr const char* kValue = "Enable Stock Model Data Directory";
constexpr unsigned long kRead = 131097;

class Registry : public testing::Test {
 protected:
  void SetUp() override { setenv("QZHOST_CONFIG", (m_directory.Path() / "qzhost.ini").c_str(), 1); }
  void TearDown() override {
    OverrideStockDataDirectory(nullptr);
    unsetenv("QZHOST_CONFIG");
  }

  void Write(const std::string& text) {
    support::WriteWholeFile(m_directory.Path() / "qzhost.ini", text);
  }

  // The text that the add-in's own steps arrive at; "-" when the value cannot be read.
  std::string Look(unsigned long capacity = 260) {
    char path[260] = {};
    get_REG_KEY(path);
    const std::string toolpaths = std::string(path) + "\\Configurations\\Variables\\Toolpaths";
    HKEY key = nullptr;
    if (RegOpen(CString(toolpaths.c_str()), &key, nullptr, kRead) == 0) return "no key";
    char value[260] = "-";
    m_size = capacity;
    const char read = GetStringValue(key, kValue, value, &m_size);
    EXPECT_NE(RegClose(key), 0);
    return read != 0 ? value : "-";
  }

  support::TempDirectory m_directory;
  unsigned long m_size = 0;
};

constexpr const char* kSection =
    "; kept by hand\r\n"
    "[Software\\qzhost]\n"
    "Enable Stock Model Data Directory = wrong\n"
    "[software\\QZHOST\\Configurations\\Variables\\Toolpaths]\r\n"
    "other = 1\r\n"
    "  enable stock model data directory =  D:\\Keep it here \r\n";

TEST_F(Registry, WithoutAFileThereIsNoKey) { EXPECT_EQ(Look(), "no key"); }

TEST_F(Registry, WithoutTheSectionThereIsNoKey) {
  Write("[Software\\qzhost]\nEnable Stock Model Data Directory = x\n");
  EXPECT_EQ(Look(), "no key");
}

TEST_F(Registry, SectionWithoutTheValueGivesNoText) {
  Write("[Software\\qzhost\\Configurations\\Variables\\Toolpaths]\nother = 1\n");
  EXPECT_EQ(Look(), "-");
}

TEST_F(Registry, ReadsTheValueWhateverTheCaseOfItsNames) {
  Write(kSection);
  EXPECT_EQ(Look(), "D:\\Keep it here");
  EXPECT_EQ(m_size, 16UL);
}

TEST_F(Registry, TextThatDoesNotFitIsNotReadAndTheSizeSaysWhatItNeeds) {
  Write(kSection);
  EXPECT_EQ(Look(15), "-");
  EXPECT_EQ(m_size, 16UL);
  EXPECT_EQ(Look(16), "D:\\Keep it here");
}

TEST_F(Registry, OverrideReplacesTheValueAndGoesAgain) {
  OverrideStockDataDirectory("\\keep\\");
  EXPECT_EQ(Look(), "\\keep\\");
  Write(kSection);
  EXPECT_EQ(Look(), "\\keep\\");
  EXPECT_STREQ(StockDataDirectory().GetString(), "\\keep\\");
  OverrideStockDataDirectory("");
  EXPECT_EQ(Look(), "D:\\Keep it here");
  EXPECT_STREQ(StockDataDirectory().GetString(), "D:\\Keep it here");
}

TEST_F(Registry, DirectoryForCopiesIsEmptyWhenNobodySetsOne) {
  EXPECT_STREQ(StockDataDirectory().GetString(), "");
  Write("[Software\\qzhost\\Configurations\\Variables\\Toolpaths]\n");
  EXPECT_STREQ(StockDataDirectory().GetString(), "");
}

TEST_F(Registry, KeyIsTakenBelowAnOpenOne) {
  Write("[Software\\qzhost]\n[Software\\qzhost\\Sub]\nname = text\n");
  HKEY parent = nullptr;
  ASSERT_NE(RegOpen(CString("Software\\qzhost"), &parent, nullptr, kRead), 0);
  HKEY key = nullptr;
  ASSERT_NE(RegOpen(CString("Sub"), &key, parent, kRead), 0);
  char value[10];
  unsigned long size = sizeof value;
  EXPECT_NE(GetStringValue(key, "NAME", value, &size), 0);
  EXPECT_STREQ(value, "text");
  EXPECT_NE(RegClose(key), 0);
  EXPECT_NE(RegClose(parent), 0);
}

TEST_F(Registry, HandleThatIsNotOpenIsRefused) {
  Write(kSection);
  HKEY key = nullptr;
  ASSERT_NE(RegOpen(CString("Software\\qzhost"), &key, nullptr, kRead), 0);
  EXPECT_NE(RegClose(key), 0);
  EXPECT_EQ(RegClose(key), 0);
  EXPECT_EQ(RegClose(nullptr), 0);
  char value[10];
  unsigned long size = sizeof value;
  EXPECT_EQ(GetStringValue(key, kValue, value, &size), 0);
}

}  // namespace
