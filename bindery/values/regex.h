// Patterns of schemas.
#pragma once
#include <mutex>
#include <string_view>

struct _xmlRegexp;

namespace bindery {

/// A pattern of a schema. Compiled when it is first asked, from any thread; matching is read-only.
class c_regex {
public:
    constexpr explicit c_regex(const char* pattern) : _pattern(pattern) {}
    ~c_regex();
    c_regex(const c_regex&) = delete;
    c_regex& operator=(const c_regex&) = delete;

    /// Whether the whole of the text (UTF-8) matches. A pattern that does not compile matches everything.
    bool isMatch(std::string_view text) const;

    const char* pattern() const { return _pattern; }

private:
    const char* _pattern;
    mutable std::once_flag _once;
    mutable _xmlRegexp* _automaton = nullptr;
};

}  // namespace bindery
