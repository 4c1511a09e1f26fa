// The sweep of two paths: one of three axes with a standard tool and so many positions that its
// text takes several blocks, one of five axes with a custom tool.

#include "addin/exports.h"
#include "faults/StockModel.h"
#include "faults/Trials.h"
#include "support/FileBuilder.h"

namespace faults {
namespace {

constexpr const char* kPaths = "job\\BinaryPaths.tmp";
constexpr const char* kInput = "job\\StockModelInput.tmp";
constexpr const char* kOutput = "job\\StockModelOutput.tmp";

std::vector<support::Path> Paths() {
  support::Path plain;
  plain.positions.clear();
  for (int i = 0; i < 1300; ++i) {
    plain.positions.insert(plain.positions.end(), {0.25 * i, -0.5 * (i % 9), 10.0});
  }
  support::Path custom;
  custom.pathType = 2;
  custom.colour = 200;
  custom.tool =
      support::CustomBlock{{{1, {5, 0, 45, 0.5}, true, false}, {2, {2.5, 45, 90, 0}, false, true}},
                           {{3, {12, 1.5, 0.25}, true}}};
  custom.positions = {0, 0, 10, 0, 0, 1, 20, 0, 10, 0, 0.5, 0.5};
  return {plain, custom};
}

// A path in the interchange file, cut where the combination can end.
struct PathPieces {
  explicit PathPieces(const support::Path& path) {
    constexpr std::size_t kFileHead = 16 + 4 + 4;
    constexpr std::size_t kHead = 4 + 4 + 3 * 8 + 9 * 8 + 3 * 8 + 4;
    const std::string record = support::InterchangeBytes({path}).substr(kFileHead);
    std::size_t next = 0;
    const auto take = [&](std::size_t size) {
      next += size;
      return record.substr(next - size, size);
    };
    head = take(kHead);
    if (const auto* custom = std::get_if<support::CustomBlock>(&path.tool)) {
      isCustom = true;
      head += take(4 + 4);
      arcs = take(custom->arcs.size() * 38);
      lines = take(custom->lines.size() * 29);
    } else {
      head += take(6 * 8);
    }
    cuts = take(4);
    count = take(4);
    positions = record.substr(next);
  }

  bool isCustom = false;
  std::string head;  // up to a standard tool's block, or a custom tool's two counts
  std::string arcs;
  std::string lines;
  std::string cuts;
  std::string count;
  std::string positions;
};

std::string Int32(std::size_t value) {
  return support::FileBuilder().Int32(static_cast<std::int64_t>(value)).Bytes();
}

class SweepModel : public StockModel {
 public:
  using StockModel::StockModel;

 protected:
  void Act() override {
    Frame([&] { return Driver(); });
  }

 private:
  bool Driver() {
    if (!Combine() || !ConvertPaths(m_combined)) return false;
    const std::string copies = CopyBase();
    Save("job\\BinaryPaths.txt", copies + "TmpSaveBinaryPaths.txt");
    Save(kPaths, copies + "TmpSaveBinaryPaths.tmp");
    Save(kInput, copies + "TmpSaveInputStock.iff");
    // Without a stock what an earlier job has left decides.
    if (!Exists(kInput)) return Exists(kOutput);
    if (Exists(kOutput)) Remove(kOutput);
    const bool isWithoutError = RunSweep({kInput, kInput, kOutput, true});
    Save(kOutput, copies + "TmpSaveOutputStock.iff");
    return isWithoutError && Exists(kOutput);
  }

  void Save(const std::string& file, const std::string& copy) {
    if (Exists(file)) Copy(file, copy);
  }

  bool Combine() {
    if (!OpenForWriting(kPaths)) return false;
    bool isWhole = true;
    {
      Pending out = PendingFor(kPaths);
      out.Put("binary toolpaths" + Int32(0));
      std::size_t count = 0;
      while (Exists("job\\TmpPathInfo" + std::to_string(count) + ".tmp")) ++count;
      out.Put(Int32(count));
      for (std::size_t i = 0; i < count && isWhole; ++i) {
        m_combined.push_back(Paths()[i]);
        isWhole = Append(PathPieces(m_combined.back()), out);
      }
      isWhole = isWhole && Flush(out);
    }
    Call("m_fclose");
    return isWhole;
  }

  bool Append(const PathPieces& path, Pending& out) {
    if (!OpenForReading() || !Call("fread")) return false;
    out.Put(path.head);
    if (path.isCustom) {
      if (!Memory()) return false;
      out.Put(path.arcs);
      if (!Memory()) return false;
      out.Put(path.lines);
    }
    out.Put(path.cuts);
    if (!Flush(out) || !Call("fgetpos")) return false;
    const std::size_t place = now.files[kPaths].size();
    out.Put(Int32(0) + path.positions);
    Call("m_fclose");
    // There and back again; only then is the count more than the 0 before the positions.
    return Flush(out) && Call("fgetpos") && Call("fsetpos") &&
           Overwrite(kPaths, place, path.count) && Call("fsetpos");
  }

  std::vector<support::Path> m_combined;
};

class SweepTrial : public Trial {
 public:
  SweepTrial() {
    Put("StockModelOutput.tmp", "what an earlier job left");
    support::WriteWholeFile(InKeep("Job1_TmpSaveOutputStock.iff"), "an earlier copy");
  }

  std::unique_ptr<Model> ModelFor(const World& before, const Injection& injection,
                                  const Counted& counted) const override {
    return std::make_unique<SweepModel>(before, injection, counted);
  }

 protected:
  std::map<std::string, std::string> Inputs() const override {
    std::map<std::string, std::string> inputs;
    int number = 0;
    for (const support::Path& path : Paths()) {
      inputs["TmpPathInfo" + std::to_string(number++) + ".tmp"] = support::PathInfoBytes(path);
    }
    inputs["StockModelInput.tmp"] = support::BinarySurfaceBytes(support::Cube(4, 7));
    return inputs;
  }

  void Export() override {
    bool succeeded = true;
    CString workDir = WorkDir();
    CallWith(&succeeded, [&] {
      qztutlSweepMultipleToolpathsFromStock(std::move(workDir), &progress, &succeeded);
    });
  }
};

}  // namespace

std::unique_ptr<Trial> MakeSweepTrial() { return std::make_unique<SweepTrial>(); }

}  // namespace faults
