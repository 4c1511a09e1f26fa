// The kernel classes IFSilhouette, IFSpinsil and IFSphoffset of a unit test: do what the living
// ScriptedKernel says.

#include <memory>
#include <string>
#include <vector>

#include "callbacks/UIDialog.h"
#include "curves/CurveTransfer.h"
#include "platform/IFSilhouette.h"
#include "platform/IFSphoffset.h"
#include "platform/IFSpinsil.h"
#include "support/RecordingChannel.h"
#include "support/ScriptedKernel.h"
#include "support/TestHost.h"

namespace {

support::ScriptedKernel& Kernel() { return support::CurrentScriptedKernel(); }

// What a kernel does when the channel refuses something.
void GiveUp(UIDialog& callbacks) { callbacks.ErrorMessage("The curves do not fit.", true); }

void PlayPoints(CurveTransfer& output, UIDialog& callbacks, std::vector<const int*>* handles) {
  for (const auto& point : Kernel().outline.points) {
    Kernel().Enter("output.AddPoint", std::to_string(handles->size() + 1), callbacks);
    handles->push_back(output.AddPoint(point.data()));
    if (handles->back() == nullptr) GiveUp(callbacks);
  }
}

void PlayInto(CurveTransfer& output, UIDialog& callbacks) {
  Kernel().Enter("output.Reset", "", callbacks);
  output.Reset();
  Kernel().Enter("output.BeginGroup", "", callbacks);
  output.BeginGroup();
  std::vector<const int*> handles;
  PlayPoints(output, callbacks, &handles);
  int count = 0;
  for (const auto& [start, end] : Kernel().outline.segments) {
    Kernel().Enter("output.AddSegment", std::to_string(++count), callbacks);
    const int* from = handles.at(static_cast<std::size_t>(start) - 1);
    const int* to = handles.at(static_cast<std::size_t>(end) - 1);
    if (output.AddSegment(from, to) == nullptr) GiveUp(callbacks);
  }
  Kernel().Enter("output.EndGroup", "", callbacks);
  output.EndGroup();
  if (!Kernel().closesOutput) return;
  Kernel().Enter("output.Close", "", callbacks);
  Kernel().curvesClosed = output.Close();
}

// What a class with an input channel consists of.
struct Loaded {
  UIDialog& callbacks;
  std::unique_ptr<support::RecordingChannel> input;

  SurfaceTransfer* Open() {
    Kernel().Enter("OpenInputChannel", "", callbacks);
    input = std::make_unique<support::RecordingChannel>("input", callbacks, Kernel().input);
    return input.get();
  }
};

}  // namespace

struct IFSilhouette::Impl {};

IFSilhouette::IFSilhouette() : m_impl(nullptr) {
  UIDialog nobody;
  Kernel().Enter("IFSilhouette()", "", nobody);
  m_impl = new Impl;
  Kernel().Made();
}

IFSilhouette::~IFSilhouette() {
  Kernel().Destroyed("~IFSilhouette()");
  delete m_impl;
}

void IFSilhouette::Run(char* inputFile, char* outputFile, double distance, UIDialog* dialog) {
  Kernel().distance = distance;
  Kernel().Enter("silhouette.Run",
                 support::SpelledPath(inputFile) + " " + support::SpelledPath(outputFile), *dialog);
  Kernel().Enter("silhouette.Run ends", "", *dialog);
}

struct IFSpinsil::Impl : Loaded {};

IFSpinsil::IFSpinsil(UIDialog* dialog) : m_impl(nullptr) {
  Kernel().Enter("IFSpinsil()", "", *dialog);
  m_impl = new Impl{{*dialog, nullptr}};
  Kernel().Made();
}

IFSpinsil::~IFSpinsil() {
  Kernel().Destroyed("~IFSpinsil()");
  delete m_impl;
}

SurfaceTransfer* IFSpinsil::OpenInputChannel() { return m_impl->Open(); }

void IFSpinsil::Run(CurveTransfer* output, double distance) {
  Kernel().distance = distance;
  Kernel().Enter("spinsil.Run", "", m_impl->callbacks);
  PlayInto(*output, m_impl->callbacks);
  Kernel().Enter("spinsil.Run ends", "", m_impl->callbacks);
}

struct IFSphoffset::Impl : Loaded {};

IFSphoffset::IFSphoffset(UIDialog* dialog) : m_impl(nullptr) {
  Kernel().Enter("IFSphoffset()", "", *dialog);
  m_impl = new Impl{{*dialog, nullptr}};
  Kernel().Made();
}

IFSphoffset::~IFSphoffset() {
  Kernel().Destroyed("~IFSphoffset()");
  delete m_impl;
}

SurfaceTransfer* IFSphoffset::OpenInputChannel() { return m_impl->Open(); }

void IFSphoffset::Run(double unscaledValue, double distance, SurfaceTransfer* output) {
  Kernel().unscaledValue = unscaledValue;
  Kernel().distance = distance;
  Kernel().Enter("sphoffset.Run", "", m_impl->callbacks);
  support::PlayInto(*output, Kernel().result, Kernel().closesOutput, m_impl->callbacks);
  Kernel().Enter("sphoffset.Run ends", "", m_impl->callbacks);
}
