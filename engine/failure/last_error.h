// The text of the last operation.
#pragma once
#include <string>

namespace vellum {

/// What the last operation on a book, or on anything it owns, has to say: "ok", the text of a failure,
/// or a warning that goes with a successful result.
class LastError {
public:
    LastError();

    void clear() noexcept;
    /// Without memory for the text it becomes the general one.
    void set(const char* text) noexcept;
    const char* text() const noexcept { return _text.c_str(); }

private:
    std::string _text;
};

}  // namespace vellum
