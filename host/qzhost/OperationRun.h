#pragma once

#include <functional>
#include <string>
#include <vector>

#include "formats/Mesh.h"
#include "formats/MeshMeasures.h"
#include "host/qzhost/AddIn.h"
#include "host/qzhost/AddInRun.h"
#include "host/qzhost/KernelMessages.h"
#include "host/qzhost/StatusProgress.h"
#include "host/qzhost/TemporaryDirectory.h"

namespace host {

/// One call of an operation of the add-in that makes one file of a surface file. The add-in works
/// in a temporary directory, which goes with the object. Escape and Ctrl-C are listened to from the
/// first to the last.
class OperationRun {
 public:
  struct Task {
    std::string caption;  // over its progress
    std::string input;    // of any mesh format
    std::string output;   // as messages name it; may be empty when nothing is to be written
    /// The add-in moves its input about and may leave the stream on its result open.
    bool movesItsInput = false;
    /// Why a flag is false when the kernel has said nothing; empty for unknown. May be left out.
    std::function<std::string()> explain;
  };
  /// Calls the add-in with the full paths of the surface file and of the file to make.
  using Call = std::function<void(const AddIn& addIn, char* input, char* output, bool* succeeded)>;
  /// Looks at the file that the add-in has made, and puts the result where it belongs. Throws
  /// formats::FileError when it is none.
  using TakeResult = std::function<Verdict(const std::string& file)>;

  /// Throws CommandError when the add-in cannot be had.
  OperationRun(Task task, const Options& options);

  /// Reads the input and converts it to a binary surface where it is none. A file that the add-in
  /// moves about is never the user's own. Throws CommandError or formats::FileError.
  formats::Mesh PrepareInput();

  /// Makes the call unless the user has asked to stop, and judges it. A result is taken only when
  /// the flag is true and nobody has asked to stop; what the kernel said last tells why there is
  /// none.
  void Perform(const Call& call, const TakeResult& take);

  bool AskedToStop() { return m_progress.AskedToStop(); }
  const std::string& InputFile() const { return m_inputFile; }
  const Outcome& TheOutcome() const { return m_outcome; }
  const Verdict& TheVerdict() const { return m_verdict; }
  /// The kernel's, with the user's names for the files.
  std::vector<std::string> Warnings() const;

 private:
  Verdict Judge(const TakeResult& take);
  Verdict TakeWhatIsThere(const TakeResult& take) const;
  std::string WhyItFailed() const;
  std::string InTheUsersNames(std::string message) const;

  const Task m_task;
  const KernelMessages m_messages;
  const AddIn m_addIn;
  // Listens ahead of the first temporary file: an interrupt that nobody listens to would leave it.
  StatusProgress m_progress;
  const TemporaryDirectory m_place;
  std::string m_inputFile;
  std::string m_outputFile;
  bool m_inputIsEmpty = false;
  Outcome m_outcome;
  Verdict m_verdict;
};

/// The box that the host gives along with a surface: that of its finite vertices, or the origin.
formats::Box BoxOf(const formats::Mesh& mesh);

}  // namespace host
