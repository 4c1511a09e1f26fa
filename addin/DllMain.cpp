#include "ExtensionEntry.h"
#include "MfcApi.h"
#include "SystemApi.h"

namespace {

AFX_EXTENSION_MODULE g_extensionModule = {};
HINSTANCE g_resourceModule = nullptr;

BOOL Attach(HINSTANCE instance) {
  AfxInitExtensionModule(g_extensionModule, instance);
  // The resource chain owns its entries and frees them at detach.
  new CDynLinkLibrary(g_extensionModule);
  g_resourceModule = AfxLoadLibrary("Resources\\QZTUtlRes.dll");
  if (g_resourceModule == nullptr) return FALSE;
  g_extensionModule.hResource = g_resourceModule;
  return TRUE;
}

BOOL Detach() {
  if (g_resourceModule != nullptr) AfxFreeLibrary(g_resourceModule);
  g_resourceModule = nullptr;
  AfxTermExtensionModule(g_extensionModule);
  return TRUE;
}

}  // namespace

/// The library's entry routine. Without the resource module it returns 0 and the library is not
/// loaded.
extern "C" BOOL APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      return Attach(instance);
    case DLL_PROCESS_DETACH:
      return Detach();
    default:
      return TRUE;
  }
}
