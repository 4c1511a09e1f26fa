#pragma once

#include <map>
#include <string>

#include "platform/HostProgress.h"

namespace support {

/// The host's progress object of a test. Each call goes into the living TestHost's sequence:
/// "LoadMessage 44", "ShowProgress "text" 250", "IsCancelled".
class RecordingHostProgress : public HostProgress {
 public:
  bool LoadMessage(int number, CString* text) override;
  void ShowProgress(CString* text, int percentage) override;
  bool IsCancelled() override;

  /// The host's messages; a number that is not here has none. By default "message N" for every N.
  std::map<int, std::string> messages;
  bool hasEveryMessage = true;

  /// The `n`-th question (from 1) and all later ones are answered with true; 0: never.
  int cancelFrom = 0;
  /// Only the `n`-th question is answered with true; 0: none.
  int cancelOnlyAt = 0;

  int Questions() const { return m_questions; }

 private:
  int m_questions = 0;
};

}  // namespace support
