// Every export on a job that uses all it can: run once to count what it asks for, then once for
// each of these calls with that one going wrong. Each time flag, files, directory, streams, memory
// and box must be what the operation's description (the Model) says, and the next run must work.

#include <algorithm>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "faults/Tally.h"
#include "faults/Trials.h"

namespace {

using faults::Injection;
using faults::Model;
using faults::Trial;
using faults::Way;
using faults::World;

// What is left when an exception passes through the loader, and when a file has been opened to be
// rewritten and that fails.
constexpr const char* kHandles = "an array of handles";

struct Operation {
  const char* name;
  std::unique_ptr<Trial> (*make)();
  /// All that may be left behind, and each of them is by some fault: streams by unit and file, and
  /// memory. Anything else is an error.
  std::set<std::string> leftovers;
};

void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

std::vector<Way> WaysFor(const std::string& function) {
  static const std::map<std::string, std::vector<Way>> ways = {
      {faults::kCallback, {Way::kFatal, Way::kForeign}},
      {"IsCancelled", {Way::kStops, Way::kForeign}},
      {"KeyPress", {Way::kStops, Way::kForeign}},
      {"LoadMessage", {Way::kFails, Way::kForeign}},
      {"m_fopen", {Way::kFails, Way::kForeign}},
      {"m_fopen_hl", {Way::kFails, Way::kForeign}},
      {"file_exists", {Way::kFails, Way::kForeign}},
      {"RegOpen", {Way::kFails, Way::kForeign}},
      {"GetStringValue", {Way::kFails, Way::kForeign}},
      {"ShowProgress", {Way::kForeign}},
      {"UpdateStatusBarText", {Way::kForeign}},
      {"clearprompt", {Way::kForeign}},
      {"cleartext", {Way::kForeign}},
      {"fwrite", {Way::kFails, Way::kFull, Way::kHalfFull}},
      {"CopyFileA", {Way::kFails, Way::kFull}},
      {"m_fclose", {}}};  // returns nothing
  const auto found = ways.find(function);
  return found == ways.end() ? std::vector<Way>{Way::kFails} : found->second;
}

std::vector<std::string> WithoutTexts(const faults::Counted& calls) {
  std::vector<std::string> names;
  for (const auto& call : calls) {
    if (call.function != faults::kTextMemory) names.push_back(call.function);
  }
  return names;
}

class FaultsTest : public ::testing::TestWithParam<Operation> {
 protected:
  std::unique_ptr<Trial> Make() const { return GetParam().make(); }

  /// Runs a job in which nothing reports and nothing goes wrong: which of the kernel's calls are to
  /// report, and what there is before a run.
  void LookAtJob() {
    const std::unique_ptr<Trial> trial = Make();
    m_before = trial->PutInputs(trial->Now());
    trial->Run({}, {});
    m_reporting = faults::ReportingCalls(trial->KernelCalls());
  }

  /// Runs the trial in the world that is there and returns what tells the outcome from the model's.
  std::string RunAgainstModel(Trial& trial, const World& before, const Injection& injection) {
    trial.Run(injection, m_reporting);
    m_after = trial.Now();
    m_leftovers.insert(m_after.streams.begin(), m_after.streams.end());
    if (m_after.blocks > 0) m_leftovers.insert(kHandles);
    return faults::Differences(trial.ModelFor(before, injection, m_counted)->Run(), m_after);
  }

  std::string Inject(const Injection& injection) {
    const std::unique_ptr<Trial> trial = Make();
    trial->PutInputs({});
    const std::string differences = RunAgainstModel(*trial, m_before, injection);
    trial->GoHome();
    m_after.isAtHome = true;
    m_after.blocks = 0;
    const std::string afterwards = RunAgainstModel(*trial, trial->PutInputs(m_after), {});
    return differences + (afterwards.empty() ? "" : "in the next run:\n" + afterwards);
  }

  World m_before;
  World m_after;
  std::vector<int> m_reporting;
  faults::Counted m_counted;
  std::set<std::string> m_leftovers;
};

TEST_P(FaultsTest, EveryCallGoingWrongInTurnLeavesWhatIsPromisedAndTheNextRunWorks) {
  LookAtJob();
  {
    const std::unique_ptr<Trial> trial = Make();
    trial->PutInputs({});
    trial->Run({}, m_reporting);
    m_counted = trial->Calls();
    const std::unique_ptr<Model> model = trial->ModelFor(m_before, {}, m_counted);
    ASSERT_EQ(faults::Differences(model->Run(), trial->Now()), "");
    ASSERT_EQ(WithoutTexts(m_counted), model->Calls()) << "what is asked for, in this order";
  }
  for (std::size_t place = 1; place <= m_counted.size(); ++place) {
    const faults::CountedCall& call = m_counted[place - 1];
    for (const Way way : WaysFor(call.function)) {
      const std::size_t room = way == Way::kHalfFull ? call.bytes / 2 : 0;
      const std::string differences = Inject({place, way, room});
      faults::TheTally().Count(GetParam().name, call.function, way, differences.empty());
      EXPECT_EQ(differences, "") << call.function << ", call " << place << " of "
                                 << m_counted.size() << ", way " << static_cast<int>(way);
    }
  }
  EXPECT_EQ(m_leftovers, GetParam().leftovers);
}

INSTANTIATE_TEST_SUITE_P(
    Exports, FaultsTest,
    ::testing::Values(Operation{"qztutlSweepMultipleToolpathsFromStock",
                                faults::MakeSweepTrial,
                                {"QZTUTLA2 job\\StockModelInput.tmp", kHandles}},
                      Operation{"qztutlSweepPartStockCompare",
                                faults::MakeCompareTrial,
                                {"QZTUTLA2 job\\PartFileToCompare.iff",
                                 "QZTUTLA2 job\\StockModelOutput.tmp", kHandles}},
                      Operation{"qztutlSweepPartStockCompareOfAQuietHost",
                                faults::MakeCompareTrialOfAQuietHost,
                                {"QZTUTLA2 job\\PartFileToCompare.iff",
                                 "QZTUTLA2 job\\StockModelOutput.tmp", kHandles}},
                      Operation{"qztutlStockModelCompress",
                                faults::MakeCompressTrial,
                                {"QZTUTLA2 in.iff", kHandles}},
                      Operation{"qztutlFilterStockByColor", faults::MakeFilterTrial, {}},
                      Operation{"qztutl_heal", faults::MakeHealTrial, {}},
                      Operation{"qztutl_silbndy",
                                faults::MakeSilhouetteTrial,
                                {"QZTUtlA job\\in.iff", "QZTUtlA job\\out.tmp"}},
                      Operation{"qztutlSpinSilBndy",
                                faults::MakeSpinTrial,
                                {"QZTUTLA2 job\\in.iff", "QZTUtlA job\\in.iff",
                                 "QZTUtlA job\\out.tmp", kHandles}},
                      Operation{"qztutlSphericalOffsetTris",
                                faults::MakeOffsetTrial,
                                {"QZTUTLA2 job\\in.iff", "QZTUtlA job\\in.iff",
                                 "QZTUtlA job\\out.tmp", kHandles}}),
    [](const auto& operation) { return std::string(operation.param.name); });

class PrintTally : public ::testing::Environment {
 public:
  void TearDown() override { std::printf("%s", faults::TheTally().Table().c_str()); }
};

[[maybe_unused]] const ::testing::Environment* const kPrintTally =
    ::testing::AddGlobalTestEnvironment(new PrintTally);

}  // namespace
