#include "callbacks/UIDlgKernel.h"

#include <cstdio>
#include <memory>

#include "SystemApi.h"
#include "addin/directories.h"
#include "callbacks/UIExceptionKernel.h"
#include "platform/files.h"

namespace {

constexpr int kNoPercentage = -1;

struct CloseStdFile {
  void operator()(FILE* stream) const { std::fclose(stream); }
};
using StdFile = std::unique_ptr<FILE, CloseStdFile>;

// Where tracing can be switched on; empty in the product.
void Trace(const CString& /*text*/) {}

CString MessageText(const char* message, const char* operation) {
  if (message != nullptr) return message;
  return CString("Kernvale ") + operation + " message is null";
}

CString TracedText(const char* message, const char* operation) {
  CString text = MessageText(message, operation);
  Trace(text);
  return text;
}

// The number of the host's message for a kernel text.
int ClassifyKernelMessage(const CString& text) {
  constexpr int kOther = 2;
  if (text.GetLength() <= 2) return kOther;
  switch (text.GetAt(0)) {
    case 'S':
      return 44;
    case 'I':
      return 45;
    case 'C':
      return 46;
    case 'P':
      return 47;
    case 'W':
      return 48;
    case 'O':
      if (text.GetAt(1) == 'p') return 49;
      return text.GetAt(1) == 'f' ? 50 : kOther;
    default:
      return kOther;
  }
}

// An existing file keeps what it holds: earlier jobs' entries stay at its head.
StdFile OpenForAppending(const CString& path) {
  const bool exists = StdFile(OpenStdFile(path, "r")) != nullptr;
  return StdFile(OpenStdFile(path, exists ? "r+" : "w"));
}

}  // namespace

UIDlgKernel::UIDlgKernel()
    : m_errorRaised(false),
      m_host(nullptr),
      m_progressTotal(0),
      m_spareThousand(1000),
      m_spareZero(0) {}

void UIDlgKernel::SetHost(HostProgress* host) { m_host = host; }

void UIDlgKernel::SetWorkDir(CString workDir) { m_workDir = workDir; }

void UIDlgKernel::CreateWait(const char* message) {
  NotifyHost(TracedText(message, "CreateWait"), kNoPercentage);
}

void UIDlgKernel::UpdateWait(const char* message) {
  NotifyHost(TracedText(message, "UpdateWait"), kNoPercentage);
}

void UIDlgKernel::EndWait() {}

void UIDlgKernel::CreateProgress(const char* message, int total) {
  StartProgress(TracedText(message, "CreateProgress"), total);
}

void UIDlgKernel::ResetWait(const char* message, int total) {
  StartProgress(TracedText(message, "ResetWait"), total);
}

void UIDlgKernel::UpdateProgress(const char* message) {
  // The stored caption stays: the steps that follow still go under the run's first text.
  NotifyHost(TracedText(message, "UpdateProgress"), kNoPercentage);
}

void UIDlgKernel::SetProgress(int count) {
  // Whole totals only: 0 until the count reaches the total, then 100, 200 when it is twice that.
  // The host's display counts on the single jump.
  long long percentage = 0;
  if (m_progressTotal >= 1) percentage = static_cast<long long>(count / m_progressTotal) * 100;
  NotifyHost(m_progressText, static_cast<int>(percentage));
}

void UIDlgKernel::EndProgress() {}

void UIDlgKernel::ErrorMessage(const char* message, bool fatal) {
  const CString text = MessageText(message, "ErrorMessage");
  CaptureKernelMessage(text, fatal);
  Trace(text);
  Trace(fatal ? "endprocess = true" : "endprocess = false");
  if (fatal) RaiseOnce();
}

bool UIDlgKernel::IsActive() { return true; }

void UIDlgKernel::StartProgress(const CString& caption, int total) {
  m_progressText = caption;
  m_progressTotal = total;
  // The total goes where a percentage is expected; the host takes it so.
  NotifyHost(caption, total);
}

void UIDlgKernel::NotifyHost(const CString& text, int percentage) {
  // Only the host's own words are shown, never the kernel's. A host without words for this number
  // is shown nothing, but is still asked whether to stop.
  CString hostText;
  if (m_host->LoadMessage(ClassifyKernelMessage(text), &hostText)) {
    m_host->ShowProgress(&hostText, percentage);
  }
  if (m_host->IsCancelled()) RaiseOnce();
}

void UIDlgKernel::CaptureKernelMessage(const CString& text, bool fatal) const {
  if (m_workDir.IsEmpty() || text.IsEmpty()) return;

  const CString path = m_workDir + "ErrorCapture.txt";
  {
    const StdFile file = OpenForAppending(path);
    if (file == nullptr) return;
    // Anywhere else the entry would go over those of earlier jobs.
    if (std::fseek(file.get(), 0, SEEK_END) != 0) return;
    std::fprintf(file.get(), "\n%s Message Received:\n", fatal ? "Error" : "Warning");
    std::fprintf(file.get(), "%s\n", text.GetString());
  }
  SaveCapture(path);
}

void UIDlgKernel::SaveCapture(const CString& captureFile) const {
  const CString copy = SaveCopyBase(m_workDir) + "TmpSaveErrorCapture.txt";
  // Removed first, so that a copy that fails leaves no older one that looks current.
  RemoveStdFile(copy);
  CopyFileA(captureFile, copy, FALSE);
}

void UIDlgKernel::RaiseOnce() {
  if (m_errorRaised) return;
  m_errorRaised = true;
  throw UIExceptionKernel();
}
