#pragma once

#include <functional>
#include <string>

namespace kernel {

// Lets `write` write a new file beside `path` and puts it in the place of `path` in one go.
// Whatever is thrown on the way, the new file is gone and an older one is as it was. Throws
// formats::FileError when it cannot be put in place.
void ReplaceFile(const std::string& path, const std::function<void(const std::string&)>& write);

}  // namespace kernel
