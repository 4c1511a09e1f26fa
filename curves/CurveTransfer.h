#pragma once

/// A channel for curves that a producer knows only as loose segments: Reset, then points and
/// segments between them, then Close. Points go in before the segments that use them; the
/// producer's buffers may be reused after each call.
/// It has no virtual destructor, and must not get one: that would shift the slots. An owner
/// destroys a channel through its own type.
struct CurveTransfer {
  /// New curves begin; the points and segments that came before are forgotten.
  virtual int Reset() = 0;
  /// What lies between the two belongs together. A channel may take no notice.
  virtual int BeginGroup() { return 0; }
  virtual void EndGroup() {}
  /// `xyz`: three doubles. Returns the point's handle, through which its number in the order
  /// received, from 0, can be read; null when the channel refuses the point. The channel owns what
  /// the handle points to.
  virtual const int* AddPoint(const double* xyz) = 0;
  /// A straight segment between two points, by the handles that AddPoint of the same channel
  /// returned. Null when it could not be taken.
  virtual void* AddSegment(const int* from, const int* to) = 0;
  /// The curves are complete; the channel acts on them. 0 when that failed.
  virtual int Close() = 0;
};
