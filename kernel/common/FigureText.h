#pragma once

#include <string>

namespace kernel {

/// A figure as messages show it, six digits like printf's "%g". The kernel runs inside programs
/// that may have set any locale; a message goes into files and has a decimal point in all of them.
std::string FigureText(double figure);

}  // namespace kernel
