#include "kernel/common/FigureText.h"

#include <charconv>

namespace kernel {

std::string FigureText(double figure) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, figure, std::chars_format::general, 6).ptr};
}

}  // namespace kernel
