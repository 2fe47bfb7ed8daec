// Scripts from files.
#pragma once
#include <string>

namespace cli {

/// The text of a file, "-" being the standard input. False when it cannot be read.
[[nodiscard]] bool readScript(const std::string& path, std::string& text);

}  // namespace cli
