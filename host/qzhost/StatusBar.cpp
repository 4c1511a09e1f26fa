#include "host/qzhost/StatusBar.h"

#include <cstdio>

#include "host/qzhost/HostSystem.h"

namespace host {

namespace {

bool g_muted = false;
std::string g_shown;

}  // namespace

void MuteStatus(bool mute) { g_muted = mute; }

void ShowStatus(const std::string& text) {
  if (g_muted || text == g_shown) return;
  if (StandardErrorIsTerminal()) {
    // Carriage return, the text, and whatever stood behind it erased.
    std::fprintf(stderr, "\r%s\x1b[K", text.c_str());
  } else if (!text.empty()) {
    std::fprintf(stderr, "%s\n", text.c_str());
  }
  std::fflush(stderr);
  g_shown = text;
}

}  // namespace host
