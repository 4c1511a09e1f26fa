#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/SystemTypes.h"

/// An open key of the system's registry. Names are compared without regard to case.
class RegistryKey {
 public:
  virtual ~RegistryKey() = default;
  /// The text of a value; nothing when there is none or when it is no text.
  virtual std::optional<std::string> Text(const std::string& name) const = 0;
};

/// Null when there is no such key, or none that may be opened with `access`. A null `parent` stands
/// for the user's own hive.
std::unique_ptr<RegistryKey> OpenRegistryKey(const std::string& path, HKEY parent,
                                             unsigned long access);
