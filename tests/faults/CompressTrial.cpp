// The compression of a cube whose highest vertex is its fifth.

#include "addin/exports.h"
#include "faults/StockModel.h"
#include "faults/Trials.h"

namespace faults {
namespace {

constexpr const char* kInput = "in.iff";
constexpr const char* kInputFile = "job\\in.iff";
constexpr const char* kOutput = "job\\out.iff";
constexpr const char* kPaths = "job\\BinaryPaths.tmp";
constexpr double kTolerance = 0.25;

// Ten tolerances above the vertex, in millimetres.
support::Path HarmlessPath() {
  support::Path path;
  path.colour = 0;
  path.sweepToler = 0.025;
  path.pathToler = 0.025;
  path.compressToler = kTolerance;
  path.tool = support::ConvexBlock{{0, 25.4, 0, 90, 0, 0}};
  path.positions = {0, 0, 6.5, 0, 0, 6.5};
  return path;
}

class CompressModel : public StockModel {
 public:
  using StockModel::StockModel;

 protected:
  void Act() override {
    Frame([&] { return Driver(); });
  }

 private:
  bool Driver() {
    if (Exists(kOutput)) Remove(kOutput);
    if (WritePath() && !RunSweep({kInput, kInputFile, kOutput, false})) return false;
    return Exists(kOutput);
  }

  bool WritePath() {
    if (!OpenForReading() || !Call("fread")) return false;
    Call("m_fclose");
    if (!OpenForWriting(kPaths)) return false;
    bool isWhole = false;
    {
      Pending out = PendingFor(kPaths);
      out.Put(support::InterchangeBytes({HarmlessPath()}));
      isWhole = Flush(out);
    }
    Call("m_fclose");
    return isWhole && ConvertPaths({HarmlessPath()});
  }
};

class CompressTrial : public Trial {
 public:
  CompressTrial() { Put("out.iff", "what an earlier job left"); }

  std::unique_ptr<Model> ModelFor(const World& before, const Injection& injection,
                                  const Counted& counted) const override {
    return std::make_unique<CompressModel>(before, injection, counted);
  }

 protected:
  std::map<std::string, std::string> Inputs() const override {
    return {{kInput, support::BinarySurfaceBytes(support::Cube(4, 7))}};
  }

  void Export() override {
    bool succeeded = true;
    CString workDir = WorkDir();
    CString input = kInput;
    CString output = Named("out.iff").c_str();
    CallWith(&succeeded, [&] {
      qztutlStockModelCompress(std::move(workDir), std::move(input), std::move(output), &progress,
                               kTolerance, &succeeded);
    });
  }
};

}  // namespace

std::unique_ptr<Trial> MakeCompressTrial() { return std::make_unique<CompressTrial>(); }

}  // namespace faults
