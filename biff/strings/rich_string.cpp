#include "biff/strings/rich_string.h"

#include "biff/book/book.h"
#include "biff/records/book_messages.h"
#include "engine/failure/guarded.h"

namespace vellum {

template <class CharT>
IFontT<CharT>* ExtStringProxy<CharT>::addFont(IFontT<CharT>* source) {
    return _book->newFont(source);
}

template <class CharT>
bool ExtStringProxy<CharT>::addRun(const CharT* text, IFontT<CharT>* font) {
    return guarded(_book->lastError(), false, [&] {
        const int position = _book->fontPosition(font);
        if (position < 0) throw vlerror(biff::msg::runFontNotFound);
        ExtString entry = _book->strings().at(_index);
        entry.addRun(_book->widen(text), fontWireIndex(static_cast<std::size_t>(position)), _book->pool());
        _book->strings().replaceEntry(_index, entry);
        return true;
    });
}

template <class CharT>
const CharT* ExtStringProxy<CharT>::runAt(int index, IFontT<CharT>** font) {
    return guarded<const CharT*>(_book->lastError(), nullptr, [&] {
        const ExtString& entry = _book->strings().at(_index);
        const auto runs = entry.runs();
        if (runs.empty()) throw vlerror(biff::msg::noRuns);
        if (index < 0 || static_cast<std::size_t>(index) >= runs.size()) throw vlerror(biff::msg::indexOutOfRange);
        const auto i = static_cast<std::size_t>(index);
        const std::size_t first = std::min<std::size_t>(runs[i].ich, entry.length);
        const std::size_t end =
            i + 1 < runs.size() ? std::min<std::size_t>(runs[i + 1].ich, entry.length) : entry.length;
        if (font != nullptr) *font = &_book->fontByWireIndex(runs[i].ifnt);
        return _conversion.give<CharT>(entry.view().substr(first, end > first ? end - first : 0), _book->utf8());
    });
}

template <class CharT>
int ExtStringProxy<CharT>::runTotal() {
    return guarded(_book->lastError(), 0, [&] { return static_cast<int>(_book->strings().at(_index).runs().size()); });
}

template class ExtStringProxy<char>;
template class ExtStringProxy<wchar_t>;

}  // namespace vellum
