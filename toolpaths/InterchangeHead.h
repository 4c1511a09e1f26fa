#pragma once

class BlockWriter;

/// Writes what every interchange file begins with: the delimiter and the format version.
bool WriteInterchangeHead(BlockWriter* out);
