// Numeric references to characters.
#pragma once
#include <string>

namespace bindery {

/// A numeric reference at `at`, which points to its "&": appends its character and passes it. False when it is none,
/// because its number is missing or too large; the text then stands as it is.
bool numericReference(std::string& out, const char*& at, const char* end);

}  // namespace bindery
