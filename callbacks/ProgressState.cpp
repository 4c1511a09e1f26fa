#include "callbacks/ProgressState.h"

#include <algorithm>
#include <cstring>

void ProgressState::SetText(const char* message) {
  const std::size_t length = std::min(std::strlen(message), sizeof text - 1);
  std::memcpy(text, message, length);
  text[length] = '\0';
}

ProgressState& CurrentProgress() {
  static ProgressState state;
  return state;
}
