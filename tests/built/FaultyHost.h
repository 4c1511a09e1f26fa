#pragma once

#include "MfcApi.h"
#include "built/Stopwatch.h"
#include "platform/HostProgress.h"

/// The host's executable and progress object of these tests. While one lives, what the add-in asks
/// of them is counted, and one of these questions can go wrong.
class FaultyHost final : public HostProgress {
 public:
  enum class Way { kNone, kStops, kThrows };

  FaultyHost();
  ~FaultyHost();
  FaultyHost(const FaultyHost&) = delete;
  FaultyHost& operator=(const FaultyHost&) = delete;

  /// Begins to count anew. The `k`-th question whether to stop is answered with yes, or the `k`-th
  /// call of any kind throws std::runtime_error.
  void Begin(Way way, long k);

  /// How many could have gone that way.
  long Calls(Way way) const { return way == Way::kStops ? m_questions : m_calls; }

  /// The longest time since Begin() without a question, that since the last one included.
  Stopwatch::Seconds LongestSilence() const;

  /// How long ago the user wanted the stop at the latest: right behind the question before the one
  /// that was answered with yes.
  Stopwatch::Seconds SinceTheWish() const { return m_sinceWish.Elapsed(); }

  bool LoadMessage(int number, CString* text) override;
  void ShowProgress(CString* text, int percentage) override;
  bool IsCancelled() override;

  /// For the executable's functions.
  void Enter();
  bool Asked();

 private:
  Way m_way = Way::kNone;
  long m_k = 0;
  long m_calls = 0;
  long m_questions = 0;
  Stopwatch m_sinceQuestion;
  Stopwatch m_sinceWish;
  Stopwatch::Seconds m_longestSilence{0};
};
