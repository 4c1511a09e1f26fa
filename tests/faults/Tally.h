#pragma once

#include <map>
#include <string>
#include <vector>

#include "faults/Injection.h"

namespace faults {

/// How many injections of each kind have run, export by export, and how many of them met what is
/// promised.
class Tally {
 public:
  void Count(const std::string& operation, const std::string& function, Way way, bool isMet);

  /// A line for each operation, "MET/RUN" for each kind.
  std::string Table() const;

 private:
  struct Cell {
    int run = 0;
    int met = 0;
  };
  std::map<std::string, std::map<std::string, Cell>> m_cells;  // by operation and kind
};

/// The one of this program.
Tally& TheTally();

}  // namespace faults
