// The outlines and the offset of a cube, and the silhouette of a surface that is rewritten in more
// than one block.

#include "addin/exports.h"
#include "faults/Answer.h"
#include "faults/OutlineModel.h"
#include "faults/Trials.h"
#include "support/CurveFile.h"

namespace faults {
namespace {

constexpr std::size_t kTreeHeaderSize = 18;
const std::vector<std::pair<std::int32_t, std::int32_t>> kCurve = {{4, 1}, {1, 2}, {2, 3}, {3, 4}};

// As a kernel or a channel makes it of the square that these kernels find.
std::string CurvesFile() {
  return support::CurveFileBytes({1, support::Square(8).points, 4, {kCurve}});
}
std::string PointsFile() { return support::CurveFileBytes({1, support::Square(8).points, 4, {}}); }

class SilhouetteModel : public OutlineModel {
 public:
  using OutlineModel::OutlineModel;

 protected:
  std::size_t HeaderSize() const override { return kTreeHeaderSize; }

  int RunKernel() override {
    return InDirectory([&] { return Run(); });
  }

 private:
  int Run() {
    if (!Memory()) return 1;
    Kernel("IFSilhouette()", true);
    try {
      now.files[kOutput] = support::CurveFileHeader(1);
      Kernel("silhouette.Run");
      now.files[kOutput] = CurvesFile();
      Kernel("silhouette.Run ends");
    } catch (const Stop& stop) {
      // The user's stop keeps what there is.
      if (stop.byUser) return 0;
      if (Exists(kOutput)) Remove(kOutput);
    }
    return 1;
  }
};

// The channel of curves: its file as far as it has come.
class SpinModel : public OutlineModel {
 public:
  using OutlineModel::OutlineModel;

 protected:
  Triple Centre() const override { return {10 * 0.5 + 5 * 0.04, 0, 0}; }
  std::size_t HeaderSize() const override { return kTreeHeaderSize; }

  int RunKernel() override {
    m_isOpen = Call("m_fopen");
    if (m_isOpen) now.files[kOutput] = "";
    m_takesPoints = m_isOpen && Write(kOutput, support::CurveFileHeader(1)) && Memory();
    const int flag = RunOnLoaded("IFSpinsil()", [&] {
      Kernel("spinsil.Run");
      PlayCurves();
      Kernel("spinsil.Run ends");
    });
    if (m_isOpen) Call("m_fclose");
    return flag;
  }

 private:
  void PlayCurves() {
    Kernel("output.Reset");
    Kernel("output.BeginGroup");
    for (const char* call : {"output.AddPoint", "output.AddSegment"}) {
      Kernel(call);
      // The first one takes memory for many.
      if (!m_takesPoints || !Memory()) Fatal("The curves do not fit.");
      Kernel(call);
    }
    Kernel("output.EndGroup");
    Kernel("output.Close");
    Close();
  }

  // Goes on until something fails, which the kernel does not mind.
  void Close() {
    const std::size_t points = PointsFile().size();
    if (!Write(kOutput, PointsFile().substr(kTreeHeaderSize)) || !Call("fflush")) return;
    // Three arrays for the lists, four for their queues, one each for the index, the table of
    // curves, the curve being joined and the open ends; and one for the only curve.
    for (int i = 0; i < 12; ++i) {
      if (!Memory()) return;
    }
    if (Write(kOutput, CurvesFile().substr(points))) Call("fflush");
  }

  bool m_isOpen = false;
  bool m_takesPoints = false;
};

class OffsetModel : public OutlineModel {
 public:
  using OutlineModel::OutlineModel;

 protected:
  std::size_t HeaderSize() const override { return kSurfaceHeaderSize; }

  int RunKernel() override {
    Surface output(*this, kOutput, AnswerBody());
    output.Create();
    return RunOnLoaded("IFSphoffset()", [&] {
      Kernel("sphoffset.Run");
      Play(output);
      Kernel("sphoffset.Run ends");
    });
  }
};

class OutlineTrial : public Trial {
 public:
  OutlineTrial() {
    host.metric = false;
    Put("out.tmp", "what an earlier job left");
  }

 protected:
  std::map<std::string, std::string> Inputs() const override {
    return {{"in.iff", support::BinarySurfaceBytes(support::Cube(4, 7))}};
  }
  std::array<double, 6> Box() const override { return kBox; }

  double* BoxMin() { return m_box.data(); }
  double* BoxMax() { return m_box.data() + 3; }

  std::string m_input = Named("in.iff");
  std::string m_output = Named("out.tmp");
};

class SilhouetteTrial : public OutlineTrial {
 public:
  std::unique_ptr<Model> ModelFor(const World& before, const Injection& injection,
                                  const Counted& counted) const override {
    return std::make_unique<SilhouetteModel>(before, injection, counted);
  }

 protected:
  std::map<std::string, std::string> Inputs() const override {
    support::Surface surface;
    for (int i = 0; i < 2100; ++i) surface.vertices.push_back({0.25 * i, 1.5, -0.125 * i});
    surface.facets = {{{1, 2, 3}, 7}};
    return {{"in.iff", support::BinarySurfaceBytes(surface)}};
  }

  void Work(const std::string& kernelCall) override {
    if (kernelCall == "silhouette.Run") Put("out.tmp", support::CurveFileHeader(1));
    if (kernelCall == "silhouette.Run ends") Put("out.tmp", CurvesFile());
  }

  void Export() override {
    unsigned char result = 77;
    CallWith(&result, [&] {
      qztutl_silbndy(m_input.data(), m_output.data(), kDistance, BoxMin(), BoxMax(), &result);
    });
  }
};

class SpinTrial : public OutlineTrial {
 public:
  std::unique_ptr<Model> ModelFor(const World& before, const Injection& injection,
                                  const Counted& counted) const override {
    return std::make_unique<SpinModel>(before, injection, counted);
  }

 protected:
  void Export() override {
    unsigned char result = 77;
    CallWith(&result, [&] {
      qztutlSpinSilBndy(m_input.c_str(), 1, m_output.c_str(), kDistance, BoxMin(), BoxMax(),
                        &result);
    });
  }
};

class OffsetTrial : public OutlineTrial {
 public:
  std::unique_ptr<Model> ModelFor(const World& before, const Injection& injection,
                                  const Counted& counted) const override {
    return std::make_unique<OffsetModel>(before, injection, counted);
  }

 protected:
  void Export() override {
    unsigned char result = 77;
    CallWith(&result, [&] {
      qztutlSphericalOffsetTris(m_input.c_str(), m_output.c_str(), kDistance, 12.5, BoxMin(),
                                BoxMax(), &result);
    });
  }
};

}  // namespace

std::unique_ptr<Trial> MakeSilhouetteTrial() { return std::make_unique<SilhouetteTrial>(); }
std::unique_ptr<Trial> MakeSpinTrial() { return std::make_unique<SpinTrial>(); }
std::unique_ptr<Trial> MakeOffsetTrial() { return std::make_unique<OffsetTrial>(); }

}  // namespace faults
