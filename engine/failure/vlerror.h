// The exception of the engine.
#pragma once
#include <exception>
#include <string>
#include <utility>

namespace vellum {

/// The engine's exception: one text, which ends as the book's last error.
class vlerror : public std::exception {
public:
    explicit vlerror(std::string text) : _text(std::move(text)) {}
    const char* what() const noexcept override { return _text.c_str(); }

private:
    std::string _text;
};

}  // namespace vellum
