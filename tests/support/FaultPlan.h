#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace support {

/// Counts the calls of everything that a test may want to fail, and says which of them do.
///
/// Functions go by these names: "m_fopen", "m_fopen_hl", "file_exists", "RegOpen",
/// "GetStringValue"; "fopen" (fopen_s counts as one), "fclose", "fread", "fwrite", "fflush",
/// "fseek" (its variants for large files too), "fgetpos", "fsetpos", "remove", "CopyFileA",
/// "GetCurrentDirectoryA", "SetCurrentDirectoryA", "LoadLibraryA"; "new" (operator new and new[]
/// with std::nothrow). Of the progress object "LoadMessage" and "IsCancelled", of the executable
/// "KeyPress": to fail is to have no text, or to be told to stop. Counted only are "m_fclose",
/// "ShowProgress", "UpdateStatusBarText", "clearprompt" and "cleartext".
class FaultPlan {
 public:
  /// Told of every counted call by its function, in order; true makes it fail. It may throw.
  std::function<bool(const std::string&)> onCall;

  /// Told of what fwrite is asked to write, behind onCall: the file, as events spell it, and bytes.
  std::function<void(const std::string&, std::size_t)> onWrite;

  /// The `n`-th call (1 is the first since this plan began) fails; others are not affected.
  void FailCall(const std::string& function, int n) { m_failing[function].insert(n); }

  /// Every call from the `n`-th on fails.
  void FailFrom(const std::string& function, int n) { m_failingFrom[function] = n; }

  /// Runs `action`, which may throw, inside the `n`-th call, before it does anything.
  void RunAt(const std::string& function, int n, std::function<void()> action) {
    m_actions[{function, n}] = std::move(action);
  }

  /// How often the function has been called so far.
  int Calls(const std::string& function) const;

  /// From now on only `bytes` more bytes fit on the disk; a write that would go beyond ends short.
  void LimitDisk(std::uint64_t bytes) { m_room = bytes; }

  /// Bytes that fwrite has been asked to write so far, without those of calls that failed.
  std::uint64_t BytesWritten() const { return m_written; }

  /// Bytes that fread has delivered since the last seek.
  std::uint64_t BytesRead() const { return m_read; }

  /// For the doubles: counts a call and says whether it must fail.
  bool Enter(const std::string& function);

  /// For the doubles: how many of `bytes` still fit; they are taken from the room that is left.
  std::size_t Claim(std::size_t bytes);

  /// For the doubles: whether all of `bytes` fit at once; only then they are taken from the room.
  bool TakeRoom(std::size_t bytes);

  /// For the doubles: counts what fread has delivered, and begins anew at a seek.
  void NoteRead(std::size_t bytes) { m_read += bytes; }
  void NoteSeek() { m_read = 0; }

 private:
  std::map<std::string, int> m_calls;
  std::map<std::string, std::set<int>> m_failing;
  std::map<std::string, int> m_failingFrom;
  std::map<std::pair<std::string, int>, std::function<void()>> m_actions;
  std::optional<std::uint64_t> m_room;
  std::uint64_t m_written = 0;
  std::uint64_t m_read = 0;
};

}  // namespace support
