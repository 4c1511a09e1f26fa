#include "addin/status_messages.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "platform/HostExecutable.h"
#include "platform/QZCore.h"

namespace {

constexpr std::size_t kNumberSize = 50;
constexpr std::size_t kPhaseDigit = 18;  // of "Offsetting (phase 2)... 17"

using StatusLine = char[StatusMessageTable::kTextSize];
using NumberText = char[kNumberSize];

bool Has(short number) { return number <= StatusMessages().count; }

const char* Message(short number) { return StatusMessages().texts[number - 1]; }

// Cuts what does not fit.
template <std::size_t kSize>
void Append(char (&text)[kSize], std::string_view more) {
  const std::size_t length = std::strlen(text);
  more.copy(text + length, kSize - 1 - length);
  text[std::min(length + more.size(), kSize - 1)] = '\0';
}

void ClearHostTexts() {
  clearprompt();
  cleartext();
}

const char* SkipBlanks(const char* text) { return text + std::strspn(text, " \t\n\v\f\r"); }

// As scanf matches: a blank of the pattern stands for any white space or none. Null without a
// match, else what follows.
const char* Match(const char* text, const char* pattern) {
  for (; *pattern != '\0'; ++pattern) {
    if (*pattern == ' ') {
      text = SkipBlanks(text);
    } else if (*text++ != *pattern) {
      return nullptr;
    }
  }
  return text;
}

// `otherwise` when the text does not match or its number is none that an int holds.
int ReadCounter(const char* text, const char* pattern, int otherwise) {
  const char* const number = Match(text, pattern);
  if (number == nullptr) return otherwise;
  char* end = nullptr;
  const long long value = std::strtoll(number, &end, 10);
  return end == number || value < INT_MIN || value > INT_MAX ? otherwise : static_cast<int>(value);
}

int PhaseCounter(const char* kernelText) {
  const char digit = std::strlen(kernelText) > kPhaseDigit ? kernelText[kPhaseDigit] : '\0';
  if (digit == '2') return ReadCounter(kernelText, "Offsetting (phase 2)... ", -2);
  if (digit == '3') return ReadCounter(kernelText, "Offsetting (phase 3)... ", -3);
  return -1;
}

// printf's "%5.1f%%", with a point for the decimals whatever locale the host has set.
void AppendPercentage(double percent, NumberText& text) {
  constexpr std::size_t kWidth = 5;
  char digits[400];  // the largest double has 309 in front of the point
  const char* const end =
      std::to_chars(digits, digits + sizeof digits, percent, std::chars_format::fixed, 1).ptr;
  const std::string_view number(digits, static_cast<std::size_t>(end - digits));
  for (std::size_t width = number.size(); width < kWidth; ++width) Append(text, " ");
  Append(text, number);
  Append(text, "%");
}

}  // namespace

StatusMessageTable& StatusMessages() {
  static StatusMessageTable table = {};
  return table;
}

void ShowStatusMessage(short number) {
  ClearHostTexts();
  if (Has(number)) UpdateStatusBarText(Message(number));
}

void ShowPhaseMessage(short number, const char* kernelText) {
  ClearHostTexts();
  if (!Has(number)) return;
  StatusLine line = "";
  Append(line, Message(number));
  NumberText counter;
  std::snprintf(counter, sizeof counter, "%d", PhaseCounter(kernelText));
  Append(line, counter);
  UpdateStatusBarText(line);
}

void ShowProgressPercent(short number, double percent) {
  StatusLine line = "";
  if (Has(number)) Append(line, Message(number));
  NumberText percentage = "";
  AppendPercentage(percent, percentage);
  Append(line, percentage);
  UpdateStatusBarText(line);
}
