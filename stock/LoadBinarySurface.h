#pragma once

struct SurfaceTransfer;

/// Plays a binary surface file into a channel: Reset, vertices, triangles, Close.
/// `mode` 0 plays everything; `colourCount` and `colours` are not looked at. `mode` 1 keeps the
/// triangles whose colour is in `colours` (`colourCount` entries; a colour listed twice passes its
/// triangles twice) and the vertices of all triangles. Any other mode passes nothing on between
/// Reset and Close.
/// False when the file cannot be opened, ends early, has no vertex or no triangle, names a vertex
/// that is not there, or when there is no memory; the channel then keeps what it has received and
/// is not closed.
/// An exception of the channel passes through and leaves the open file and the handle array behind.
bool LoadBinarySurface(const char* fileName, SurfaceTransfer* channel, short mode,
                       unsigned short colourCount, const unsigned char* colours);
