#include "curves/SpinSilhouetteBoundary.h"

#include "curves/RunShifted.h"
#include "curves/RunSpinSilhouette.h"

void SpinSilhouetteBoundary(const char* inputFile, int mode, const char* outputFile,
                            double distance, double* boxMin, double* boxMax,
                            unsigned char* result) {
  *result = 0;
  double centre[3];
  ShiftCentre(boxMin, boxMax, centre);
  // The axis of revolution stays.
  centre[1] = 0.0;
  centre[2] = 0.0;
  RunShifted(
      {inputFile, outputFile, distance, boxMin, boxMax}, centre, result,
      [&](double moved) { return RunSpinSilhouette(inputFile, mode, outputFile, moved); },
      [&](bool scaled, double s, const double* c) {
        RestoreCurveFile(mode, scaled, s, c, outputFile);
      });
}
