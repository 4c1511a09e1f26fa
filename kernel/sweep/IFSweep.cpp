#define IFSWEEP_API QZ_EXPORT
#include "platform/IFSweep.h"

#include <memory>
#include <new>
#include <vector>

#include "callbacks/UIDialog.h"
#include "formats/FileError.h"
#include "kernel/common/FatalError.h"
#include "kernel/common/Reporter.h"
#include "kernel/sweep/StockChannel.h"
#include "kernel/sweep/SweepJob.h"

struct IFSweep::Impl {
  UIDialog* callbacks;
  kernel::StockChannel stock;
  std::vector<std::unique_ptr<kernel::StockChannel>> compared;
};

IFSweep::IFSweep(UIDialog* callbacks) : m_impl(new Impl{callbacks, {}, {}}) {}

IFSweep::~IFSweep() { delete m_impl; }

SurfaceTransfer* IFSweep::OpenStockChannel() { return &m_impl->stock; }

SurfaceTransfer* IFSweep::OpenCompareSurfaceChannel() {
  m_impl->compared.push_back(std::make_unique<kernel::StockChannel>());
  return m_impl->compared.back().get();
}

// How motion is buffered has no effect on what is computed here.
void IFSweep::SetFiveAxisBufferingLevel(int /*level*/) {}

void IFSweep::Run(SurfaceTransfer* output, char* pathFile) {
  kernel::Reporter reporter(m_impl->callbacks);
  std::string failure;
  try {
    kernel::SweepStock(m_impl->stock.Mesh(), pathFile, *output, reporter);
    return;
  } catch (const kernel::FatalError& error) {
    failure = error.what();
  } catch (const formats::FileError& error) {
    failure = error.what();
  } catch (const std::bad_alloc&) {
    failure = "Memory limit reached.";
  }
  // Outside the handlers: what the callback throws here must not find another exception active.
  reporter.Fail(failure);
}

void IFSweep::Compare(SurfaceTransfer* /*part*/, SurfaceTransfer* /*stock*/,
                      unsigned int /*stockColour*/, int /*divisions*/, unsigned int* /*colours*/,
                      double* /*distances*/, SurfaceTransfer* /*results*/) {
  kernel::Reporter(m_impl->callbacks).Fail("comparing a part with a stock is not supported yet");
}
