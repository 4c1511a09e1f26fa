#include "blocks/BlockReader.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "platform/files.h"

bool BlockReader::Read(void* to, std::size_t size) {
  unsigned char* next = static_cast<unsigned char*>(to);
  while (size > 0) {
    if (Buffered() == 0) Refill();
    const std::size_t part = std::min(size, Buffered());
    if (part == 0) return false;
    std::memcpy(next, m_buffer + m_next, part);
    m_next += part;
    next += part;
    size -= part;
  }
  return true;
}

BlockReader::Records BlockReader::ReadRecords(std::size_t recordSize, std::size_t most) {
  if (Buffered() < recordSize) Refill();
  const std::size_t count = std::min(most, Buffered() / recordSize);
  const Records records{m_buffer + m_next, count};
  m_next += count * recordSize;
  return records;
}

bool BlockReader::Seek(long long offset) {
  m_next = 0;
  m_end = 0;
  m_exhausted = SeekStdFile(m_stream, offset) != 0;
  return !m_exhausted;
}

void BlockReader::Refill() {
  if (m_exhausted) return;
  std::memmove(m_buffer, m_buffer + m_next, Buffered());
  m_end = Buffered();
  m_next = 0;
  const std::size_t room = sizeof m_buffer - m_end;
  const std::size_t got = std::fread(m_buffer + m_end, 1, room, m_stream);
  m_exhausted = got < room;
  m_end += got;
}
