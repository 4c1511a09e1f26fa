#include "support/FaultPlan.h"

#include <algorithm>

namespace support {

int FaultPlan::Calls(const std::string& function) const {
  const auto found = m_calls.find(function);
  return found == m_calls.end() ? 0 : found->second;
}

bool FaultPlan::Enter(const std::string& function) {
  const int call = ++m_calls[function];
  if (onCall && onCall(function)) return true;
  const auto action = m_actions.find({function, call});
  if (action != m_actions.end()) action->second();
  const auto from = m_failingFrom.find(function);
  if (from != m_failingFrom.end() && call >= from->second) return true;
  const auto chosen = m_failing.find(function);
  return chosen != m_failing.end() && chosen->second.contains(call);
}

std::size_t FaultPlan::Claim(std::size_t bytes) {
  m_written += bytes;
  if (!m_room) return bytes;
  const auto fitting = static_cast<std::size_t>(std::min<std::uint64_t>(bytes, *m_room));
  *m_room -= fitting;
  return fitting;
}

bool FaultPlan::TakeRoom(std::size_t bytes) {
  if (!m_room) return true;
  if (bytes > *m_room) return false;
  *m_room -= bytes;
  return true;
}

}  // namespace support
