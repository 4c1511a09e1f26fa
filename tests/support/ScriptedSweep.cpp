// The kernel class IFSweep of a unit test: does what the living ScriptedKernel says.

#include <memory>

#include "platform/IFSweep.h"
#include "support/RecordingChannel.h"
#include "support/ScriptedKernel.h"
#include "support/TestHost.h"

struct IFSweep::Impl {
  UIDialog& callbacks;
  std::vector<std::unique_ptr<support::RecordingChannel>> channels;
};

IFSweep::IFSweep(UIDialog* callbacks) : m_impl(nullptr) {
  support::ScriptedKernel& kernel = support::CurrentScriptedKernel();
  kernel.Enter("IFSweep()", "", *callbacks);
  m_impl = new Impl{*callbacks, {}};
  kernel.Made();
}

IFSweep::~IFSweep() {
  support::CurrentScriptedKernel().Destroyed("~IFSweep()");
  delete m_impl;
}

SurfaceTransfer* IFSweep::OpenStockChannel() {
  support::ScriptedKernel& kernel = support::CurrentScriptedKernel();
  kernel.Enter("OpenStockChannel", "", m_impl->callbacks);
  m_impl->channels.push_back(
      std::make_unique<support::RecordingChannel>("stock", m_impl->callbacks, kernel.stock));
  return m_impl->channels.back().get();
}

void IFSweep::SetFiveAxisBufferingLevel(int level) {
  support::CurrentScriptedKernel().Enter("SetFiveAxisBufferingLevel", std::to_string(level),
                                         m_impl->callbacks);
}

void IFSweep::Run(SurfaceTransfer* output, char* pathFile) {
  support::ScriptedKernel& kernel = support::CurrentScriptedKernel();
  support::TestHost* host = support::CurrentTestHost();
  kernel.Enter("Run", host == nullptr ? pathFile : host->events.Spell(pathFile), m_impl->callbacks);
  support::PlayInto(*output, kernel.result, kernel.closesOutput, m_impl->callbacks);
  kernel.Enter("Run ends", "", m_impl->callbacks);
}
