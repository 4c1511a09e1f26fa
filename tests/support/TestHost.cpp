#include "support/TestHost.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/HostExecutable.h"
#include "platform/QZCore.h"
#include "support/NothrowBlocks.h"
#include "support/RealLibrary.h"

namespace support {
namespace {

TestHost* g_host = nullptr;
std::map<FILE*, OpenStream> g_streams;

TestHost& Host() {
  if (g_host == nullptr) {
    std::fputs("a host service was called without a TestHost\n", stderr);
    std::abort();
  }
  return *g_host;
}

std::string Outcome(bool succeeded) { return succeeded ? "" : " fails"; }

std::string LineMark(int line) { return line > 0 ? "" : " without line"; }

bool IsFullPath(const std::string& name) {
  return name.starts_with('\\') || name.starts_with('/') || (name.size() > 1 && name[1] == ':');
}

FILE* OpenTracked(const char* unit, const std::string& path, const char* mode, bool refused) {
  FILE* stream = refused ? nullptr : __real_fopen(WithSlashes(path).c_str(), mode);
  if (stream != nullptr) RememberStream(stream, {unit, Host().events.Spell(path)});
  return stream;
}

}  // namespace

TestHost::TestHost() {
  if (g_host != nullptr) std::abort();
  g_host = this;
  BeginBlockCount();
  temporaryDirectory = std::filesystem::temp_directory_path().string();
  std::memset(post_args, 0, sizeof(char[256]) * 2);
}

TestHost::~TestHost() {
  g_host = nullptr;
  for (const auto& [stream, what] : g_streams) __real_fclose(stream);
  g_streams.clear();
  EXPECT_EQ(EndBlockCount(), 0u) << "memory from operator new(std::nothrow) was not given back";
}

std::vector<std::string> TestHost::OpenStreams() const {
  std::vector<std::string> names;
  for (const auto& [stream, what] : g_streams) {
    names.push_back(what.unit.empty() ? what.path : what.unit + " " + what.path);
  }
  std::sort(names.begin(), names.end());
  return names;
}

TestHost* CurrentTestHost() { return g_host; }

std::string SpelledPath(const char* path) {
  return g_host == nullptr ? path : g_host->events.Spell(path);
}

void Note(const std::string& event) {
  if (g_host != nullptr) g_host->events.Note(event);
}

std::string WithSlashes(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

void RememberStream(FILE* stream, const OpenStream& what) { g_streams[stream] = what; }

bool IsRemembered(FILE* stream) { return g_streams.contains(stream); }

std::string PathOf(FILE* stream) { return g_streams.at(stream).path; }

OpenStream ForgetStream(FILE* stream) {
  const auto found = g_streams.find(stream);
  if (found == g_streams.end()) return {"", "an unknown stream"};
  OpenStream what = found->second;
  g_streams.erase(found);
  return what;
}

}  // namespace support

using support::Host;
using support::LineMark;
using support::Outcome;

char post_args[8][256];
double tol = 0.001;

void get_REG_KEY(char* key) {
  constexpr std::size_t kCapacity = 260;
  Host().events.Note("get_REG_KEY");
  // A text that fills all of it is not terminated.
  const std::string& text = Host().registryKey;
  std::memcpy(key, text.c_str(), std::min(text.size() + 1, kCapacity));
}

char RegOpen(CString path, HKEY* key, HKEY parent, unsigned long access) {
  support::TestHost& host = Host();
  const bool opened = !host.faults.Enter("RegOpen") && host.registryKeyPresent;
  host.events.Note("RegOpen " + std::string(path.GetString()) + " " + std::to_string(access) +
                   (parent == nullptr ? "" : " with a parent") + Outcome(opened));
  static char keyItself;
  if (opened) *key = reinterpret_cast<HKEY>(&keyItself);
  return opened ? 1 : 0;
}

char GetStringValue(HKEY, const char* name, char* value, unsigned long* size) {
  support::TestHost& host = Host();
  const bool found = !host.faults.Enter("GetStringValue") && host.stockDataDirectory.has_value() &&
                     host.stockDataDirectory->size() < *size;
  host.events.Note("GetStringValue " + std::string(name) + " " + std::to_string(*size) +
                   Outcome(found));
  if (!found) return 0;
  std::strcpy(value, host.stockDataDirectory->c_str());
  *size = static_cast<unsigned long>(host.stockDataDirectory->size() + 1);
  return 1;
}

char RegClose(HKEY) {
  Host().events.Note("RegClose");
  return 1;
}

CString GetTempDirectory() {
  Host().events.Note("GetTempDirectory");
  return Host().temporaryDirectory.c_str();
}

bool IsMetric() {
  Host().events.Note("IsMetric");
  return Host().metric;
}

char file_exists(const char* path, char flag) {
  support::TestHost& host = Host();
  const std::string spelled = host.events.Spell(path);
  host.events.Note("exists " + spelled + (flag == 0 ? "" : " with a flag"));
  const bool denied = host.faults.Enter("file_exists");
  const auto answer = host.existsAnswers.find(spelled);
  if (answer != host.existsAnswers.end()) return answer->second ? 1 : 0;
  return !denied && std::filesystem::exists(support::WithSlashes(path)) ? 1 : 0;
}

FILE* m_fopen(const char* sourceUnit, int line, const char* path, const char* mode) {
  support::TestHost& host = Host();
  FILE* stream = support::OpenTracked(sourceUnit, path, mode, host.faults.Enter("m_fopen"));
  host.events.Note("m_fopen " + std::string(sourceUnit) + " " + host.events.Spell(path) + " " +
                   mode + LineMark(line) + Outcome(stream != nullptr));
  return stream;
}

FILE* m_fopen_hl(const char* sourceUnit, int line, const char* directory, const char* name,
                 const char* mode, bool* status) {
  support::TestHost& host = Host();
  const std::string path = support::IsFullPath(name) ? name : std::string(directory) + name;
  FILE* stream = support::OpenTracked(sourceUnit, path, mode, host.faults.Enter("m_fopen_hl"));
  host.events.Note("m_fopen_hl " + std::string(sourceUnit) + " " + host.events.Spell(directory) +
                   " " + host.events.Spell(name) + " " + mode + LineMark(line) +
                   Outcome(stream != nullptr));
  using StatusWrites = support::TestHost::StatusWrites;
  const bool isTrue = host.statusWrites == StatusWrites::kTrueWhateverHappened;
  const bool everyCall = isTrue || host.statusWrites == StatusWrites::kOnEveryCall;
  const bool never = host.statusWrites == StatusWrites::kNever;
  if (!never && (stream == nullptr || everyCall)) *status = isTrue || stream != nullptr;
  // A host may call an open undone although it hands out a stream: the status decides.
  if (host.faults.Enter("m_fopen_hl status")) *status = false;
  return stream;
}

void m_fclose(const char* sourceUnit, int line, FILE* stream) {
  support::TestHost& host = Host();
  host.faults.Enter("m_fclose");
  const std::string unit = sourceUnit;
  if (stream == nullptr) {
    host.events.Note("m_fclose " + unit + " nothing" + LineMark(line));
    return;
  }
  const support::OpenStream what = support::ForgetStream(stream);
  host.events.Note("m_fclose " + unit + " " + what.path + LineMark(line));
  __real_fclose(stream);
}

void clearprompt() {
  Host().events.Note("clearprompt");
  Host().faults.Enter("clearprompt");
}

void cleartext() {
  Host().events.Note("cleartext");
  Host().faults.Enter("cleartext");
}

bool KeyPress(short code) {
  support::TestHost& host = Host();
  host.events.Note("KeyPress " + std::to_string(code));
  const bool planned = host.faults.Enter("KeyPress");
  const bool due = host.escapeFrom > 0 && host.faults.Calls("KeyPress") >= host.escapeFrom;
  return code == 27 && (host.escapePressed || due || planned);
}

void UpdateStatusBarText(const char* text) {
  Host().events.Note("status \"" + std::string(text) + "\"");
  Host().faults.Enter("UpdateStatusBarText");
}
