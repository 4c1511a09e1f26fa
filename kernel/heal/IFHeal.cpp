#define IFHEAL_API QZ_EXPORT
#include "platform/IFHeal.h"

#include <new>
#include <string>

#include "formats/FileError.h"
#include "kernel/common/FatalError.h"
#include "kernel/common/StageProgress.h"
#include "kernel/heal/HealJob.h"

struct IFHeal::Impl {
  UIDialog* callbacks;
};

IFHeal::IFHeal(UIDialog* callbacks) : m_impl(new Impl{callbacks}) {}

IFHeal::~IFHeal() { delete m_impl; }

void IFHeal::Run(double tolerance, char* inputFile, char* outputFile) {
  kernel::StageProgress progress(m_impl->callbacks);
  std::string failure;
  try {
    kernel::HealSurface(tolerance, inputFile, outputFile, progress);
    return;
  } catch (const kernel::FatalError& error) {
    failure = error.what();
  } catch (const formats::FileError& error) {
    failure = error.what();
  } catch (const std::bad_alloc&) {
    failure = "Memory limit reached.";
  }
  // Outside the handlers: what the callback throws here must not find another exception active.
  progress.Fail(failure);
}
