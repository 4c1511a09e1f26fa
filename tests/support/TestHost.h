#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/FaultPlan.h"
#include "support/Recorder.h"

namespace support {

/// The host of a unit test: every service of the host's core library and executable, on real files.
/// One lives at a time; while it lives, what the code under test asks of the host, and what it asks
/// of the standard library and the system, is written into `events` and may be made to fail through
/// `faults`. Streams still open at the end are closed. Memory that was asked for with std::nothrow
/// while it lived must have been given back at its end (see NothrowBlocks.h).
///
/// Events, one line each (paths as Recorder::Spell gives them, " fails" behind a refused call):
///
///     exists PATH                        m_fopen UNIT PATH MODE
///     m_fopen_hl UNIT DIRECTORY NAME MODE     m_fclose UNIT PATH
///     RegOpen KEY ACCESS   GetStringValue NAME CAPACITY   RegClose   get_REG_KEY
///     IsMetric   GetTempDirectory   clearprompt   cleartext   KeyPress CODE   status "TEXT"
///     fopen PATH MODE   fclose PATH      (fopen_s as fopen)
///     remove PATH   copy FROM -> TO   getcwd CAPACITY   chdir PATH   load MODULE   unload
///
/// Tracked calls without a line number are marked "without line". Single reads, writes and seeks
/// are counted by `faults`, not written down.
class TestHost {
 public:
  TestHost();
  ~TestHost();
  TestHost(const TestHost&) = delete;
  TestHost& operator=(const TestHost&) = delete;

  Recorder events;
  FaultPlan faults;

  /// What get_REG_KEY answers.
  std::string registryKey = "Software\\TestHost";
  /// The text of the registry value that names the stock data directory; absent by default.
  std::optional<std::string> stockDataDirectory;
  /// Whether the key that holds the value can be opened at all.
  bool registryKeyPresent = true;
  bool metric = true;
  bool escapePressed = false;
  /// The `n`-th question for a key (from 1) and all later ones find Escape pressed; 0: none does.
  int escapeFrom = 0;
  std::string temporaryDirectory;

  /// Not every host writes the status byte of a successful open, and what a host makes of it when
  /// an open fails is its own affair.
  enum class StatusWrites { kOnEveryCall, kOnlyOnFailure, kNever, kTrueWhateverHappened };
  StatusWrites statusWrites = StatusWrites::kOnEveryCall;

  /// Answers of file_exists that differ from the truth, by the path as events spell it.
  std::map<std::string, bool> existsAnswers;

  /// Streams that were opened and not closed, tracked and plain ones, as "UNIT PATH" or "PATH".
  std::vector<std::string> OpenStreams() const;
};

/// The living host; null when there is none.
TestHost* CurrentTestHost();

/// A path as the living host's sequence spells it, if there is one.
std::string SpelledPath(const char* path);

/// Writes an event into the living host's sequence, if there is one.
void Note(const std::string& event);

}  // namespace support
