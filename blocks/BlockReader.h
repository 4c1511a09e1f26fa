#pragma once

#include <cstddef>
#include <type_traits>

#include "platform/SystemTypes.h"

/// Reads fields and records from a stream in large blocks. The stream stays the caller's; it may
/// stand anywhere behind what was asked for. Once the stream has delivered less than a full block
/// it is not asked again. The buffer lies within the object, so that reading needs no allocation.
class BlockReader {
 public:
  /// Whole records that lie one behind the other; valid until the reader is used again.
  struct Records {
    const unsigned char* bytes;
    std::size_t count;
  };

  explicit BlockReader(FILE* stream) : m_stream(stream) {}
  BlockReader(const BlockReader&) = delete;
  BlockReader& operator=(const BlockReader&) = delete;

  /// Fills `to` with the next `size` bytes. False when there are fewer; they count as read then.
  bool Read(void* to, std::size_t size);

  template <class Value>
  bool Read(Value* value) {
    static_assert(std::is_trivially_copyable_v<Value>);
    return Read(static_cast<void*>(value), sizeof(Value));
  }

  /// The next records of `recordSize` bytes, at least one and at most `most` of them; none when
  /// fewer than `recordSize` bytes are left, and those stay unread.
  Records ReadRecords(std::size_t recordSize, std::size_t most);

  /// Goes on reading `offset` bytes from the file's start. False when the stream cannot go there.
  bool Seek(long long offset);

 private:
  std::size_t Buffered() const { return m_end - m_next; }
  void Refill();

  FILE* m_stream;
  bool m_exhausted = false;
  std::size_t m_next = 0;
  std::size_t m_end = 0;
  unsigned char m_buffer[65536];
};
