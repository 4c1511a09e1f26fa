#define IFSPHOFFSET_API QZ_EXPORT
#include "platform/IFSphoffset.h"

#include "kernel/common/StageProgress.h"
#include "kernel/sweep/StockChannel.h"

struct IFSphoffset::Impl {
  UIDialog* dialog;
  kernel::StockChannel input;
};

IFSphoffset::IFSphoffset(UIDialog* dialog) : m_impl(new Impl{dialog, {}}) {}

IFSphoffset::~IFSphoffset() { delete m_impl; }

SurfaceTransfer* IFSphoffset::OpenInputChannel() { return &m_impl->input; }

void IFSphoffset::Run(double /*unscaledValue*/, double /*distance*/, SurfaceTransfer* /*output*/) {
  kernel::StageProgress(m_impl->dialog).Fail("offsets are not supported yet");
}
