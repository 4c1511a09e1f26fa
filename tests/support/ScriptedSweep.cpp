// The kernel class IFSweep of a unit test: does what the living ScriptedKernel says.

#include <memory>

#include "platform/IFSweep.h"
#include "support/RecordingChannel.h"
#include "support/ScriptedKernel.h"
#include "support/TestHost.h"

struct IFSweep::Impl {
  UIDialog& callbacks;
  std::vector<std::unique_ptr<support::RecordingChannel>> channels;
  int compareChannels = 0;

  SurfaceTransfer* Open(const std::string& name, support::Surface& received) {
    channels.push_back(std::make_unique<support::RecordingChannel>(name, callbacks, received));
    return channels.back().get();
  }
  std::string NameOf(const SurfaceTransfer* channel) const {
    for (const auto& ours : channels) {
      if (ours.get() == channel) return ours->Name();
    }
    return "not-ours";
  }
};

IFSweep::IFSweep(UIDialog* callbacks) : m_impl(nullptr) {
  support::ScriptedKernel& kernel = support::CurrentScriptedKernel();
  kernel.Enter("IFSweep()", "", *callbacks);
  m_impl = new Impl{*callbacks, {}, 0};
  kernel.Made();
}

IFSweep::~IFSweep() {
  support::CurrentScriptedKernel().Destroyed("~IFSweep()");
  delete m_impl;
}

SurfaceTransfer* IFSweep::OpenStockChannel() {
  support::ScriptedKernel& kernel = support::CurrentScriptedKernel();
  kernel.Enter("OpenStockChannel", "", m_impl->callbacks);
  return m_impl->Open("stock", kernel.stock);
}

SurfaceTransfer* IFSweep::OpenCompareSurfaceChannel() {
  support::ScriptedKernel& kernel = support::CurrentScriptedKernel();
  kernel.Enter("OpenCompareSurfaceChannel", "", m_impl->callbacks);
  if (++m_impl->compareChannels == 1) return m_impl->Open("part", kernel.part);
  return m_impl->Open("stock", kernel.stock);
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

void IFSweep::Compare(SurfaceTransfer* part, SurfaceTransfer* stock, unsigned int stockColour,
                      int divisions, unsigned int* colours, double* distances,
                      SurfaceTransfer* results) {
  support::ScriptedKernel& kernel = support::CurrentScriptedKernel();
  kernel.bands = {static_cast<std::int32_t>(stockColour),
                  divisions,
                  {colours, colours + divisions},
                  {distances, distances + divisions}};
  kernel.Enter("Compare", m_impl->NameOf(part) + " " + m_impl->NameOf(stock), m_impl->callbacks);
  support::PlayInto(*results, kernel.result, kernel.closesOutput, m_impl->callbacks);
  kernel.Enter("Compare ends", "", m_impl->callbacks);
}
