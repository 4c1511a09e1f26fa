#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>

namespace formats {

// What is wrong in a JSON file and where ("tools[2].diameter is not a number").
class JsonFault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The members of one JSON object, each asked for by name; Finish finds those that nobody asked for,
// so that a misspelled one is not passed over. `json` must outlive the fields.
class JsonFields {
 public:
  // where: the object's place in the file, empty for the whole. Throws JsonFault unless an object.
  JsonFields(const nlohmann::json& json, std::string where);

  bool Has(const std::string& key) const;
  std::string Where(const std::string& key) const;

  // Each throws JsonFault unless the member is there and of its kind.
  double Number(const std::string& key);
  int Integer(const std::string& key, int lowest, int highest);
  std::string Text(const std::string& key);
  bool Flag(const std::string& key);
  const nlohmann::json& Array(const std::string& key);
  const nlohmann::json& Object(const std::string& key);

  double NumberOr(const std::string& key, double otherwise) {
    return Has(key) ? Number(key) : otherwise;
  }
  bool FlagOr(const std::string& key, bool otherwise) { return Has(key) ? Flag(key) : otherwise; }

  // Throws JsonFault for a member that no call has named.
  void Finish() const;

 private:
  const nlohmann::json& Member(const std::string& key);

  const nlohmann::json& json_;
  std::string where_;
  std::set<std::string> asked_;
};

}  // namespace formats
