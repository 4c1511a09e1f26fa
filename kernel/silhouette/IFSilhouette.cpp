#define IFSILHOUETTE_API QZ_EXPORT
#include "platform/IFSilhouette.h"

#include <new>
#include <string>

#include "formats/FileError.h"
#include "kernel/common/FatalError.h"
#include "kernel/common/StageProgress.h"
#include "kernel/silhouette/SilhouetteJob.h"

struct IFSilhouette::Impl {};

IFSilhouette::IFSilhouette() : m_impl(nullptr) {}

IFSilhouette::~IFSilhouette() {}

void IFSilhouette::Run(char* inputFile, char* outputFile, double distance, UIDialog* dialog) {
  kernel::StageProgress progress(dialog);
  std::string failure;
  try {
    kernel::TraceSilhouette(inputFile, outputFile, distance, progress);
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
