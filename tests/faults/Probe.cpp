#include "faults/Probe.h"

#include <stdexcept>

namespace faults {

void Probe::Begin(const Injection& injection) {
  m_injection = injection;
  m_calls.clear();
  m_host.faults = {};
  m_host.faults.onCall = [this](const std::string& function) { return Enter(function); };
  m_host.faults.onWrite = [this](const std::string& path, std::size_t bytes) {
    m_calls.back().path = path;
    m_calls.back().bytes = bytes;
  };
}

void Probe::End() { m_host.faults = {}; }

bool Probe::Enter(const std::string& function) {
  m_calls.push_back({function, "", 0});
  if (m_calls.size() != m_injection.place) return false;
  switch (m_injection.way) {
    case Way::kFails:
    case Way::kStops:
    case Way::kFatal:
      return true;
    case Way::kForeign:
      throw std::runtime_error("none of the kernel's exceptions");
    case Way::kFull:
    case Way::kHalfFull:
      m_host.faults.LimitDisk(m_injection.room);
      return false;
    case Way::kNone:
      break;
  }
  return false;
}

}  // namespace faults
