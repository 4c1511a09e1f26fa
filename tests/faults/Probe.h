#pragma once

#include "faults/Injection.h"
#include "support/TestHost.h"

namespace faults {

/// Counts, from Begin to End, whatever the add-in asks of host, library, system and memory, and
/// what the kernel asks of the add-in's callbacks, in one sequence; and makes one of them go wrong.
class Probe {
 public:
  explicit Probe(support::TestHost& host) : m_host(host) {}
  Probe(const Probe&) = delete;
  Probe& operator=(const Probe&) = delete;

  void Begin(const Injection& injection);
  void End();

  const Counted& Calls() const { return m_calls; }

 private:
  bool Enter(const std::string& function);

  support::TestHost& m_host;
  Injection m_injection;
  Counted m_calls;
};

}  // namespace faults
