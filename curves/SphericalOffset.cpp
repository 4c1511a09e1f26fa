#include "curves/SphericalOffset.h"

#include "curves/RunShifted.h"
#include "curves/RunSphericalOffset.h"

void SphericalOffset(const char* inputFile, const char* outputFile, double distance,
                     double unscaledValue, double* boxMin, double* boxMax, unsigned char* result) {
  *result = 0;
  double centre[3];
  ShiftCentre(boxMin, boxMax, centre);
  RunShifted(
      {inputFile, outputFile, distance, boxMin, boxMax}, centre, result,
      [&](double moved) { return RunSphericalOffset(inputFile, outputFile, moved, unscaledValue); },
      [&](bool scaled, double s, const double* c) {
        RestoreSurfaceFile(scaled, s, c, outputFile);
      });
}
