// The comparison of a cube with another one by two bands.

#include "addin/exports.h"
#include "faults/Answer.h"
#include "faults/StockModel.h"
#include "faults/Trials.h"
#include "support/CompareJobTest.h"

namespace faults {
namespace {

constexpr const char* kPart = "job\\PartFileToCompare.iff";
constexpr const char* kStock = "job\\StockModelOutput.tmp";
constexpr const char* kResults = "job\\CompareResults.iff";

class CompareModel : public StockModel {
 public:
  CompareModel(const World& before, const Injection& injection, const Counted& counted,
               bool writesEveryStatus)
      : StockModel(before, injection, counted) {
    m_writesEveryStatus = writesEveryStatus;
  }

 protected:
  void Act() override {
    Frame([&] { return Driver(); });
  }

 private:
  bool Driver() {
    m_copies = CopyBase();
    if (Exists(kResults)) Remove(kResults);
    const bool isCompared = CompareInputs();
    // As soon as there are results, however incomplete, a copy of the part is the verdict.
    return Exists(kResults) ? Copy(kPart, m_copies + "TmpSaveCompareResults.iff") : isCompared;
  }

  bool CompareInputs() {
    if (!Exists(kPart)) return true;
    if (!Exists(kStock)) return false;
    return TakeInputs() && RunCompare();
  }

  bool TakeInputs() {
    Copy(kPart, m_copies + "TmpSaveComparePart.iff");
    // One status for three: a host that writes it at every open has only the last one count.
    bool status = Copy(kStock, m_copies + "TmpSaveCompareStock.iff");
    const std::string text = m_copies + "TmpSaveCompareInfo.txt";
    const bool hasText = OpenForWriting(text, &status);
    if (!OpenForReading(&status) || !status) return false;
    if (!Call("fread") || !Memory() || !Memory()) return false;
    Call("m_fclose");
    if (hasText) Write(text, support::TwoBandsText(), true);
    Call("m_fclose");
    return true;
  }

  bool RunCompare() {
    if (!Memory()) return false;
    Surface results(*this, kResults, AnswerBody());
    results.Create();
    try {
      if (!Memory()) return false;
      Kernel("IFSweep()");
      Kernel("OpenCompareSurfaceChannel");
      Kernel("OpenCompareSurfaceChannel");
      if (!Load(kPart, kPart, "part") || !Load(kStock, kStock, "stock")) return false;
      Kernel("Compare");
      Play(results);
      Kernel("Compare ends");
      return true;
    } catch (const Stop&) {
      return false;
    }
  }

  std::string m_copies;
};

class CompareTrial : public Trial {
 public:
  explicit CompareTrial(support::TestHost::StatusWrites statusWrites) {
    host.statusWrites = statusWrites;
    Put("CompareResults.iff", "what an earlier job left");
    for (const char* name :
         {"ComparePart.iff", "CompareStock.iff", "CompareInfo.txt", "CompareResults.iff"}) {
      support::WriteWholeFile(InKeep("Job1_TmpSave" + std::string(name)), "an earlier copy");
    }
  }

  std::unique_ptr<Model> ModelFor(const World& before, const Injection& injection,
                                  const Counted& counted) const override {
    return std::make_unique<CompareModel>(
        before, injection, counted,
        host.statusWrites == support::TestHost::StatusWrites::kOnEveryCall);
  }

 protected:
  std::map<std::string, std::string> Inputs() const override {
    return {{"PartFileToCompare.iff", support::BinarySurfaceBytes(support::Cube(3, 1))},
            {"StockModelOutput.tmp", support::BinarySurfaceBytes(support::Cube(4, 5))},
            {"TmpCompareInfo.tmp", support::CompareInfoBytes(support::TwoBands())}};
  }

  void Export() override {
    bool succeeded = true;
    CString workDir = WorkDir();
    CallWith(&succeeded,
             [&] { qztutlSweepPartStockCompare(std::move(workDir), &progress, &succeeded); });
  }
};

}  // namespace

std::unique_ptr<Trial> MakeCompareTrial() {
  return std::make_unique<CompareTrial>(support::TestHost::StatusWrites::kOnEveryCall);
}

std::unique_ptr<Trial> MakeCompareTrialOfAQuietHost() {
  return std::make_unique<CompareTrial>(support::TestHost::StatusWrites::kOnlyOnFailure);
}

}  // namespace faults
