#include "faults/Tally.h"

#include <iomanip>
#include <set>
#include <sstream>

namespace faults {
namespace {

const std::vector<std::string>& Kinds() {
  static const std::vector<std::string> kinds = {"host",    "library", "stop", "fatal",
                                                 "foreign", "memory",  "text", "disk"};
  return kinds;
}

std::string KindOf(const std::string& function, Way way) {
  static const std::set<std::string> host = {"m_fopen",     "m_fopen_hl", "m_fopen_hl status",
                                             "file_exists", "RegOpen",    "GetStringValue",
                                             "LoadMessage"};
  switch (way) {
    case Way::kStops:
      return "stop";
    case Way::kFatal:
      return "fatal";
    case Way::kForeign:
      return "foreign";
    case Way::kFull:
    case Way::kHalfFull:
      return "disk";
    default:
      if (function == "new") return "memory";
      if (function == kTextMemory) return "text";
      return host.contains(function) ? "host" : "library";
  }
}

}  // namespace

void Tally::Count(const std::string& operation, const std::string& function, Way way, bool isMet) {
  for (const std::string& kind : {KindOf(function, way), std::string("all")}) {
    for (const std::string& row : {operation, std::string("all of them")}) {
      Cell& cell = m_cells[row][kind];
      ++cell.run;
      if (isMet) ++cell.met;
    }
  }
}

std::string Tally::Table() const {
  std::vector<std::string> kinds = Kinds();
  kinds.push_back("all");
  std::ostringstream out;
  out << std::left << std::setw(40) << "injections, met/run";
  for (const std::string& kind : kinds) out << std::right << std::setw(11) << kind;
  for (const auto& [operation, cells] : m_cells) {
    out << "\n" << std::left << std::setw(40) << operation;
    for (const std::string& kind : kinds) {
      const auto found = cells.find(kind);
      const Cell cell = found == cells.end() ? Cell{} : found->second;
      const std::string text = std::to_string(cell.met) + "/" + std::to_string(cell.run);
      out << std::right << std::setw(11) << text;
    }
  }
  out << "\n";
  return out.str();
}

Tally& TheTally() {
  static Tally tally;
  return tally;
}

}  // namespace faults
