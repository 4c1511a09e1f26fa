#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MfcApi.h"
#include "SystemApi.h"
#include "support/TestHost.h"

extern "C" BOOL APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DllMainTest : public ::testing::Test {
 protected:
  ~DllMainTest() override { Call(DLL_PROCESS_DETACH); }

  BOOL Call(DWORD reason) { return DllMain(m_instance, reason, nullptr); }

  support::TestHost host;
  char m_library = 0;
  HINSTANCE m_instance = reinterpret_cast<HINSTANCE>(&m_library);
};

TEST_F(DllMainTest, AttachRefusesWithoutTheResourceModule) {
  host.faults.FailCall("LoadLibraryA", 1);
  EXPECT_EQ(Call(DLL_PROCESS_ATTACH), 0);
  EXPECT_THAT(host.events.Events(), ElementsAre("load Resources\\QZTUtlRes.dll fails"));
}

TEST_F(DllMainTest, AttachLoadsTheResourceModuleAndJoinsTheResourceChain) {
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  EXPECT_EQ(Call(DLL_PROCESS_ATTACH), 1);
  EXPECT_THAT(host.events.Events(), ElementsAre("load Resources\\QZTUtlRes.dll"));
  CDynLinkLibrary* const entry = AfxFirstDynLinkLibrary();
  ASSERT_NE(entry, before);
  EXPECT_EQ(entry->m_hModule, m_instance);
}

TEST_F(DllMainTest, DetachFreesTheResourceModuleLeavesTheChainAndMayBeFollowedByAnAttach) {
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  ASSERT_EQ(Call(DLL_PROCESS_ATTACH), 1);
  host.events.Clear();
  EXPECT_EQ(Call(DLL_PROCESS_DETACH), 1);
  EXPECT_THAT(host.events.Events(), ElementsAre("unload"));
  EXPECT_EQ(AfxFirstDynLinkLibrary(), before);
  EXPECT_EQ(Call(DLL_PROCESS_ATTACH), 1);
}

TEST_F(DllMainTest, DetachAfterARefusedAttachHasNothingToFree) {
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  host.faults.FailCall("LoadLibraryA", 1);
  ASSERT_EQ(Call(DLL_PROCESS_ATTACH), 0);
  host.events.Clear();
  EXPECT_EQ(Call(DLL_PROCESS_DETACH), 1);
  EXPECT_THAT(host.events.Events(), IsEmpty());
  EXPECT_EQ(AfxFirstDynLinkLibrary(), before);
}

TEST_F(DllMainTest, ThreadsComeAndGoWithoutEffect) {
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  EXPECT_EQ(Call(DLL_THREAD_ATTACH), 1);
  EXPECT_EQ(Call(DLL_THREAD_DETACH), 1);
  EXPECT_EQ(AfxFirstDynLinkLibrary(), before);
  EXPECT_THAT(host.events.Events(), IsEmpty());
}

}  // namespace
