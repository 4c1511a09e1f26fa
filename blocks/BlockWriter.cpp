#include "blocks/BlockWriter.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

bool BlockWriter::Write(const void* from, std::size_t size) {
  const unsigned char* next = static_cast<const unsigned char*>(from);
  while (size > 0) {
    if (m_used == sizeof m_buffer && !PassOn()) return false;
    const std::size_t part = std::min(size, sizeof m_buffer - m_used);
    std::memcpy(m_buffer + m_used, next, part);
    m_used += part;
    next += part;
    size -= part;
  }
  return !m_failed;
}

bool BlockWriter::Flush() {
  if (PassOn() && std::fflush(m_stream) != 0) m_failed = true;
  return !m_failed;
}

bool BlockWriter::PassOn() {
  const std::size_t size = m_used;
  m_used = 0;
  if (!m_failed && size > 0) m_failed = std::fwrite(m_buffer, 1, size, m_stream) != size;
  return !m_failed;
}
