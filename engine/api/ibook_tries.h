// What a load that failed in both dialects tells of the first.
#pragma once

namespace vellum {

/// For reports: the error text of a book that loads a file in either of two dialects is that of the second one. Books
/// of Open XML files have it.
class IBookTries {
public:
    /// What the first dialect said to the last load, when a second try failed as well; else "".
    virtual const char* firstTryText() = 0;

protected:
    ~IBookTries() = default;
};

}  // namespace vellum
