#pragma once

namespace kernel {

// Ends work on other threads after a stop; the caller sees the callback object's own exception.
struct Stopped {};

}  // namespace kernel
