// What the workbooks of both engines have alike: the last error, the texts given out, and the locale.
#pragma once
#include "engine/api/ibook.h"
#include "engine/failure/last_error.h"
#include "engine/text/locale.h"
#include "engine/text/text_holder.h"

namespace vellum {

/// The state that every book has, and the operations on it.
template <class CharT>
class BookBaseT : public IBookT<CharT>, public IBookKept, public IBookNames {
public:
    /// For the sheets, formats and fonts of the book.
    LastError& lastError() noexcept { return _lastError; }
    const BookLocale& locale() const noexcept { return _locale; }

    int engineVersion() override;
    bool setLocale(const char* name) override;
    const char* errorMessage() override;

protected:
    LastError _lastError;
    TextHolder _conversion;  // owns the texts that the book returns
    BookLocale _locale;
};

extern template class BookBaseT<char>;
extern template class BookBaseT<wchar_t>;

}  // namespace vellum
