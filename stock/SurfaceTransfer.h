#pragma once

/// A channel for a triangle mesh: Reset, then every vertex, then every triangle, then Close.
/// The producer's buffers may be reused after each call, so a channel copies what it is given.
/// It has no virtual destructor, and must not get one: that would shift the slots. An owner
/// destroys a channel through its own type.
struct SurfaceTransfer {
  /// A new mesh begins; what came before is forgotten. Returns 0.
  virtual int Reset() = 0;
  /// `xyz`: three doubles. Returns the vertex's handle, null when there is no memory for it.
  virtual void* AddVertex(const double* xyz) = 0;
  /// Three handles that AddVertex of the same channel returned, counter-clockwise seen from
  /// outside, and the host's colour number. Null when there is no memory for it.
  virtual void* AddTriangle(void* a, void* b, void* c, char colour) = 0;
  /// The mesh is complete; the channel acts on it.
  virtual void Close() = 0;
};
