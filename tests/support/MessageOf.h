#pragma once

#include <string>

namespace support {

/// What a call throws as Error, or an empty text when it throws none.
template <typename Error, typename Call>
std::string MessageOf(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return error.what();
  }
  return {};
}

}  // namespace support
