// The kernel class IFHeal of a unit test: does what the living ScriptedKernel says.

#include <string>

#include "platform/IFHeal.h"
#include "support/ScriptedKernel.h"
#include "support/TestHost.h"

struct IFHeal::Impl {
  UIDialog& callbacks;
};

IFHeal::IFHeal(UIDialog* callbacks) : m_impl(nullptr) {
  support::ScriptedKernel& kernel = support::CurrentScriptedKernel();
  kernel.Enter("IFHeal()", "", *callbacks);
  m_impl = new Impl{*callbacks};
  kernel.Made();
}

IFHeal::~IFHeal() {
  support::CurrentScriptedKernel().Destroyed("~IFHeal()");
  delete m_impl;
}

void IFHeal::Run(double tolerance, char* inputFile, char* outputFile) {
  support::ScriptedKernel& kernel = support::CurrentScriptedKernel();
  kernel.healTolerance = tolerance;
  kernel.Enter("heal.Run", support::SpelledPath(inputFile) + " " + support::SpelledPath(outputFile),
               m_impl->callbacks);
  kernel.Enter("heal.Run ends", "", m_impl->callbacks);
}
