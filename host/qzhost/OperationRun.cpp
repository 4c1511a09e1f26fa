#include "host/qzhost/OperationRun.h"

#include <utility>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "formats/meshes/MeshFile.h"
#include "host/QZCore/HostControl.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostPaths.h"
#include "host/qzhost/HostSystem.h"

namespace host {

namespace {

// What the add-in keeps of the name of a file that it makes; a longer one would be another file's.
constexpr std::size_t kLongestName = 255;

void Replace(std::string& text, const std::string& from, const std::string& to) {
  const std::size_t place = text.find(from);
  if (place != std::string::npos) text.replace(place, from.size(), to);
}

}  // namespace

OperationRun::OperationRun(Task task, const Options& options)
    : m_task(std::move(task)),
      m_addIn(options.addIn),
      m_progress(m_task.caption, options.quiet),
      m_outputFile(AddInFile(m_place.File("output.iff"))) {
  if (m_outputFile.size() > kLongestName) {
    throw CommandError(m_outputFile + ": the temporary directory's name is too long");
  }
}

formats::Mesh OperationRun::PrepareInput() {
  formats::Mesh mesh = formats::ReadMesh(m_task.input);
  m_inputIsEmpty = mesh.facets.empty();
  m_inputFile = AddInFile(m_task.input);
  const bool isSurfaceFile =
      formats::MeshFormatOf(m_task.input) == formats::MeshFormat::BinarySurface;
  if (isSurfaceFile && !m_task.movesItsInput) return mesh;
  m_inputFile = AddInFile(m_place.File("input.iff"));
  formats::WriteBinarySurface(m_inputFile, mesh);
  return mesh;
}

void OperationRun::Perform(const Call& call, const TakeResult& take) {
  if (!AskedToStop()) {
    m_outcome = CallAddIn([&](bool* succeeded) {
      call(m_addIn, m_inputFile.data(), m_outputFile.data(), succeeded);
    });
  }
  // Of a result that ends early, which is as agreed; but a file in use could not be removed.
  if (m_task.movesItsInput) CloseStreamsOn(m_outputFile.c_str());
  m_outcome.cancelled = AskedToStop();
  m_verdict = Judge(take);
  m_outcome.cancelled = m_verdict.code == kCancelled;
}

Verdict OperationRun::Judge(const TakeResult& take) {
  if (m_outcome.cancelled) return {kCancelled, "stopped by the user"};
  if (!m_outcome.stray.empty()) return {kFailed, "the add-in failed: " + m_outcome.stray};
  if (!m_outcome.flag) return {kFailed, WhyItFailed()};
  Verdict verdict = TakeWhatIsThere(take);
  const auto errors = m_messages.Errors();
  if (verdict.code == kNoResult && !errors.empty()) {
    verdict.reason = InTheUsersNames(errors.back());
  }
  return verdict;
}

Verdict OperationRun::TakeWhatIsThere(const TakeResult& take) const {
  if (!StateOfFile(m_outputFile).exists) {
    return {kNoResult, "the add-in reports success but has made no result"};
  }
  try {
    return take(m_outputFile);
  } catch (const formats::FileError& error) {
    return {kNoResult, InTheUsersNames(error.what())};
  }
}

std::string OperationRun::WhyItFailed() const {
  const auto errors = m_messages.Errors();
  if (!errors.empty()) return InTheUsersNames(errors.back());
  std::string reason = m_task.explain ? m_task.explain() : "";
  if (!reason.empty()) return reason;
  if (m_inputIsEmpty) return m_task.input + ": has no facets";
  return "the add-in reports failure and gives no reason";
}

std::vector<std::string> OperationRun::Warnings() const {
  std::vector<std::string> warnings = m_messages.Warnings();
  for (std::string& warning : warnings) warning = InTheUsersNames(std::move(warning));
  return warnings;
}

std::string OperationRun::InTheUsersNames(std::string message) const {
  Replace(message, m_inputFile, m_task.input);
  Replace(message, m_outputFile, m_task.output.empty() ? "result" : m_task.output);
  return message;
}

formats::Box BoxOf(const formats::Mesh& mesh) {
  return formats::MeasureMesh(mesh).box.value_or(formats::Box{});
}

}  // namespace host
