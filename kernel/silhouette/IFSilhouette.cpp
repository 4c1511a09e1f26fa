#define IFSILHOUETTE_API QZ_EXPORT
#include "platform/IFSilhouette.h"

#include "kernel/common/StageProgress.h"

struct IFSilhouette::Impl {};

IFSilhouette::IFSilhouette() : m_impl(new Impl) {}

IFSilhouette::~IFSilhouette() { delete m_impl; }

void IFSilhouette::Run(char* /*inputFile*/, char* /*outputFile*/, double /*distance*/,
                       UIDialog* dialog) {
  kernel::StageProgress(dialog).Fail("silhouettes are not supported yet");
}
