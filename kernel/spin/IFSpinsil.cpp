#define IFSPINSIL_API QZ_EXPORT
#include "platform/IFSpinsil.h"

#include "kernel/common/StageProgress.h"
#include "kernel/sweep/StockChannel.h"

struct IFSpinsil::Impl {
  UIDialog* dialog;
  kernel::StockChannel input;
};

IFSpinsil::IFSpinsil(UIDialog* dialog) : m_impl(new Impl{dialog, {}}) {}

IFSpinsil::~IFSpinsil() { delete m_impl; }

SurfaceTransfer* IFSpinsil::OpenInputChannel() { return &m_impl->input; }

void IFSpinsil::Run(CurveTransfer* /*output*/, double /*distance*/) {
  kernel::StageProgress(m_impl->dialog).Fail("outlines of spun surfaces are not supported yet");
}
