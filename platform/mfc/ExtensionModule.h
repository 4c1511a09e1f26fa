#pragma once

#include "platform/SystemTypes.h"

/// What MFC remembers of an extension library: its own handle and where its resources are.
struct AFX_EXTENSION_MODULE {
  int bInitialized;
  HINSTANCE hModule;
  HINSTANCE hResource;
};

/// An entry of the chain that is searched for resources. It joins the chain when it is made, with
/// the handles that the record holds at that moment, and leaves it when it is destroyed.
class CDynLinkLibrary {
 public:
  explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, int bSystem = 0);
  CDynLinkLibrary(const CDynLinkLibrary&) = delete;
  CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;
  ~CDynLinkLibrary();

  HINSTANCE m_hModule;
  HINSTANCE m_hResource;
  int m_bSystem;
  CDynLinkLibrary* m_pNextDLL;
};

/// Fills the record for the library with the handle `hModule`; its resources are looked for in the
/// library itself until another resource handle is installed. Returns non-zero.
int AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HINSTANCE hModule);

/// Destroys the chain entries made for the record's library (with `bAll` those of every library)
/// and ends the record.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, int bAll = 0);

/// Loads a library by name through the system's module search; null when that fails.
HINSTANCE AfxLoadLibrary(const char* name);

/// Non-zero when the library was given back.
int AfxFreeLibrary(HINSTANCE library);

/// The newest entry of this module's chain, null when the chain is empty.
CDynLinkLibrary* AfxFirstDynLinkLibrary();
