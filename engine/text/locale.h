// The locale of a book.
#pragma once
#include <string>

namespace vellum {

/// The separator of lists and function arguments, ',' or ';', in the country of a C locale's name.
char listSeparatorOf(const char* localeName);

/// How a book reads char strings, and which separator its formulas use. A new book is in the C
/// locale's coding. When it goes, it puts back the LC_CTYPE locale that a `set` had replaced.
class BookLocale {
public:
    BookLocale() = default;
    BookLocale(const BookLocale&) = delete;
    BookLocale& operator=(const BookLocale&) = delete;
    ~BookLocale();

    /// See `setLocale` of IBookT. A wide book has no use for UTF-8 mode and asks the C library for any
    /// name. Throws "setlocale error (1)" for null and "setlocale error (2)" for an unknown name.
    void set(const char* name, bool wideInterface = false);

    bool utf8() const { return _utf8; }
    char listSeparator() const { return _listSeparator; }

private:
    bool _utf8 = false;
    char _listSeparator = ';';
    std::string _savedCtype;
};

}  // namespace vellum
