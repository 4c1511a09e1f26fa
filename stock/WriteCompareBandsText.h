#pragma once

#include "platform/SystemTypes.h"

struct CompareBands;

/// Writes the bands in words, a line for each value. `stream` is open for writing text and stays
/// the caller's. Nothing is reported: nobody but a reader with a question misses the text.
void WriteCompareBandsText(const CompareBands& bands, FILE* stream);
