// Compiled for the Visual C++ target, never linked: makes the compiler lay out every class of the
// binary contract and name every function that crosses a module's border.
#include "addin/exports.h"
#include "callbacks/UIDialog.h"
#include "callbacks/UIDialogQZC.h"
#include "callbacks/UIDlgKernel.h"
#include "curves/CurveTransfer.h"
#include "curves/CurveXferQZ.h"
#include "curves/SegIpb.h"
#include "platform/HostExecutable.h"
#include "platform/HostProgress.h"
#include "platform/IFHeal.h"
#include "platform/IFSilhouette.h"
#include "platform/IFSphoffset.h"
#include "platform/IFSpinsil.h"
#include "platform/IFSweep.h"
#include "platform/QZCore.h"
#include "stock/SurfaceTransfer.h"
#include "stock/SurfaceXferQZ.h"

namespace {

struct ChannelProbe : SurfaceTransfer {
  int Reset() override { return 0; }
  void* AddVertex(const double*) override { return nullptr; }
  void* AddTriangle(void*, void*, void*, char) override { return nullptr; }
  void Close() override {}
};

struct CurveProbe : CurveTransfer {
  int Reset() override { return 0; }
  const int* AddPoint(const double*) override { return nullptr; }
  void* AddSegment(const int*, const int*) override { return nullptr; }
  int Close() override { return 1; }
};

struct ProgressProbe : HostProgress {
  bool LoadMessage(int, CString*) override { return false; }
  void ShowProgress(CString*, int) override {}
  bool IsCancelled() override { return false; }
};

}  // namespace

int LayOut() {
  return static_cast<int>(sizeof(UIDialogQZC) + sizeof(UIDlgKernel) + sizeof(SurfaceXferQZ) +
                          sizeof(CurveXferQZ) + sizeof(IFSweep) + sizeof(IFHeal) + sizeof(SegIpb));
}

void CallEverySlot(UIDialog* dialog, SurfaceTransfer* channel, HostProgress* progress) {
  UIDialog plainDialog;
  UIDialogQZC statusBarDialog;
  ChannelProbe channelProbe;
  ProgressProbe progressProbe;
  dialog = dialog == nullptr ? &plainDialog : dialog;
  channel = channel == nullptr ? &channelProbe : channel;
  progress = progress == nullptr ? &progressProbe : progress;
  dialog->CreateWait("");
  statusBarDialog.CreateWait("");
  channel->Close();
  progress->IsCancelled();
}

void CallKernel(UIDialog* dialog, SurfaceTransfer* channel, char* path, unsigned int* colours,
                double* distances) {
  IFSweep sweep(dialog);
  sweep.OpenStockChannel();
  sweep.OpenCompareSurfaceChannel();
  sweep.SetFiveAxisBufferingLevel(0);
  sweep.Run(channel, path);
  sweep.Compare(channel, channel, 0U, 1, colours, distances, channel);
}

void CallHealKernel(UIDialog* dialog, char* path) {
  IFHeal heal(dialog);
  heal.Run(0.0, path, path);
}

void CallOutlineKernel(UIDialog* dialog, SurfaceTransfer* channel, CurveTransfer* curves,
                       char* path) {
  CurveProbe curveProbe;
  CurveXferQZ curveWriter(1, path);
  curveWriter.Close();
  curves = curves == nullptr ? &curveProbe : curves;
  curves->Close();
  IFSilhouette silhouette;
  silhouette.Run(path, path, 0.0, dialog);
  IFSpinsil spinsil(dialog);
  spinsil.OpenInputChannel();
  spinsil.Run(curves, 0.0);
  IFSphoffset sphoffset(dialog);
  sphoffset.OpenInputChannel();
  sphoffset.Run(0.0, 0.0, channel);
}

void CallHost() {
  KeyPress(27);
  UpdateStatusBarText("");
  clearprompt();
  cleartext();
}

void CallExports(HostProgress* progress, char* path, unsigned char* colours, bool* succeeded) {
  m_version();
  m_main();
  qztutlSweepMultipleToolpathsFromStock("", progress, succeeded);
  qztutlSweepPartStockCompare("", progress, succeeded);
  qztutlStockModelCompress("", "", "", progress, 0.0, succeeded);
  qztutlFilterStockByColor(path, path, 0, colours, succeeded);
  qztutl_heal(0.0, path, path, succeeded);
}

void CallOutlineExports(char* path, double* box, unsigned char* result) {
  qztutl_silbndy(path, path, 0.0, box, box, result);
  qztutlSpinSilBndy(path, 0, path, 0.0, box, box, result);
  qztutlSphericalOffsetTris(path, path, 0.0, 0.0, box, box, result);
}
