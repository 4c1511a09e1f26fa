#include "formats/programs/ToolTable.h"

#include <nlohmann/json.hpp>

#include "formats/FileError.h"
#include "formats/OpenFile.h"
#include "formats/programs/JsonFields.h"
#include "formats/programs/ToolKinds.h"

namespace formats {
namespace {

bool IsMetric(JsonFields& table) {
  const std::string units = table.Text("units");
  if (units != "mm" && units != "inch") {
    throw JsonFault("units \"" + units + "\" is neither mm nor inch");
  }
  return units == "mm";
}

void AddTool(const nlohmann::json& json, const std::string& where, const LengthScale& scale,
             ToolTable& table) {
  JsonFields fields(json, where);
  const int number = fields.Integer("number", 1, 999'999'999);
  TableTool tool;
  if (fields.Has("name")) {
    tool.name = fields.Text("name");
  }
  if (fields.Has("colour")) {
    tool.colour = fields.Integer("colour", 0, 255);
  }
  tool.tool = ReadToolOfKind(fields, scale);
  fields.Finish();
  if (!table.emplace(number, std::move(tool)).second) {
    throw JsonFault(fields.Where("number") + " " + std::to_string(number) + " is taken already");
  }
}

ToolTable FromJson(const nlohmann::json& json, bool metric) {
  JsonFields fields(json, "");
  const LengthScale scale = ScaleBetween(IsMetric(fields), metric);
  ToolTable table;
  std::size_t index = 0;
  for (const nlohmann::json& tool : fields.Array("tools")) {
    AddTool(tool, "tools[" + std::to_string(index++) + "]", scale, table);
  }
  fields.Finish();
  return table;
}

// The library's message without its own mark ahead: "[json.exception.parse_error.101] ".
std::string Plain(const std::string& message) {
  const std::size_t end = message.find("] ");
  return message.starts_with('[') && end != std::string::npos ? message.substr(end + 2) : message;
}

}  // namespace

ToolTable ParseToolTable(std::string_view text, const std::string& name, bool metric) {
  try {
    return FromJson(nlohmann::json::parse(text), metric);
  } catch (const nlohmann::json::exception& error) {
    throw FileError(name + ": " + Plain(error.what()));
  } catch (const JsonFault& fault) {
    throw FileError(name + ": " + fault.what());
  }
}

ToolTable ReadToolTable(const std::string& path, bool metric) {
  constexpr std::uint64_t kLargest = 16U << 20U;
  if (FileSize(path) > kLargest) {
    throw FileError(path + ": too large for a tool table");
  }
  return ParseToolTable(ReadWholeFile(path), path, metric);
}

}  // namespace formats
