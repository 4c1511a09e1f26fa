#include "addin/CurrentDirectoryScope.h"

#include "SystemApi.h"

CurrentDirectoryScope::CurrentDirectoryScope(const CString& directory) : m_before("") {
  GetCurrentDirectoryA(sizeof m_before, m_before);
  SetCurrentDirectoryA(directory);
}

CurrentDirectoryScope::~CurrentDirectoryScope() { SetCurrentDirectoryA(m_before); }
