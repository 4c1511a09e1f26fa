#define IFSPHOFFSET_API QZ_EXPORT
#include "platform/IFSphoffset.h"

#include <new>
#include <string>

#include "kernel/common/FatalError.h"
#include "kernel/common/StageProgress.h"
#include "kernel/offset/OffsetJob.h"
#include "kernel/sweep/StockChannel.h"

struct IFSphoffset::Impl {
  UIDialog* dialog;
  kernel::StockChannel input;
};

IFSphoffset::IFSphoffset(UIDialog* dialog) : m_impl(new Impl{dialog, {}}) {}

IFSphoffset::~IFSphoffset() { delete m_impl; }

SurfaceTransfer* IFSphoffset::OpenInputChannel() { return &m_impl->input; }

void IFSphoffset::Run(double unscaledValue, double distance, SurfaceTransfer* output) {
  kernel::StageProgress progress(m_impl->dialog);
  std::string failure;
  try {
    kernel::OffsetSurface(m_impl->input.Mesh(), unscaledValue, distance, *output, progress);
    return;
  } catch (const kernel::FatalError& error) {
    failure = error.what();
  } catch (const std::bad_alloc&) {
    failure = "Memory limit reached.";
  }
  // Outside the handlers: what the callback throws here must not find another exception active.
  progress.Fail(failure);
}
