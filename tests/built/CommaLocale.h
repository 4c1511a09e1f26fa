#pragma once

#include <clocale>
#include <string>

/// While one lives, this process writes decimals with a comma, as a host in such a country may. Not
/// on a system that has no such locale.
class CommaLocale {
 public:
  CommaLocale() : m_before(std::setlocale(LC_ALL, nullptr)) {
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "German_Germany.1252"}) {
      if (std::setlocale(LC_ALL, name) != nullptr) return;
    }
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;
  ~CommaLocale() { std::setlocale(LC_ALL, m_before.c_str()); }

  bool IsThere() const { return *std::localeconv()->decimal_point == ','; }

 private:
  std::string m_before;
};
