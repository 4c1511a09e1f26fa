#define HOSTEXE_API QZ_EXPORT
#include "built/FaultyHost.h"

#include <algorithm>
#include <stdexcept>

#include "host/QZCore/HostControl.h"
#include "platform/HostExecutable.h"

namespace {

FaultyHost* g_host = nullptr;

void EnterHost() {
  if (g_host != nullptr) g_host->Enter();
}

}  // namespace

FaultyHost::FaultyHost() {
  g_host = this;
  SetClearHandlers(&EnterHost, &EnterHost);
}

FaultyHost::~FaultyHost() {
  g_host = nullptr;
  SetClearHandlers(nullptr, nullptr);
}

void FaultyHost::Begin(Way way, long k) {
  m_way = way;
  m_k = k;
  m_calls = 0;
  m_questions = 0;
  m_sinceQuestion = m_sinceWish = Stopwatch();
  m_longestSilence = Stopwatch::Seconds(0);
}

Stopwatch::Seconds FaultyHost::LongestSilence() const {
  return std::max(m_longestSilence, m_sinceQuestion.Elapsed());
}

bool FaultyHost::LoadMessage(int, CString* text) {
  Enter();
  *text = "working";
  return true;
}

void FaultyHost::ShowProgress(CString*, int) { Enter(); }

bool FaultyHost::IsCancelled() { return Asked(); }

void FaultyHost::Enter() {
  ++m_calls;
  if (m_way == Way::kThrows && m_calls == m_k) throw std::runtime_error("the host has had enough");
}

bool FaultyHost::Asked() {
  Enter();
  ++m_questions;
  m_longestSilence = LongestSilence();
  if (m_questions == m_k) m_sinceWish = m_sinceQuestion;
  m_sinceQuestion = Stopwatch();
  return m_way == Way::kStops && m_questions == m_k;
}

// What the add-in takes from its host's executable, which is this program.
bool KeyPress(short) { return g_host != nullptr && g_host->Asked(); }

void UpdateStatusBarText(const char*) { EnterHost(); }
