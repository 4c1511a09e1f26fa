#pragma once

class BlockReader;
class BlockWriter;

/// Copies the block of a custom tool from a per-path file, where the pieces lie as parallel arrays,
/// to the interchange file, where they lie piece after piece. False when the input ends early, the
/// tool has no pieces, there is no memory or the output does not take it; what was complete before
/// that has been written.
bool CopyCustomTool(BlockReader* in, BlockWriter* out);
