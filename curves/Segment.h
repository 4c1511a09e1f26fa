#pragma once

/// A segment as the channel receives and the file holds it: the numbers of its points, one-based.
struct Segment {
  int start;
  int end;
};

/// The most points that a channel takes; their numbers are 1 to this.
constexpr int kMostPoints = 60000;
