#pragma once

#include <cstddef>
#include <type_traits>

#include "platform/SystemTypes.h"

/// Writes fields and records to a stream in large blocks. The stream stays the caller's and must
/// outlive the writer. What was written before a failure, or before the writer's end, is passed on
/// to the stream, whole or not. After a failed write every further one fails. The buffer lies
/// within the object, so that writing needs no allocation.
class BlockWriter {
 public:
  static constexpr std::size_t kMostRoom = 32768;

  explicit BlockWriter(FILE* stream) : m_stream(stream) {}
  BlockWriter(const BlockWriter&) = delete;
  BlockWriter& operator=(const BlockWriter&) = delete;
  /// Passes on what is left, without a report: who wants to know calls Flush.
  ~BlockWriter() { PassOn(); }

  /// False when the stream did not take everything so far passed on to it.
  bool Write(const void* from, std::size_t size);

  template <class Value>
  bool Write(const Value& value) {
    static_assert(std::is_arithmetic_v<Value>);
    return Write(&value, sizeof value);
  }

  /// Room for `size` bytes, at most kMostRoom, to be filled in place and then counted with Advance;
  /// null after a failure.
  unsigned char* Room(std::size_t size) {
    if (sizeof m_buffer - m_used < size) PassOn();
    return m_failed ? nullptr : m_buffer + m_used;
  }
  void Advance(std::size_t size) { m_used += size; }

  /// Passes everything on, through the stream's own buffer too. False when that or any earlier
  /// write failed.
  bool Flush();

 private:
  bool PassOn();
  bool PassOn(const void* from, std::size_t size);

  FILE* m_stream;
  bool m_failed = false;
  std::size_t m_used = 0;
  unsigned char m_buffer[65536];
};
