#include "callbacks/ClassifyMessage.h"

#include <cstring>

#include "callbacks/ProgressState.h"
#include "callbacks/RunFlags.h"

namespace {

constexpr std::size_t kPrefixLength = 3;

// An entry's index plus 1 is its message number. The entries that stand outside both searches are
// placeholders, and "Rea" is one of them although it looks like a text: a wait that begins with it
// is an unknown one.
constexpr char kPrefixes[24][kPrefixLength + 1] = {
    "XXX", "Sti", "Wri", "Sca", "Opt", "Off", "Pre", "Gen", "Cle", "Pos",  // progress: 1 to 9
    "",    "",    "",    "",    "",    "",    "",    "",    "",            //
    "YYY", "Rea", "Sti", "Ini", "Off"};                                    // waits: 21 to 23

constexpr int kFirstProgress = 1;
constexpr int kPost = 9;
constexpr int kFirstWait = 21;
constexpr int kLastWait = 23;

constexpr short kUnknownProgress = 1;
constexpr short kUnknownWait = 21;

constexpr std::size_t kPassDigit = 22;  // of a "Pos" text

// The index of the first entry from `first` to `last` that the text begins with; -1 without one.
int FindPrefix(const char* text, int first, int last) {
  for (int i = first; i <= last; ++i) {
    if (std::strncmp(text, kPrefixes[i], kPrefixLength) == 0) return i;
  }
  return -1;
}

short NumberOf(int index, short unknown) {
  return index < 0 ? unknown : static_cast<short>(index + 1);
}

bool IsSecondPass(const char* text) {
  return std::strlen(text) > kPassDigit && text[kPassDigit] == '2';
}

}  // namespace

short ClassifyProgressMessage() {
  const char* const text = CurrentProgress().text;
  const int index = FindPrefix(text, kFirstProgress, kPost);
  if (index == kPost && IsSecondPass(text)) SetPostPhase();
  return NumberOf(index, kUnknownProgress);
}

short ClassifyWaitMessage(const char* message) {
  return NumberOf(FindPrefix(message, kFirstWait, kLastWait), kUnknownWait);
}
