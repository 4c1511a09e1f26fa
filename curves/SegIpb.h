#pragma once

/// A segment while segments are joined into curves. Point numbers are one-based.
struct SegIpb {
  int start;
  int end;
  int segment;  // its position in the channel's array, from 0
  bool open;    // whether the list that it heads may still start a curve; true at first
};
