#include "host/QZCore/HostControl.h"

namespace {

// The protocol reserves the first string for flags; the real host has ten more.
constexpr int kArgumentCount = 11;

bool g_metric = true;
void (*g_clearPrompt)() = nullptr;
void (*g_clearText)() = nullptr;

}  // namespace

char post_args[kArgumentCount][256] = {};
double tol = 0.01;

bool IsMetric() { return g_metric; }
void SetHostMetric(bool metric) { g_metric = metric; }
void SetHostTolerance(double tolerance) { tol = tolerance; }

void clearprompt() {
  if (g_clearPrompt != nullptr) g_clearPrompt();
}

void cleartext() {
  if (g_clearText != nullptr) g_clearText();
}

void SetClearHandlers(void (*prompt)(), void (*text)()) {
  g_clearPrompt = prompt;
  g_clearText = text;
}
