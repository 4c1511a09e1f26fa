#include "formats/programs/JsonFields.h"

#include <cmath>
#include <utility>

namespace formats {

JsonFields::JsonFields(const nlohmann::json& json, std::string where)
    : json_(json), where_(std::move(where)) {
  if (!json.is_object()) {
    throw JsonFault((where_.empty() ? "the file" : where_) + " is not an object");
  }
}

bool JsonFields::Has(const std::string& key) const { return json_.contains(key); }

std::string JsonFields::Where(const std::string& key) const {
  return where_.empty() ? key : where_ + "." + key;
}

const nlohmann::json& JsonFields::Member(const std::string& key) {
  asked_.insert(key);
  const auto found = json_.find(key);
  if (found == json_.end()) {
    throw JsonFault(Where(key) + " is missing");
  }
  return *found;
}

double JsonFields::Number(const std::string& key) {
  const nlohmann::json& member = Member(key);
  if (!member.is_number() || !std::isfinite(member.get<double>())) {
    throw JsonFault(Where(key) + " is not a number");
  }
  return member.get<double>();
}

int JsonFields::Integer(const std::string& key, int lowest, int highest) {
  const double value = Number(key);
  if (value != std::floor(value) || value < lowest || value > highest) {
    throw JsonFault(Where(key) + " is not a whole number from " + std::to_string(lowest) + " to " +
                    std::to_string(highest));
  }
  return static_cast<int>(value);
}

std::string JsonFields::Text(const std::string& key) {
  const nlohmann::json& member = Member(key);
  if (!member.is_string()) {
    throw JsonFault(Where(key) + " is not a text");
  }
  return member.get<std::string>();
}

bool JsonFields::Flag(const std::string& key) {
  const nlohmann::json& member = Member(key);
  if (!member.is_boolean()) {
    throw JsonFault(Where(key) + " is neither true nor false");
  }
  return member.get<bool>();
}

const nlohmann::json& JsonFields::Array(const std::string& key) {
  const nlohmann::json& member = Member(key);
  if (!member.is_array()) {
    throw JsonFault(Where(key) + " is not a list");
  }
  return member;
}

const nlohmann::json& JsonFields::Object(const std::string& key) { return Member(key); }

void JsonFields::Finish() const {
  for (const auto& [key, value] : json_.items()) {
    if (!asked_.contains(key)) {
      throw JsonFault(Where(key) + " is not known here");
    }
  }
}

}  // namespace formats
