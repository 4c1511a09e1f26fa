#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "formats/ToolpathRecords.h"

namespace formats {

struct TableTool {
  std::string name;
  Tool tool;                  // never an UndercutTool: those come as pieces
  std::optional<int> colour;  // of what it cuts, 0 to 255
};

using ToolTable = std::map<std::int32_t, TableTool>;  // by number, 1 and up

// A tool table in JSON, as docs/tools.md describes it. `metric`: the tools are wanted in
// millimetres, otherwise in inches. Throws FileError that names the place in the file
// ("tools[2].diameter").
ToolTable ReadToolTable(const std::string& path, bool metric);

// The same for a text from elsewhere; `name` stands for the file in messages.
ToolTable ParseToolTable(std::string_view text, const std::string& name, bool metric);

}  // namespace formats
