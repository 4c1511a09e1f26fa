#define IFSPINSIL_API QZ_EXPORT
#include "platform/IFSpinsil.h"

#include <new>
#include <string>

#include "kernel/common/FatalError.h"
#include "kernel/common/StageProgress.h"
#include "kernel/spin/SpinJob.h"
#include "kernel/sweep/StockChannel.h"

struct IFSpinsil::Impl {
  UIDialog* dialog;
  kernel::StockChannel input;
};

IFSpinsil::IFSpinsil(UIDialog* dialog) : m_impl(new Impl{dialog, {}}) {}

IFSpinsil::~IFSpinsil() { delete m_impl; }

SurfaceTransfer* IFSpinsil::OpenInputChannel() { return &m_impl->input; }

void IFSpinsil::Run(CurveTransfer* output, double distance) {
  kernel::StageProgress progress(m_impl->dialog);
  std::string failure;
  try {
    kernel::TraceSpunOutline(m_impl->input.Mesh(), distance, *output, progress);
    return;
  } catch (const kernel::FatalError& error) {
    failure = error.what();
  } catch (const std::bad_alloc&) {
    failure = "Memory limit reached.";
  }
  // Outside the handlers: what the callback throws here must not find another exception active.
  progress.Fail(failure);
}
