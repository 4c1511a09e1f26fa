#pragma once

#include "curves/OriginShift.h"
#include "curves/ShiftedFiles.h"
#include "platform/QZCore.h"

/// An operation's arguments that the origin shift is about. The box is moved while the kernel runs
/// and moved back; the distance is a copy.
struct ShiftedJob {
  const char* inputFile;   // a binary surface file
  const char* outputFile;  // what the kernel's run makes
  double distance;
  double* boxMin;
  double* boxMax;
};

/// Calls run(distance), with input file and box moved near the origin when they need it, and
/// everything moved back afterwards, whatever the result; restoreOutput(scaled, s, c) does that for
/// the output. Both files only where the host sees them, and a file that cannot be rewritten goes
/// unnoticed. What `run` throws passes through and leaves input and box where they are then.
/// `*result` becomes what `run` returns, before anything is moved back: what is thrown behind the
/// run does not make it undone.
template <class Run, class RestoreOutput>
void RunShifted(ShiftedJob job, const double* c, unsigned char* result, Run run,
                RestoreOutput restoreOutput) {
  double s = 1.0;
  const bool scaled = ChooseScale(job.distance, job.boxMin, job.boxMax, &s);
  if (!scaled && !IsFarFromOrigin(c)) {
    *result = run(job.distance);
    return;
  }

  ApplyShift(c, scaled, s, job.boxMin, job.boxMax, &job.distance);
  if (file_exists(job.inputFile, 0) != 0) ShiftSurfaceFile(scaled, s, c, job.inputFile);
  *result = run(job.distance);
  if (file_exists(job.outputFile, 0) != 0) restoreOutput(scaled, s, c);
  if (file_exists(job.inputFile, 0) != 0) RestoreSurfaceFile(scaled, s, c, job.inputFile);
  RestoreShift(scaled, s, c, &job.distance, job.boxMin, job.boxMax);
}
