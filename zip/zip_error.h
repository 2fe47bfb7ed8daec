// What reading an archive throws.
#pragma once
#include <stdexcept>
#include <string>

namespace zip {

class ZipError : public std::runtime_error {
public:
    explicit ZipError(const char* text) : std::runtime_error(text) {}
    explicit ZipError(const std::string& text) : std::runtime_error(text) {}
};

/// A file operation failed; the text names the reason of `errorNumber`, as "A file error occurred (No such file or
/// directory.).".
[[noreturn]] void throwFileError(int errorNumber);

}  // namespace zip
