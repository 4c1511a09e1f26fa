#include "host/qzhost/SurfaceOperation.h"

#include <algorithm>
#include <utility>

#include "formats/BinarySurface.h"
#include "host/qzhost/MeshTarget.h"

namespace host {

namespace {

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

OperationRun::Task TaskOf(const SurfaceOperation& operation) {
  return {operation.caption, operation.input, operation.output, operation.movesItsInput,
          operation.explain};
}

class Run {
 public:
  Run(const SurfaceOperation& operation, const Options& options)
      : m_operation(operation), m_run(TaskOf(operation), options) {
    m_result.inputFormat = formats::MeshFormatOf(operation.input);
    if (operation.output.empty()) return;
    RefuseOutputOverInput(operation.input, operation.output);
    if (!operation.writeNothing) m_target.emplace(operation.output);
  }

  SurfaceResult Result() {
    LookAtInput(m_run.PrepareInput());
    m_run.Perform(m_operation.call, [this](const std::string& file) { return Take(file); });
    m_result.outcome = m_run.TheOutcome();
    m_result.verdict = m_run.TheVerdict();
    m_result.warnings = m_run.Warnings();
    return std::move(m_result);
  }

 private:
  void LookAtInput(const formats::Mesh& mesh) {
    m_counting = CountingFor(mesh);
    m_result.before = CountMesh(mesh, m_counting);
    m_result.coloursBefore = formats::MeasureMesh(mesh).colours;
    if (m_operation.prepare) m_operation.prepare(mesh);
  }

  Verdict Take(const std::string& file) {
    const formats::Mesh result = formats::ReadBinarySurface(file);
    // What has been moved about is no longer what was given, to the last digit.
    const formats::Mesh input =
        m_operation.movesItsInput ? formats::Mesh() : formats::ReadBinarySurface(m_run.InputFile());
    const std::string doubt = m_operation.doubt ? m_operation.doubt(input, result) : "";
    if (!doubt.empty()) return {kNoResult, "the add-in reports success, but " + doubt};
    if (m_operation.inspect) m_operation.inspect(input, result);
    if (m_operation.inspect && m_run.AskedToStop()) return {kCancelled, "stopped by the user"};
    m_result.after =
        CountMesh(result, m_operation.countResultByNumber ? Counting::kByNumber : m_counting);
    m_result.changed = !SameMesh(input, result);
    if (m_target) {
      m_target->Put(result);
      m_result.losses = LossesText(LossesOf(result, m_target->Output()));
    }
    return {};
  }

  const SurfaceOperation& m_operation;
  OperationRun m_run;
  std::optional<MeshTarget> m_target;
  Counting m_counting = Counting::kByNumber;
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
