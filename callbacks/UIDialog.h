#pragma once

/// The kernel's callback interface. The kernel calls by slot, so the order is binding. The class
/// itself is usable as a silent callback. It has no virtual destructor, and must not get one: that
/// would shift the slots.
class UIDialog {
 public:
  virtual void CreateWait(const char* /*message*/) {}
  virtual void UpdateWait(const char* /*message*/) {}
  virtual void EndWait() {}
  virtual void CreateProgress(const char* /*message*/, int /*total*/) {}
  virtual void ResetWait(const char* /*message*/, int /*total*/) {}
  virtual void UpdateProgress(const char* /*message*/) {}
  /// `count` steps of the announced total are done.
  virtual void SetProgress(int /*count*/) {}
  virtual void EndProgress() {}
  virtual void ErrorMessage(const char* /*message*/, bool /*fatal*/) {}
  virtual bool IsActive() { return false; }
};
