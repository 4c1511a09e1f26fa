#include "callbacks/UIDialogQZC.h"

#include <cstring>

#include "addin/status_messages.h"
#include "callbacks/ClassifyMessage.h"
#include "callbacks/ProgressState.h"
#include "callbacks/RunFlags.h"
#include "callbacks/UIExceptionQZC.h"

namespace {

constexpr short kOffsettingWait = 24;
constexpr int kLargeTotal = 100000;
constexpr int kLargeStep = 1000;
constexpr double kPointsBetweenPolls = 3.0;

void ShowWait(const char* message) {
  const short number = ClassifyWaitMessage(message);
  if (number == kOffsettingWait) {
    ShowPhaseMessage(number, message);
  } else {
    ShowStatusMessage(number);
  }
}

void SetMessage(const char* message) {
  CurrentProgress().SetText(message);
  CurrentProgress().messageNumber = ClassifyProgressMessage();
}

void StartProgress(const char* message, int total) {
  SetMessage(message);
  CurrentProgress().total = total;
  CurrentProgress().shown = false;
}

void ShowPercentage(double percentage) {
  ShowProgressPercent(CurrentProgress().messageNumber, percentage);
}

// 100 also where there is nothing to divide: without a total, before the first step, behind the
// last.
double Percentage(int count, int total) {
  const bool within = total > 0 && count > 0 && count < total;
  return within ? static_cast<double>(count) / total * 100.0 : 100.0;
}

bool IsPollDue(double percentage) {
  const ProgressState& progress = CurrentProgress();
  return !progress.shown || percentage - progress.lastPercentage > kPointsBetweenPolls ||
         percentage < progress.lastPercentage;
}

void RaiseOnce() {
  if (CurrentRunFlags().exceptionRaised) return;
  SetExceptionRaised();
  throw UIExceptionQZC();
}

}  // namespace

void UIDialogQZC::CreateWait(const char* message) { ShowWait(message); }

void UIDialogQZC::UpdateWait(const char* message) { ShowWait(message); }

void UIDialogQZC::EndWait() {}

void UIDialogQZC::CreateProgress(const char* message, int total) { StartProgress(message, total); }

void UIDialogQZC::ResetWait(const char* message, int total) { StartProgress(message, total); }

void UIDialogQZC::UpdateProgress(const char* message) { SetMessage(message); }

void UIDialogQZC::SetProgress(int count) {
  ProgressState& progress = CurrentProgress();
  if (progress.total >= kLargeTotal && count % kLargeStep != 0) {
    // The status bar is refreshed at every step; the 0 between the thousands is meant.
    ShowPercentage(0.0);
    return;
  }
  const double percentage = Percentage(count, progress.total);
  const bool pollDue = IsPollDue(percentage);
  ShowPercentage(percentage);
  if (!pollDue) return;
  if (PollEscape()) RaiseOnce();
  // It moves at polls only: small steps add up to the next poll.
  progress.lastPercentage = percentage;
  progress.shown = true;
  // Before and behind the question: the host is shown it both times, on purpose.
  ShowPercentage(percentage);
}

void UIDialogQZC::EndProgress() {
  ProgressState& progress = CurrentProgress();
  progress.SetText("");
  progress.total = 0;
  progress.shown = false;
}

void UIDialogQZC::ErrorMessage(const char* message, bool fatal) {
  CurrentProgress().SetText("");
  if (std::strcmp(message, "Memory limit reached.") == 0) SetMemoryLimit();
  if (fatal) RaiseOnce();
}

bool UIDialogQZC::IsActive() { return true; }
