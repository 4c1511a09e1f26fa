#pragma once

#include <string>

#include "SystemApi.h"

namespace host {

/// The add-in library, loaded by name, checked against the protocol and initialised; detached and
/// unloaded with the object. Throws CommandError with the reason when it cannot be had.
class AddIn {
 public:
  /// An empty `path` stands for the add-in beside the executable.
  explicit AddIn(const std::string& path);
  AddIn(const AddIn&) = delete;
  AddIn& operator=(const AddIn&) = delete;
  ~AddIn();

  /// An exported function by its name. Throws CommandError when there is none.
  template <typename Function>
  Function* Export(const char* name) const {
    return reinterpret_cast<Function*>(Find(name));
  }

 private:
  // A function of any type, in the one form that may be cast to all others.
  using AnyFunction = void();

  AnyFunction* Find(const char* name) const;
  void CheckProtocol() const;

  std::string m_path;
  HMODULE m_library;
};

}  // namespace host
