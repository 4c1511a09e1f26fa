#include "blocks/BlockWriter.h"

#include <cstdio>
#include <cstring>

bool BlockWriter::Write(const void* from, std::size_t size) {
  // What is large already needs no copy.
  if (size > kMostRoom) return PassOn() && PassOn(from, size);
  unsigned char* room = Room(size);
  if (room == nullptr) return false;
  std::memcpy(room, from, size);
  Advance(size);
  return true;
}

bool BlockWriter::Flush() {
  if (PassOn() && std::fflush(m_stream) != 0) m_failed = true;
  return !m_failed;
}

bool BlockWriter::PassOn() {
  const std::size_t size = m_used;
  m_used = 0;
  return PassOn(m_buffer, size);
}

bool BlockWriter::PassOn(const void* from, std::size_t size) {
  if (!m_failed && size > 0) m_failed = std::fwrite(from, 1, size, m_stream) != size;
  return !m_failed;
}
