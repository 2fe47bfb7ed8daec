// Copies of files that survive a power failure.
#pragma once
#include <string>

namespace cli {

/// Copies a file, whole or not at all: the copy takes its name when all its bytes are on the disk. Throws
/// std::system_error.
void copyFlushed(const std::string& from, const std::string& to);

/// Makes a file take the place of another for good, whole or not at all; of the one that a link leads to, wherever that
/// is. Throws std::system_error.
void replaceBy(const std::string& from, const std::string& to);

}  // namespace cli
