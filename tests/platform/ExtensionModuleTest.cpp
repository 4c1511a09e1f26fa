#include <gtest/gtest.h>

#include "MfcApi.h"

namespace {

HINSTANCE Handle(int& object) { return reinterpret_cast<HINSTANCE>(&object); }

class ExtensionModule : public testing::Test {
 protected:
  AFX_EXTENSION_MODULE m_module = {};
  int m_library = 0;
};

TEST_F(ExtensionModule, InitialisationMakesTheLibraryItsOwnResourceModule) {
  EXPECT_NE(AfxInitExtensionModule(m_module, Handle(m_library)), 0);
  EXPECT_NE(m_module.bInitialized, 0);
  EXPECT_EQ(m_module.hModule, Handle(m_library));
  EXPECT_EQ(m_module.hResource, Handle(m_library));
  AfxTermExtensionModule(m_module);
  EXPECT_EQ(m_module.bInitialized, 0);
}

TEST_F(ExtensionModule, SecondInitialisationKeepsTheInstalledResources) {
  int resources = 0;
  AfxInitExtensionModule(m_module, Handle(m_library));
  m_module.hResource = Handle(resources);
  EXPECT_NE(AfxInitExtensionModule(m_module, Handle(m_library)), 0);
  EXPECT_EQ(m_module.hResource, Handle(resources));
  AfxTermExtensionModule(m_module);
}

TEST_F(ExtensionModule, ChainEntryCarriesTheHandlesOfItsMoment) {
  AfxInitExtensionModule(m_module, Handle(m_library));
  int resources = 0;
  const auto* entry = new CDynLinkLibrary(m_module);
  m_module.hResource = Handle(resources);
  EXPECT_EQ(AfxFirstDynLinkLibrary(), entry);
  EXPECT_EQ(entry->m_hModule, Handle(m_library));
  EXPECT_EQ(entry->m_hResource, Handle(m_library));
  AfxTermExtensionModule(m_module);
}

TEST_F(ExtensionModule, TerminationRemovesTheEntriesOfItsOwnLibraryOnly) {
  AfxInitExtensionModule(m_module, Handle(m_library));
  int otherLibrary = 0;
  AFX_EXTENSION_MODULE other = {};
  AfxInitExtensionModule(other, Handle(otherLibrary));
  new CDynLinkLibrary(m_module);
  const auto* kept = new CDynLinkLibrary(other);
  new CDynLinkLibrary(m_module);
  AfxTermExtensionModule(m_module);
  ASSERT_EQ(AfxFirstDynLinkLibrary(), kept);
  EXPECT_EQ(kept->m_pNextDLL, nullptr);
  AfxTermExtensionModule(other);
  EXPECT_EQ(AfxFirstDynLinkLibrary(), nullptr);
}

TEST_F(ExtensionModule, TerminationWithoutInitialisationDoesNothing) {
  AfxTermExtensionModule(m_module);
  EXPECT_EQ(m_module.bInitialized, 0);
}

TEST_F(ExtensionModule, ResourceModuleBesideTheExecutableLoadsByItsRelativePath) {
  const HINSTANCE library = AfxLoadLibrary("Resources\\QZTUtlRes.dll");
  ASSERT_NE(library, nullptr);
  EXPECT_NE(AfxFreeLibrary(library), 0);
}

TEST_F(ExtensionModule, MissingLibraryGivesNull) {
  EXPECT_EQ(AfxLoadLibrary("Resources\\NoSuchModule.dll"), nullptr);
}

}  // namespace
