#pragma once

/// Writes the facets of chosen colours of one binary surface file to another. `colours` has
/// `colourCount` entries; a colour listed twice writes its facets twice, and a count above 32767
/// selects nothing. The vertices of all facets are kept, whatever the colours.
///
/// True when the input has been played to its end. The output is created and truncated before the
/// input is opened, so a failure leaves nothing but its header, and an input that is the output is
/// lost. An output that cannot be written goes unnoticed: the result is true and there is no file.
bool FilterStockByColor(const char* inputFile, const char* outputFile, unsigned short colourCount,
                        const unsigned char* colours);
