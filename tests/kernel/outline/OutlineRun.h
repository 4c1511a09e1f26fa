#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "RecordingDialog.h"
#include "curves/CurveTransfer.h"
#include "formats/Mesh.h"

namespace outline_test {

struct Point {
  double x, y;
};
using Curve = std::vector<Point>;

/// Curves as a file or a channel holds them.
struct Curves {
  std::vector<Curve> curves;
  std::vector<double> heights;  // of all points, the third coordinate
};

struct SilhouetteResult {
  std::string output;  // the file's bytes
  Curves curves;
  std::vector<std::string> names;  // all that lies in the run's directory afterwards
  bool stopped = false;            // the dialog threw
  kernel_test::RecordingDialog dialog;
};

/// What the output file holds before the run.
extern const std::string kOlderOutput;

SilhouetteResult RunSilhouette(const formats::Mesh& mesh, double distance = 0, int throwAt = 0);
SilhouetteResult RunSilhouetteOnBytes(const std::string& bytes, double distance = 0);

/// Reads a file of tree curves by its bytes. Fails the test where it is not as the format says, or
/// a curve does not use points of its own in their order.
Curves ReadTreeCurves(const std::string& bytes);

/// Takes curves up to a number of points; tells `calls` what came.
struct CurveRecorder : CurveTransfer {
  int Reset() override;
  const int* AddPoint(const double* xyz) override;
  void* AddSegment(const int* from, const int* to) override;
  int Close() override;

  std::size_t mostPoints = 60'000;
  std::vector<std::array<double, 3>> points;
  std::vector<std::array<int, 2>> segments;
  int resets = 0, closes = 0;

 private:
  std::vector<std::unique_ptr<int>> m_numbers;
};

struct SpinResult {
  CurveRecorder channel;
  Curves curves;
  bool stopped = false;
  kernel_test::RecordingDialog dialog;
};

SpinResult RunSpin(const formats::Mesh& mesh, double distance = 0, int throwAt = 0,
                   std::size_t mostPoints = 60'000);

/// Positive counter-clockwise.
double Area(const Curve& curve);
double Area(const Curves& curves);
/// How often all curves together wind around the point.
int Winding(const Curves& curves, const Point& point);
/// From the point to the nearest place on a curve.
double DistanceTo(const Curves& curves, const Point& point);

/// Fails the test unless the curve runs through just these points, whichever comes first.
void ExpectCurve(const Curve& curve, const Curve& expected, double within = 0);

/// Fails the test when there was an error or a warning.
void ExpectSilent(const kernel_test::RecordingDialog& dialog);

void Add(formats::Mesh& mesh, const formats::Mesh& other);
formats::Mesh Reversed(formats::Mesh mesh);
/// Every facet with three vertices of its own.
formats::Mesh Soup(const formats::Mesh& mesh);
formats::Mesh Mapped(formats::Mesh mesh,
                     const std::function<std::array<double, 3>(const std::array<double, 3>&)>& map);
formats::Mesh Moved(const formats::Mesh& mesh, double factor, const std::array<double, 3>& by);

/// A closed surface around the z axis whose profile (r, z) is given from the top down, the first
/// and the last point on the axis; its first meridian lies in the plane y = 0.
formats::Mesh Turned(const Curve& profile, int round);
formats::Mesh Ball(double radius, int round);
/// Around the z axis.
formats::Mesh Torus(double around, double across, int round, int sides);

}  // namespace outline_test
