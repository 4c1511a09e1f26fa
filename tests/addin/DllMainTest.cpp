#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MfcApi.h"
#include "SystemApi.h"
#include "support/TestHost.h"

extern "C" BOOL APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

// What the entry routine asks of MFC goes through here (CMakeLists.txt, WRAP): it is noted, and the
// module's record is found.
namespace {
AFX_EXTENSION_MODULE* g_record = nullptr;
}

extern "C" {

int __real__Z22AfxInitExtensionModuleR20AFX_EXTENSION_MODULEP11HINSTANCE__(AFX_EXTENSION_MODULE&,
                                                                           HINSTANCE);
void __real__Z22AfxTermExtensionModuleR20AFX_EXTENSION_MODULEi(AFX_EXTENSION_MODULE&, int);
void __real__ZN15CDynLinkLibraryC1ER20AFX_EXTENSION_MODULEi(CDynLinkLibrary*, AFX_EXTENSION_MODULE&,
                                                            int);

int __wrap__Z22AfxInitExtensionModuleR20AFX_EXTENSION_MODULEP11HINSTANCE__(
    AFX_EXTENSION_MODULE& record, HINSTANCE instance) {
  g_record = &record;
  support::Note("init module");
  return __real__Z22AfxInitExtensionModuleR20AFX_EXTENSION_MODULEP11HINSTANCE__(record, instance);
}

void __wrap__Z22AfxTermExtensionModuleR20AFX_EXTENSION_MODULEi(AFX_EXTENSION_MODULE& record,
                                                               int all) {
  support::Note("term module");
  __real__Z22AfxTermExtensionModuleR20AFX_EXTENSION_MODULEi(record, all);
}

void __wrap__ZN15CDynLinkLibraryC1ER20AFX_EXTENSION_MODULEi(CDynLinkLibrary* entry,
                                                            AFX_EXTENSION_MODULE& record,
                                                            int system) {
  support::Note("join chain");
  __real__ZN15CDynLinkLibraryC1ER20AFX_EXTENSION_MODULEi(entry, record, system);
}

}  // extern "C"

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

TEST_F(DllMainTest, AttachRefusesWithoutTheResourceModuleAndHasJoinedTheChainBefore) {
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  host.faults.FailCall("LoadLibraryA", 1);
  EXPECT_EQ(Call(DLL_PROCESS_ATTACH), 0);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("init module", "join chain", "load Resources\\QZTUtlRes.dll fails"));
  CDynLinkLibrary* const entry = AfxFirstDynLinkLibrary();
  ASSERT_NE(entry, before);
  EXPECT_EQ(entry->m_hModule, m_instance);
}

TEST_F(DllMainTest, AttachJoinsTheResourceChainAndThenLoadsTheResourceModule) {
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  EXPECT_EQ(Call(DLL_PROCESS_ATTACH), 1);
  EXPECT_THAT(host.events.Events(),
              ElementsAre("init module", "join chain", "load Resources\\QZTUtlRes.dll"));
  CDynLinkLibrary* const entry = AfxFirstDynLinkLibrary();
  ASSERT_NE(entry, before);
  EXPECT_EQ(entry->m_hModule, m_instance);
}

TEST_F(DllMainTest, AttachMakesTheResourceModuleTheOneWhereResourcesAreLookedFor) {
  ASSERT_EQ(Call(DLL_PROCESS_ATTACH), 1);
  ASSERT_NE(g_record, nullptr);
  EXPECT_EQ(g_record->hModule, m_instance);
  // A module that is loaded already is the same one.
  const HMODULE resources = LoadLibraryA("Resources\\QZTUtlRes.dll");
  ASSERT_NE(resources, nullptr);
  EXPECT_EQ(g_record->hResource, resources);
  FreeLibrary(resources);
}

TEST_F(DllMainTest, DetachFreesTheResourceModuleLeavesTheChainAndMayBeFollowedByAnAttach) {
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  ASSERT_EQ(Call(DLL_PROCESS_ATTACH), 1);
  host.events.Clear();
  EXPECT_EQ(Call(DLL_PROCESS_DETACH), 1);
  EXPECT_THAT(host.events.Events(), ElementsAre("unload", "term module"));
  EXPECT_EQ(AfxFirstDynLinkLibrary(), before);
  EXPECT_EQ(Call(DLL_PROCESS_ATTACH), 1);
}

TEST_F(DllMainTest, DetachAfterARefusedAttachHasNothingToFreeAndLeavesTheChain) {
  CDynLinkLibrary* const before = AfxFirstDynLinkLibrary();
  host.faults.FailCall("LoadLibraryA", 1);
  ASSERT_EQ(Call(DLL_PROCESS_ATTACH), 0);
  host.events.Clear();
  EXPECT_EQ(Call(DLL_PROCESS_DETACH), 1);
  EXPECT_THAT(host.events.Events(), ElementsAre("term module"));
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
