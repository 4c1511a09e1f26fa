#pragma once

#include "callbacks/UIDialog.h"

/// The callback object of heal, silhouette and offset: shows the kernel's progress in the host's
/// status bar, lets the user stop the kernel with Escape, and turns that stop or a fatal kernel
/// error into a UIExceptionQZC, at most once between two calls of ResetAbortState.
///
/// It has no data: its state is ProgressState and RunFlags, shared by all objects of the class, so
/// only one kernel may run under it at a time. Messages must not be null. The kernel's messages
/// themselves are never shown.
class UIDialogQZC final : public UIDialog {
 public:
  void CreateWait(const char* message) override;
  void UpdateWait(const char* message) override;
  void EndWait() override;
  void CreateProgress(const char* message, int total) override;
  void ResetWait(const char* message, int total) override;
  void UpdateProgress(const char* message) override;
  void SetProgress(int count) override;
  void EndProgress() override;
  void ErrorMessage(const char* message, bool fatal) override;
  bool IsActive() override;
};
