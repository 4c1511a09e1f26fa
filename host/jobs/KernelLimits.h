#pragma once

#include <string>

#include "formats/Mesh.h"
#include "formats/ToolpathRecords.h"

namespace host {

/// What today's kernel cannot cut, as the rest of a sentence about the path or the stock; empty for
/// what it can. This is the one place that knows.
std::string WhyPathCannotBeCut(const formats::PathRecord& path);
std::string WhyStockCannotBeCut(const formats::Mesh& stock);

}  // namespace host
