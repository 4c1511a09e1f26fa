#include "curves/SilhouetteBoundary.h"

#include "curves/RunShifted.h"
#include "curves/RunSilhouette.h"

void SilhouetteBoundary(char* inputFile, char* outputFile, double distance, double* boxMin,
                        double* boxMax, unsigned char* result) {
  *result = 0;
  double centre[3];
  ShiftCentre(boxMin, boxMax, centre);
  RunShifted(
      {inputFile, outputFile, distance, boxMin, boxMax}, centre, result,
      [&](double moved) { return RunSilhouette(inputFile, outputFile, moved); },
      [&](bool scaled, double s, const double* c) {
        // The kernel writes the tree variant.
        RestoreCurveFile(1, scaled, s, c, outputFile);
      });
}
