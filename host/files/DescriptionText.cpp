#include "host/files/DescriptionText.h"

#include <charconv>

#include "host/files/FileKind.h"

namespace host {

namespace {

using Json = nlohmann::ordered_json;

// Nine digits, whatever the locale; what is not finite has become null.
std::string Number(const Json& value) {
  if (value.is_null()) return "not finite";
  if (!value.is_number_float()) return value.dump();
  char digits[40];
  const auto end = std::to_chars(digits, digits + sizeof digits, value.get<double>(),
                                 std::chars_format::general, 9)
                       .ptr;
  return {digits, end};
}

std::string Box(const Json& box) {
  if (box.is_null()) return "none";
  std::string text;
  for (size_t axis = 0; axis < 3; ++axis) {
    if (axis > 0) text += ", ";
    text += std::string(1, "xyz"[axis]) + " " + Number(box["lower"][axis]) + " .. " +
            Number(box["upper"][axis]);
  }
  return text;
}

// "12 open edges" and so on; nothing for a count of 0.
void AddFault(const Json& topology, const char* key, const char* name, std::string& text) {
  if (topology[key] == 0) return;
  text += ", " + Number(topology[key]) + " " + name;
}

std::string Topology(const Json& topology) {
  std::string text = topology["closed"] == true ? "closed" : "open";
  if (topology["oriented_manifold"] == true) text += ", manifold, consistently oriented";
  text += ", components " + Number(topology["components"]);
  if (!topology["genus"].is_null()) text += ", genus " + Number(topology["genus"]);
  AddFault(topology, "open_edges", "open edges", text);
  AddFault(topology, "holes", "holes", text);
  AddFault(topology, "flipped_edges", "flipped edges", text);
  AddFault(topology, "flipped_facets", "flipped facets", text);
  AddFault(topology, "non_manifold_edges", "non-manifold edges", text);
  AddFault(topology, "pinched_vertices", "pinched vertices", text);
  AddFault(topology, "unused_vertices", "unused vertices", text);
  AddFault(topology, "repeated_vertex_facets", "facets that repeat a vertex", text);
  return text;
}

class Lines {
 public:
  Lines(const Json& description, const std::string& units)
      : m_description(description), m_units(units) {}

  std::vector<std::string> All() {
    AddHeading();
    if (m_description.contains("error")) Add("cannot be read: " + Text(m_description["error"]));
    if (m_description.contains("facets")) AddSurface();
    if (m_description.contains("paths")) AddPaths();
    if (m_description.contains("entries")) AddEntries();
    if (m_description.contains("lines")) Add("lines " + Number(m_description["lines"]));
    if (m_description.contains("copy_of")) Add("copy of " + Text(m_description["copy_of"]));
    return m_lines;
  }

 private:
  static std::string Text(const Json& value) { return value.get<std::string>(); }
  void Add(const std::string& line) { m_lines.push_back("  " + line); }

  void AddHeading() {
    std::string line = Text(m_description["file"]);
    if (m_description.contains("kind")) line += ": " + Text(m_description["kind"]);
    if (m_description.contains("format")) line += " (" + Text(m_description["format"]) + ")";
    if (m_description.contains("bytes")) line += ", " + Number(m_description["bytes"]) + " bytes";
    m_lines.push_back(line);
    if (!m_description.contains("remarks")) return;
    for (const Json& remark : m_description["remarks"]) Add("STALE: " + Text(remark));
  }

  void AddSurface() {
    const Json& d = m_description;
    Add("facets " + Number(d["facets"]) + ", vertices " + Number(d["vertices"]));
    if (d["facets"] == 0) Add("empty: nothing is left");
    Add("box " + Box(d["box"]) + " " + m_units);
    Add("volume " + Number(d["volume"]) + " " + m_units + "^3" +
        (d["topology"]["closed"] == true ? "" : " (not closed: without meaning)"));
    Add("area " + Number(d["area"]) + " " + m_units + "^2");
    Add("topology: " + Topology(d["topology"]));
    if (d.contains("topology_when_joined")) {
      Add("coincident vertices " + Number(d["coincident_vertices"]) +
          "; joined: " + Topology(d["topology_when_joined"]));
    }
    if (d["zero_area_facets"] != 0) Add("zero-area facets " + Number(d["zero_area_facets"]));
    if (d["non_finite_vertices"] != 0) {
      Add("vertices that are not finite " + Number(d["non_finite_vertices"]));
    }
    if (d.contains("trailing_bytes") && d["trailing_bytes"] != 0) {
      Add("bytes after the last facet " + Number(d["trailing_bytes"]));
    }
    for (const Json& colour : d["colours"]) {
      Add("colour " + Number(colour["colour"]) + ": facets " + Number(colour["facets"]) +
          ", area " + Number(colour["area"]) + " " + m_units + "^2");
    }
  }

  void AddPaths() {
    const Json& paths = m_description["paths"];
    if (paths.size() != 1) Add("paths " + std::to_string(paths.size()));
    for (size_t i = 0; i < paths.size(); ++i) AddPath(i, paths[i]);
  }

  void AddPath(size_t number, const Json& path) {
    // A per-path file's number is in its name.
    const bool numbered = m_description["kind"] != NameOf(FileKind::kPath);
    Add((numbered ? "path " + std::to_string(number) + ": " : "") + Number(path["axes"]) +
        "-axis, colour " + Number(path["colour"]) + ", tolerances sweep " +
        Number(path["sweep_tolerance"]) + ", path " + Number(path["path_tolerance"]) +
        ", compression " + Number(path["compress_tolerance"]));
    Add("  tool: " + Tool(path["tool"]));
    if (path["matrix"] != Json({1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0})) {
      Add("  matrix " + Row(path["matrix"]));
    }
    if (path["origin"] != Json({0.0, 0.0, 0.0})) Add("  origin " + Row(path["origin"]));
    Add("  moves " + Number(path["moves"]) + " in " + Number(path["cuts"]) +
        (path["cuts"] == 1 ? " cut" : " cuts") + ", length " + Number(path["length"]) + " " +
        m_units);
    Add("  box " + Box(path["box"]) + " " + m_units);
    if (path["non_finite_positions"] != 0) {
      Add("  positions that are not finite " + Number(path["non_finite_positions"]));
    }
  }

  static std::string Row(const Json& values) {
    std::string text;
    for (const Json& value : values) text += (text.empty() ? "" : " ") + Number(value);
    return text;
  }

  // Members of the tool as they are named, pieces and halves in parentheses.
  static std::string Tool(const Json& tool) {
    std::string text;
    for (const auto& [key, value] : tool.items()) {
      std::string name = key;
      for (char& c : name) {
        if (c == '_') c = ' ';
      }
      if (!text.empty()) text += ", ";
      if (key == "type") {
        text += Text(value);
      } else if (value.is_array()) {
        text += name;
        for (const Json& piece : value) text += " (" + Tool(piece) + ")";
      } else if (value.is_object()) {
        text += name + " (" + Tool(value) + ")";
      } else {
        text += name + " " + Number(value);
      }
    }
    return text;
  }

  void AddEntries() {
    const Json& entries = m_description["entries"];
    Add("entries " + std::to_string(entries.size()) + (entries.empty() ? "" : ", the latest last"));
    for (const Json& entry : entries) {
      Add((entry["fatal"] == true ? "error: " : "warning: ") + Text(entry["text"]));
    }
  }

  const Json& m_description;
  const std::string& m_units;
  std::vector<std::string> m_lines;
};

}  // namespace

std::vector<std::string> DescriptionText(const Json& description, const std::string& units) {
  return Lines(description, units).All();
}

}  // namespace host
