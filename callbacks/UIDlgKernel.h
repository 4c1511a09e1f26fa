#pragma once

#include "callbacks/UIDialog.h"
#include "platform/HostProgress.h"

/// The callback object of the stock operations: shows the kernel's progress through the host's
/// progress object, writes down what the kernel complains of, and turns the user's stop or a fatal
/// error into a UIExceptionKernel, at most once in its life.
///
/// The record is "ErrorCapture.txt" in the working directory; it only ever grows, and after each
/// entry a copy of it goes where the job's diagnostic copies go.
///
/// Order and kinds of the fields are part of the binary contract.
class UIDlgKernel final : public UIDialog {
 public:
  UIDlgKernel();

  /// Must be set, and not null, before the kernel runs. Stays the host's.
  void SetHost(HostProgress* host);
  /// File names are appended to it as it stands. Empty: nothing is recorded.
  void SetWorkDir(CString workDir);

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

 private:
  void StartProgress(const CString& caption, int total);
  void NotifyHost(const CString& text, int percentage);
  void CaptureKernelMessage(const CString& text, bool fatal) const;
  void SaveCapture(const CString& captureFile) const;
  void RaiseOnce();

  bool m_errorRaised;
  HostProgress* m_host;
  CString m_progressText;
  int m_progressTotal;
  // Nothing reads these two; the object's layout has them.
  [[maybe_unused]] int m_spareThousand;
  [[maybe_unused]] int m_spareZero;
  CString m_workDir;
};
