#define IFSWEEP_API QZ_EXPORT
#include "platform/IFSweep.h"

#include <memory>
#include <new>
#include <string>
#include <vector>

#include "callbacks/UIDialog.h"
#include "formats/FileError.h"
#include "kernel/common/FatalError.h"
#include "kernel/common/Reporter.h"
#include "kernel/compare/CompareJob.h"
#include "kernel/sweep/StockChannel.h"
#include "kernel/sweep/SweepJob.h"

struct IFSweep::Impl {
  UIDialog* callbacks;
  kernel::StockChannel stock;
  std::vector<std::unique_ptr<kernel::StockChannel>> compared;

  const kernel::StockMesh& MeshOf(const SurfaceTransfer* channel, const char* name) const {
    for (const auto& opened : compared) {
      if (opened.get() == channel) return opened->Mesh();
    }
    throw kernel::FatalError(std::string("the ") + name + " is no channel that was opened here");
  }
};

namespace {

// Runs `work`, which reports all that it has to say, and turns what it throws into a fatal message;
// what the callback object throws passes on.
template <class Work>
void RunReported(UIDialog* callbacks, const Work& work) {
  kernel::Reporter reporter(callbacks);
  std::string failure;
  try {
    work(reporter);
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

}  // namespace

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
  RunReported(m_impl->callbacks, [&](kernel::Reporter& reporter) {
    kernel::SweepStock(m_impl->stock.Mesh(), pathFile, *output, reporter);
  });
}

void IFSweep::Compare(SurfaceTransfer* part, SurfaceTransfer* stock, unsigned int stockColour,
                      int divisions, unsigned int* colours, double* distances,
                      SurfaceTransfer* results) {
  RunReported(m_impl->callbacks, [&](kernel::Reporter& reporter) {
    const std::size_t count = divisions > 0 ? static_cast<std::size_t>(divisions) : 0;
    kernel::ComparePart(m_impl->MeshOf(part, "part"), m_impl->MeshOf(stock, "stock"),
                        kernel::CompareBands({distances, count}, {colours, count}, stockColour),
                        *results, reporter);
  });
}
