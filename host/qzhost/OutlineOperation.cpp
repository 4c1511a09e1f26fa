#include "host/qzhost/OutlineOperation.h"

#include <utility>

#include "formats/curves/CurvesFile.h"
#include "host/files/MeshOutput.h"
#include "host/qzhost/CurvesTarget.h"

namespace host {

namespace {

class Run {
 public:
  Run(const OutlineOperation& operation, const Options& options)
      : m_operation(operation),
        m_options(options),
        m_run({operation.caption, operation.input, operation.output, true, {}}, options) {
    m_result.inputFormat = formats::MeshFormatOf(operation.input);
    RefuseOutputOverInput(operation.input, operation.output);
    m_target.emplace(operation.output);
  }

  OutlineResult Result() {
    LookAtInput(m_run.PrepareInput());
    m_run.Perform(
        [this](const AddIn& addIn, char* input, char* output, bool* succeeded) {
          m_operation.call(addIn, input, output, m_box, succeeded);
        },
        [this](const std::string& file) { return Take(file); });
    m_result.outcome = m_run.TheOutcome();
    m_result.verdict = m_run.TheVerdict();
    m_result.warnings = m_run.Warnings();
    return std::move(m_result);
  }

 private:
  void LookAtInput(const formats::Mesh& mesh) {
    m_result.input = Summarise(mesh);
    m_box = BoxOf(mesh);
  }

  Verdict Take(const std::string& file) {
    const formats::Curves curves = formats::ReadCurves(file);
    formats::CurvesMeasures measures = formats::MeasureCurves(curves);
    m_target->Put(file, curves, m_options.units);
    m_result.outputFormat = m_target->FormatName(curves.variant);
    m_result.heightsLost = m_target->LosesHeightsOf(curves);
    m_result.curves = std::move(measures);
    return {};
  }

  const OutlineOperation& m_operation;
  const Options& m_options;
  OperationRun m_run;
  std::optional<CurvesTarget> m_target;
  formats::Box m_box{};
  OutlineResult m_result;
};

void AddCurves(Report& report, const formats::CurvesMeasures& curves, const Options& options) {
  const std::string unit = std::string(" ") + UnitsName(options.units);
  report.Add("curves", curves.curves.size(), "curves");
  report.Add("points", curves.pointsInCurves, "points");
  report.Add("holes", curves.holes, "holes");
  report.Add("length", curves.length, "length", Fixed(curves.length, 3) + unit);
  report.Add("area", curves.area, "area", Fixed(curves.area, 3) + unit + "^2");
  if (curves.curves.empty()) report.AddLine("there is no outline");
}

}  // namespace

OutlineResult RunOutlineOperation(const OutlineOperation& operation, const Options& options) {
  return Run(operation, options).Result();
}

void AddOutlineResult(Report& report, const OutlineOperation& operation,
                      const OutlineResult& result, const Options& options) {
  report.Add("input", operation.input, "input",
             operation.input + " (" + formats::NameOf(result.inputFormat) + ")");
  const std::string format = result.curves ? " (" + result.outputFormat + ")" : "";
  report.Add("output", operation.output, "output", operation.output + format);
  if (result.curves) report.Add("output_format", result.outputFormat);
  AddRun(report, result.outcome, result.verdict);
  AddSummary(report, "in", result.input, options);
  if (result.curves) AddCurves(report, *result.curves, options);
  if (result.heightsLost) report.AddLine("the drawing is flat: the points' z is lost");
  const bool written = result.verdict.code == kSuccess;
  report.Add("files_written", written ? nlohmann::ordered_json::array({operation.output})
                                      : nlohmann::ordered_json::array());
  AddRemarks(report, result.warnings);
}

}  // namespace host
