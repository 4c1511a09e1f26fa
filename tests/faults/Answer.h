#pragma once

#include <string>

#include "support/JobFiles.h"

namespace faults {

/// The kernels' answer: 501 vertices and as many facets, one more than a block of a surface channel
/// takes.
support::Surface Answer();

/// What a file of it holds behind the text of its header: the vertices and facets of the newest
/// block, the last of each, come first.
std::string AnswerBody();

/// The whole file.
std::string AnswerFile();

}  // namespace faults
