// Rich strings as callers see them.
#pragma once
#include <cstdint>

#include "engine/api/irichstring.h"
#include "engine/text/text_holder.h"

namespace vellum {

template <class CharT>
class BookImplT;

/// Stands for one entry of the shared strings, by index, since entries move when strings are added. Owned by its book.
template <class CharT>
class ExtStringProxy final : public IRichStringT<CharT> {
public:
    ExtStringProxy(BookImplT<CharT>& book, std::uint32_t index) : _book(&book), _index(index) {}

    IFontT<CharT>* addFont(IFontT<CharT>* source) override;
    /// Cells that refer to the entry already show the longer text.
    bool addRun(const CharT* text, IFontT<CharT>* font) override;
    const CharT* runAt(int index, IFontT<CharT>** font) override;
    int runTotal() override;

    [[nodiscard]] const BookImplT<CharT>& book() const { return *_book; }
    [[nodiscard]] std::uint32_t index() const { return _index; }

private:
    BookImplT<CharT>* _book;
    std::uint32_t _index;
    TextHolder _conversion;
};

extern template class ExtStringProxy<char>;
extern template class ExtStringProxy<wchar_t>;

}  // namespace vellum
