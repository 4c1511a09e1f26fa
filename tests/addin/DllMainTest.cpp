#include <filesystem>
#include <gtest/gtest.h>

#include "MfcApi.h"
#include "SystemApi.h"

extern "C" BOOL APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

namespace {

class DllMainTest : public ::testing::Test {
 protected:
  DllMainTest() : m_home(std::filesystem::current_path()) {}
  ~DllMainTest() override {
    DllMain(m_instance, DLL_PROCESS_DETACH, nullptr);
    std::filesystem::current_path(m_home);
  }

  void EnterDirectoryWithResources() { std::filesystem::current_path(QZ_DIRECTORY_WITH_RESOURCES); }
  BOOL Call(DWORD reason) { return DllMain(m_instance, reason, nullptr); }

  char m_library = 0;
  HINSTANCE m_instance = reinterpret_cast<HINSTANCE>(&m_library);

 private:
  std::filesystem::path m_home;
};

TEST_F(DllMainTest, AttachRefusesWithoutTheResourceModule) {
  std::filesystem::current_path(std::filesystem::temp_directory_path());
  EXPECT_EQ(Call(DLL_PROCESS_ATTACH), 0);
}

TEST_F(DllMainTest, AttachLoadsTheResourceModuleAndJoinsTheResourceChain) {
  EnterDirectoryWithResources();
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  EXPECT_EQ(Call(DLL_PROCESS_ATTACH), 1);
  CDynLinkLibrary* const entry = AfxFirstDynLinkLibrary();
  ASSERT_NE(entry, before);
  EXPECT_EQ(entry->m_hModule, m_instance);
}

TEST_F(DllMainTest, DetachLeavesTheChainAndMayBeFollowedByAnotherAttach) {
  EnterDirectoryWithResources();
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  ASSERT_EQ(Call(DLL_PROCESS_ATTACH), 1);
  EXPECT_EQ(Call(DLL_PROCESS_DETACH), 1);
  EXPECT_EQ(AfxFirstDynLinkLibrary(), before);
  EXPECT_EQ(Call(DLL_PROCESS_ATTACH), 1);
}

TEST_F(DllMainTest, DetachAfterARefusedAttachSucceeds) {
  std::filesystem::current_path(std::filesystem::temp_directory_path());
  ASSERT_EQ(Call(DLL_PROCESS_ATTACH), 0);
  EXPECT_EQ(Call(DLL_PROCESS_DETACH), 1);
}

TEST_F(DllMainTest, ThreadsComeAndGoWithoutEffect) {
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  EXPECT_EQ(Call(DLL_THREAD_ATTACH), 1);
  EXPECT_EQ(Call(DLL_THREAD_DETACH), 1);
  EXPECT_EQ(AfxFirstDynLinkLibrary(), before);
}

}  // namespace
