#pragma once

#include <string>

namespace host {

/// Keeps the status bar off the screen (--quiet), or lets it appear again.
void MuteStatus(bool mute);

/// The host's status bar: one line on standard error, rewritten in place on a terminal, a line of
/// its own elsewhere. An empty text clears it.
void ShowStatus(const std::string& text);

}  // namespace host
