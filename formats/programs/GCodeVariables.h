#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace formats {

// The variables of a program: #1 to #5602, all 0 at first, and #<name>, none at first.
class GCodeVariables {
 public:
  static constexpr int kLast = 5602;
  // Numbers with a meaning of their own.
  static constexpr int kCurrentTool = 5400;
  static constexpr int kCurrentPosition = 5420;  // x; y and z follow
  static constexpr int kShiftInUse = 5210;       // not 0: the shift of G92 counts
  static constexpr int kShift = 5211;            // x; y and z follow
  static constexpr int kSystemInUse = 5220;      // 1 to 9
  static constexpr int kSystems = 5221;          // x of system 1; each system takes 20 numbers

  GCodeVariables() : numbered_(kLast + 1, 0.0) { numbered_[kSystemInUse] = 1; }

  static bool IsNumber(int number) { return number >= 1 && number <= kLast; }
  // What the machine says and a program can only read.
  static bool IsReadOnly(int number) {
    return (number >= 5400 && number <= 5428) || number == kSystemInUse;
  }

  // number: as IsNumber says.
  double Get(int number) const { return numbered_[static_cast<std::size_t>(number)]; }
  void Set(int number, double value) { numbered_[static_cast<std::size_t>(number)] = value; }

  // name: lower case, no spaces.
  std::optional<double> GetNamed(std::string_view name) const;
  void SetNamed(std::string_view name, double value);

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>()(text);
    }
  };

  std::vector<double> numbered_;
  std::unordered_map<std::string, double, Hash, std::equal_to<>> named_;
};

}  // namespace formats
