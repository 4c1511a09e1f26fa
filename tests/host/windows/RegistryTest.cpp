#include <gtest/gtest.h>
#include <string>

#include "SystemApi.h"
#include "host/QZCore/HostControl.h"

namespace {

constexpr const char* kToolpaths = "Software\\qzhost\\Configurations\\Variables\\Toolpaths";
constexpr const char* kValue = "Enable Stock Model Data Directory";

// The user's own value, if there is one, is put back.
class Registry : public testing::Test {
 protected:
  void SetUp() override {
    DWORD size = sizeof m_before;
    m_hadValue = RegGetValueA(HKEY_CURRENT_USER, kToolpaths, kValue, RRF_RT_REG_SZ, nullptr,
                              m_before, &size) == ERROR_SUCCESS;
    Delete();
  }
  void TearDown() override {
    OverrideStockDataDirectory(nullptr);
    Delete();
    if (m_hadValue) Set(m_before);
  }

  void Set(const std::string& text) {
    ASSERT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, kToolpaths, kValue, REG_SZ, text.c_str(),
                              static_cast<DWORD>(text.size() + 1)),
              ERROR_SUCCESS);
  }
  void Delete() { RegDeleteKeyValueA(HKEY_CURRENT_USER, kToolpaths, kValue); }

  std::string Look(unsigned long capacity = 260) {
    char path[260] = {};
    get_REG_KEY(path);
    const std::string toolpaths = std::string(path) + "\\Configurations\\Variables\\Toolpaths";
    HKEY key = nullptr;
    if (RegOpen(CString(toolpaths.c_str()), &key, nullptr, KEY_READ) == 0) return "-";
    char value[260] = "-";
    m_size = capacity;
    const char read = GetStringValue(key, kValue, value, &m_size);
    EXPECT_NE(RegClose(key), 0);
    return read != 0 ? value : "-";
  }

  char m_before[1024] = {};
  bool m_hadValue = false;
  unsigned long m_size = 0;
};

TEST_F(Registry, WithoutTheValueNothingIsRead) { EXPECT_EQ(Look(), "-"); }

TEST_F(Registry, ReadsTheUsersValue) {
  Set("D:\\Keep it here");
  EXPECT_EQ(Look(), "D:\\Keep it here");
  EXPECT_EQ(m_size, 16UL);
}

TEST_F(Registry, TextThatDoesNotFitIsNotReadAndTheSizeSaysWhatItNeeds) {
  Set("D:\\Keep it here");
  EXPECT_EQ(Look(15), "-");
  EXPECT_EQ(m_size, 16UL);
}

TEST_F(Registry, ValueThatIsNoTextIsNotRead) {
  const DWORD number = 7;
  ASSERT_EQ(
      RegSetKeyValueA(HKEY_CURRENT_USER, kToolpaths, kValue, REG_DWORD, &number, sizeof number),
      ERROR_SUCCESS);
  EXPECT_EQ(Look(), "-");
}

TEST_F(Registry, OverrideReplacesTheValueAndGoesAgain) {
  Set("D:\\Keep it here");
  OverrideStockDataDirectory("C:\\else\\");
  EXPECT_EQ(Look(), "C:\\else\\");
  OverrideStockDataDirectory("");
  EXPECT_EQ(Look(), "D:\\Keep it here");
}

}  // namespace
