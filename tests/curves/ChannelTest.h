#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "curves/CurveXferQZ.h"
#include "support/CurveFile.h"
#include "support/TempDirectory.h"
#include "support/TestHost.h"

/// A channel's file "curves.tmp", with the directory known to the host as "job". The host's
/// tolerance is 0.1, so that a curve counts from a sum of squares above 1 on.
class ChannelTest : public ::testing::Test {
 protected:
  ChannelTest();
  ~ChannelTest() override;

  std::string Name() const { return support::AddinSpelling(directory.Path()) + "curves.tmp"; }
  std::string Bytes() const { return support::ReadWholeFile(directory.Path() / "curves.tmp"); }

  support::TempDirectory directory;
  support::TestHost host;

 private:
  double m_tolerance;
};

using Segments = std::vector<std::pair<std::int32_t, std::int32_t>>;
using Points = std::vector<std::array<double, 3>>;

/// `count` points two apart along X.
Points Row(int count);

/// Plays points and segments in; everything must be taken.
void Play(CurveTransfer* channel, const support::Outline& outline);

/// The same from Reset to Close; returns what Close does.
int PlayAndClose(CurveTransfer* channel, const support::Outline& outline);
