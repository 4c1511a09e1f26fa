#include "host/files/DescriptionText.h"

#include "host/files/CurvesText.h"
#include "host/files/FileKind.h"
#include "host/files/NumberText.h"

namespace host {

namespace {

using Json = nlohmann::ordered_json;

// "12 open edges" and so on; nothing for a count of 0.
void AddFault(const Json& topology, const char* key, const char* name, std::string& text) {
  if (topology[key] == 0) return;
  text += ", " + NumberText(topology[key]) + " " + name;
}

std::string Topology(const Json& topology) {
  std::string text = topology["closed"] == true ? "closed" : "open";
  if (topology["oriented_manifold"] == true) text += ", manifold, consistently oriented";
  text += ", components " + NumberText(topology["components"]);
  if (!topology["genus"].is_null()) text += ", genus " + NumberText(topology["genus"]);
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
    if (m_description.contains("curves")) AddCurves();
    if (m_description.contains("paths")) AddPaths();
    if (m_description.contains("entries")) AddEntries();
    if (m_description.contains("lines")) Add("lines " + NumberText(m_description["lines"]));
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
    if (m_description.contains("variant")) line += " (" + Text(m_description["variant"]) + ")";
    if (m_description.contains("bytes"))
      line += ", " + NumberText(m_description["bytes"]) + " bytes";
    m_lines.push_back(line);
    if (!m_description.contains("remarks")) return;
    for (const Json& remark : m_description["remarks"]) Add("STALE: " + Text(remark));
  }

  void AddSurface() {
    const Json& d = m_description;
    Add("facets " + NumberText(d["facets"]) + ", vertices " + NumberText(d["vertices"]));
    if (d["facets"] == 0) Add("empty: nothing is left");
    Add("box " + BoxText(d["box"]) + " " + m_units);
    Add("volume " + NumberText(d["volume"]) + " " + m_units + "^3" +
        (d["topology"]["closed"] == true ? "" : " (not closed: without meaning)"));
    Add("area " + NumberText(d["area"]) + " " + m_units + "^2");
    Add("topology: " + Topology(d["topology"]));
    if (d.contains("topology_when_joined")) {
      Add("coincident vertices " + NumberText(d["coincident_vertices"]) +
          "; joined: " + Topology(d["topology_when_joined"]));
    }
    if (d["zero_area_facets"] != 0) Add("zero-area facets " + NumberText(d["zero_area_facets"]));
    if (d["non_finite_vertices"] != 0) {
      Add("vertices that are not finite " + NumberText(d["non_finite_vertices"]));
    }
    if (d.contains("trailing_bytes") && d["trailing_bytes"] != 0) {
      Add("bytes after the last facet " + NumberText(d["trailing_bytes"]));
    }
    for (const Json& colour : d["colours"]) {
      Add("colour " + NumberText(colour["colour"]) + ": facets " + NumberText(colour["facets"]) +
          ", area " + NumberText(colour["area"]) + " " + m_units + "^2");
    }
  }

  void AddCurves() {
    for (const std::string& line : CurvesText(m_description, m_units)) Add(line);
  }

  void AddPaths() {
    const Json& paths = m_description["paths"];
    if (paths.size() != 1) Add("paths " + std::to_string(paths.size()));
    for (size_t i = 0; i < paths.size(); ++i) AddPath(i, paths[i]);
  }

  void AddPath(size_t number, const Json& path) {
    // A per-path file's number is in its name.
    const bool numbered = m_description["kind"] != NameOf(FileKind::kPath);
    Add((numbered ? "path " + std::to_string(number) + ": " : "") + NumberText(path["axes"]) +
        "-axis, colour " + NumberText(path["colour"]) + ", tolerances sweep " +
        NumberText(path["sweep_tolerance"]) + ", path " + NumberText(path["path_tolerance"]) +
        ", compression " + NumberText(path["compress_tolerance"]));
    Add("  tool: " + Tool(path["tool"]));
    if (path["matrix"] != Json({1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0})) {
      Add("  matrix " + Row(path["matrix"]));
    }
    if (path["origin"] != Json({0.0, 0.0, 0.0})) Add("  origin " + Row(path["origin"]));
    Add("  moves " + NumberText(path["moves"]) + " in " + NumberText(path["cuts"]) +
        (path["cuts"] == 1 ? " cut" : " cuts") + ", length " + NumberText(path["length"]) + " " +
        m_units);
    Add("  box " + BoxText(path["box"]) + " " + m_units);
    if (path["non_finite_positions"] != 0) {
      Add("  positions that are not finite " + NumberText(path["non_finite_positions"]));
    }
  }

  static std::string Row(const Json& values) {
    std::string text;
    for (const Json& value : values) text += (text.empty() ? "" : " ") + NumberText(value);
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
        text += name + " " + NumberText(value);
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
