// A script that cannot be understood.
#pragma once
#include <stdexcept>
#include <string>

namespace refhost {

/// A place in a script; both count from 1, columns in characters.
struct Position {
    int line = 1, column = 1;
};

struct ScriptError : std::runtime_error {
    ScriptError(Position at_, const std::string& text) : runtime_error(text), at(at_) {}
    const Position at;
};

}  // namespace refhost
