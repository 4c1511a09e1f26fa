#pragma once

#include <stdexcept>

namespace kernel {

// No result can be made. what() is one line for the user; the class that was called hands it to the
// callback object and leaves its output untouched.
class FatalError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace kernel
