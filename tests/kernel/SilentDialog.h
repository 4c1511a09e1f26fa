#pragma once

#include <cstring>

#include "callbacks/UIDialog.h"

namespace kernel_test {

// Keeps what is fatal in mind, and asks for no memory itself.
class SilentDialog : public UIDialog {
 public:
  void ErrorMessage(const char* message, bool fatal) override {
    if (!fatal) return;
    ++errors;
    saysMemory = std::strcmp(message, "Memory limit reached.") == 0;
  }

  int errors = 0;
  bool saysMemory = false;
};

}  // namespace kernel_test
