#include "faults/World.h"

#include <algorithm>
#include <sstream>

namespace faults {
namespace {

std::string Described(const std::string& bytes) {
  std::ostringstream text;
  text << bytes.size() << " bytes";
  return text.str();
}

void CompareFile(const std::string& name, const World& expected, const World& actual,
                 std::ostream& out) {
  const auto wanted = expected.files.find(name);
  const auto found = actual.files.find(name);
  if (wanted == expected.files.end()) {
    out << name << " is there, with " << Described(found->second) << "\n";
  } else if (found == actual.files.end()) {
    out << name << " is missing; it should have " << Described(wanted->second) << "\n";
  } else if (wanted->second != found->second) {
    const auto place = std::mismatch(wanted->second.begin(), wanted->second.end(),
                                     found->second.begin(), found->second.end());
    out << name << " has " << Described(found->second) << " instead of "
        << Described(wanted->second) << " and differs from byte "
        << place.first - wanted->second.begin() << " on\n";
  }
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
  return "{" + all + "}";
}

}  // namespace

std::string Differences(const World& expected, const World& actual) {
  std::ostringstream out;
  const auto compare = [&](const char* what, const auto& wanted, const auto& found) {
    if (wanted != found) out << what << " is " << found << " instead of " << wanted << "\n";
  };
  compare("flag", expected.flag, actual.flag);
  compare("what was thrown", static_cast<int>(expected.thrown), static_cast<int>(actual.thrown));
  compare("open streams", Joined(expected.streams), Joined(actual.streams));
  compare("lost blocks", expected.blocks, actual.blocks);
  compare("being in the first directory", expected.isAtHome, actual.isAtHome);
  compare("living kernels", expected.kernels, actual.kernels);
  for (std::size_t i = 0; i < expected.box.size(); ++i) {
    compare("a corner of the box", expected.box[i], actual.box[i]);
  }
  std::map<std::string, std::string> names = expected.files;
  names.insert(actual.files.begin(), actual.files.end());
  for (const auto& [name, bytes] : names) CompareFile(name, expected, actual, out);
  return out.str();
}

}  // namespace faults
