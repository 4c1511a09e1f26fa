#include "ExtensionModule.h"

#include "SystemApi.h"

namespace {

CDynLinkLibrary* g_firstLibrary = nullptr;

}  // namespace

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, int bSystem)
    : m_hModule(state.hModule),
      m_hResource(state.hResource),
      m_bSystem(bSystem),
      m_pNextDLL(g_firstLibrary) {
  g_firstLibrary = this;
}

CDynLinkLibrary::~CDynLinkLibrary() {
  CDynLinkLibrary** link = &g_firstLibrary;
  while (*link != nullptr && *link != this) link = &(*link)->m_pNextDLL;
  if (*link == this) *link = m_pNextDLL;
}

int AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HINSTANCE hModule) {
  if (state.bInitialized != 0) return 1;
  state.bInitialized = 1;
  state.hModule = hModule;
  state.hResource = hModule;
  return 1;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, int bAll) {
  if (state.bInitialized == 0) return;
  CDynLinkLibrary* library = g_firstLibrary;
  while (library != nullptr) {
    CDynLinkLibrary* next = library->m_pNextDLL;
    // Chain entries are made with new and handed over: the chain is their owner.
    if (bAll != 0 || library->m_hModule == state.hModule) delete library;
    library = next;
  }
  state.bInitialized = 0;
}

HINSTANCE AfxLoadLibrary(const char* name) { return LoadLibraryA(name); }

int AfxFreeLibrary(HINSTANCE library) { return FreeLibrary(library); }

CDynLinkLibrary* AfxFirstDynLinkLibrary() { return g_firstLibrary; }
