#include "support/ScriptedKernel.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "callbacks/UIDialog.h"
#include "support/TestHost.h"

namespace support {
namespace {

ScriptedKernel* g_kernel = nullptr;

}  // namespace

ScriptedKernel::ScriptedKernel() {
  if (g_kernel != nullptr) std::abort();
  g_kernel = this;
}

ScriptedKernel::~ScriptedKernel() { g_kernel = nullptr; }

void ScriptedKernel::Enter(const std::string& call, const std::string& detail,
                           UIDialog& callbacks) {
  Note(detail.empty() ? call : call + " " + detail);
  m_calls.push_back(call);
  const auto numbered = m_atNumber.find(Calls());
  if (numbered != m_atNumber.end()) numbered->second(callbacks);
  const auto named = m_atName.find(call);
  if (named != m_atName.end()) named->second(callbacks);
}

void ScriptedKernel::Destroyed(const std::string& destructor) {
  Note(destructor);
  --m_livingObjects;
  if (m_atDestruction) m_atDestruction();
}

ScriptedKernel::Script ScriptedKernel::Fatal(const std::string& message) {
  return [message](UIDialog& callbacks) { callbacks.ErrorMessage(message.c_str(), true); };
}

ScriptedKernel::Script ScriptedKernel::Warning(const std::string& message) {
  return [message](UIDialog& callbacks) { callbacks.ErrorMessage(message.c_str(), false); };
}

ScriptedKernel::Script ScriptedKernel::Progress(const std::string& message, int total) {
  return [message, total](UIDialog& callbacks) {
    callbacks.CreateProgress(message.c_str(), total);
    callbacks.SetProgress(total);
    callbacks.EndProgress();
  };
}

ScriptedKernel::Script ScriptedKernel::Foreign() {
  return [](UIDialog&) { throw std::runtime_error("not the kernel's own exception"); };
}

ScriptedKernel& CurrentScriptedKernel() {
  if (g_kernel == nullptr) {
    std::fputs("the kernel was called without a ScriptedKernel\n", stderr);
    std::abort();
  }
  return *g_kernel;
}

}  // namespace support
