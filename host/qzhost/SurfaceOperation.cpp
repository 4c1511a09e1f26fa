#include "host/qzhost/SurfaceOperation.h"

#include <algorithm>
#include <utility>

#include "formats/BinarySurface.h"
#include "formats/FileError.h"
#include "host/qzhost/CommandError.h"
#include "host/qzhost/HostPaths.h"
#include "host/qzhost/HostSystem.h"
#include "host/qzhost/KernelMessages.h"
#include "host/qzhost/MeshTarget.h"
#include "host/qzhost/StatusProgress.h"
#include "host/qzhost/TemporaryDirectory.h"

namespace host {

namespace {

// What the add-in keeps of the name of a file that it makes; a longer one would be another file's.
constexpr std::size_t kLongestName = 255;

bool SameMesh(const formats::Mesh& a, const formats::Mesh& b) {
  const auto sameFacet = [](const formats::Facet& f, const formats::Facet& g) {
    return f.vertices == g.vertices && f.colour == g.colour;
  };
  return a.vertices == b.vertices &&
         std::equal(a.facets.begin(), a.facets.end(), b.facets.begin(), b.facets.end(), sameFacet);
}

std::vector<std::string> LossesText(const MeshLosses& losses) {
  std::vector<std::string> lines;
  if (losses.colours) lines.emplace_back("the format has no colours: they are lost");
  if (losses.doublePrecision) lines.emplace_back("coordinates are rounded to single precision");
  return lines;
}

class Run {
 public:
  Run(const SurfaceOperation& operation, const Options& options)
      : m_operation(operation),
        m_addIn(options.addIn),
        m_progress(operation.caption, options.quiet) {
    m_result.inputFormat = formats::MeshFormatOf(operation.input);
    if (operation.output.empty()) return;
    RefuseOutputOverInput(operation.input, operation.output);
    if (!operation.writeNothing) m_target.emplace(operation.output);
  }

  SurfaceResult Result() {
    PrepareInput();
    if (!m_progress.AskedToStop()) Call();
    m_result.outcome.cancelled = m_progress.AskedToStop();
    m_result.warnings = InTheUsersNames(m_messages.Warnings());
    m_result.verdict = Judge();
    return std::move(m_result);
  }

 private:
  void PrepareInput() {
    m_outputFile = AddInFile(m_place.File("output.iff"));
    if (m_outputFile.size() > kLongestName) {
      throw CommandError(m_outputFile + ": the temporary directory's name is too long");
    }
    const formats::Mesh mesh = formats::ReadMesh(m_operation.input);
    m_counting = CountingFor(mesh);
    m_result.before = CountMesh(mesh, m_counting);
    m_result.coloursBefore = formats::MeasureMesh(mesh).colours;
    m_inputFile = AddInFile(m_operation.input);
    if (m_result.inputFormat == formats::MeshFormat::BinarySurface) return;
    m_inputFile = AddInFile(m_place.File("input.iff"));
    formats::WriteBinarySurface(m_inputFile, mesh);
  }

  void Call() {
    m_result.outcome = CallAddIn([this](bool* succeeded) {
      m_operation.call(m_addIn, m_inputFile.data(), m_outputFile.data(), succeeded);
    });
  }

  Verdict Judge() {
    if (m_result.outcome.cancelled) return {kCancelled, "stopped by the user"};
    if (!m_result.outcome.stray.empty()) {
      return {kFailed, "the add-in failed: " + m_result.outcome.stray};
    }
    if (!m_result.outcome.flag) return {kFailed, WhyItFailed()};
    try {
      return TakeResult();
    } catch (const formats::FileError& error) {
      return {kNoResult, InTheUsersNames({error.what()}).front()};
    }
  }

  std::string WhyItFailed() const {
    const auto errors = m_messages.Errors();
    if (!errors.empty()) return InTheUsersNames({errors.back()}).front();
    std::string reason = m_operation.explain ? m_operation.explain() : "";
    if (!reason.empty()) return reason;
    if (m_result.before.facets == 0) return m_operation.input + ": has no facets";
    return "the add-in reports failure and gives no reason";
  }

  Verdict TakeResult() {
    if (!StateOfFile(m_outputFile).exists) {
      return {kNoResult, "the add-in reports success but has made no result"};
    }
    const formats::Mesh result = formats::ReadBinarySurface(m_outputFile);
    const formats::Mesh input = formats::ReadBinarySurface(m_inputFile);
    const std::string doubt = m_operation.doubt ? m_operation.doubt(input, result) : "";
    if (!doubt.empty()) return {kNoResult, "the add-in reports success, but " + doubt};
    if (m_operation.inspect) m_operation.inspect(input, result);
    if (m_operation.inspect && m_progress.AskedToStop()) {
      m_result.outcome.cancelled = true;
      return {kCancelled, "stopped by the user"};
    }
    m_result.after =
        CountMesh(result, m_operation.countResultByNumber ? Counting::kByNumber : m_counting);
    m_result.changed = !SameMesh(input, result);
    if (m_target) {
      m_target->Put(result);
      m_result.losses = LossesText(LossesOf(result, m_target->Output()));
    }
    return {};
  }

  // Messages name the files that the add-in was given.
  std::vector<std::string> InTheUsersNames(std::vector<std::string> messages) const {
    for (std::string& message : messages) {
      Replace(message, m_inputFile, m_operation.input);
      Replace(message, m_outputFile, m_operation.output.empty() ? "result" : m_operation.output);
    }
    return messages;
  }

  static void Replace(std::string& text, const std::string& from, const std::string& to) {
    const std::size_t place = text.find(from);
    if (place != std::string::npos) text.replace(place, from.size(), to);
  }

  const SurfaceOperation& m_operation;
  const KernelMessages m_messages;
  const AddIn m_addIn;
  // Listens ahead of the first temporary file: an interrupt that nobody listens to would leave it.
  StatusProgress m_progress;
  std::optional<MeshTarget> m_target;
  const TemporaryDirectory m_place;
  Counting m_counting = Counting::kByNumber;
  std::string m_inputFile;
  std::string m_outputFile;
  SurfaceResult m_result;
};

}  // namespace

SurfaceResult RunSurfaceOperation(const SurfaceOperation& operation, const Options& options) {
  return Run(operation, options).Result();
}

void AddSurfaceResult(Report& report, const SurfaceOperation& operation,
                      const SurfaceResult& result, const Options& options) {
  report.Add("input", operation.input, "input",
             operation.input + " (" + formats::NameOf(result.inputFormat) + ")");
  if (!operation.output.empty()) {
    report.Add("output", operation.output, "output", operation.output);
  }
  AddRun(report, result.outcome, result.verdict);
  AddCounts(report, result.before, result.after, options);
  const bool written = result.verdict.code == kSuccess && !operation.writeNothing;
  report.Add("files_written", written ? nlohmann::ordered_json::array({operation.output})
                                      : nlohmann::ordered_json::array());
  for (const std::string& loss : result.losses) report.AddLine(loss);
  AddRemarks(report, result.warnings);
}

}  // namespace host
