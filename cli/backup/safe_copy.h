// Copies of files that survive a power failure.
#pragma once
#include <string>

namespace cli {

/// Copies a file, whole or not at all: the copy takes its name when all its bytes are on the disk. Throws
/// std::system_error.
void copyFlushed(const std::string& from, const std::string& to);

/// Gives a file another name, in place of what had it, for good. Throws std::system_error.
void renameFlushed(const std::string& from, const std::string& to);

}  // namespace cli
