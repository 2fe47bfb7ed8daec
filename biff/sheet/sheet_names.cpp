// Defined names as a sheet sees them.
#include "biff/names/name_messages.h"
#include "biff/names/named_ranges.h"
#include "biff/names/print_names.h"
#include "biff/sheet/sheet.h"

namespace vellum {
namespace {

void store(int* out, int value) {
    if (out != nullptr) *out = value;
}

void giveArea(const biff::NameArea& area, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    store(rowFirst, area.rowFirst);
    store(rowLast, area.rowLast);
    store(colFirst, area.colFirst);
    store(colLast, area.colLast);
}

void giveLines(const std::optional<biff::Lines>& lines, int* first, int* last) {
    if (!lines) throw vlerror(biff::msg::notFound);
    store(first, lines->first);
    store(last, lines->last);
}

}  // namespace

template <class CharT>
bool SheetImplT<CharT>::namedRangeByName(const CharT* name, int* rowFirst, int* rowLast, int* colFirst, int* colLast,
                                         int scope, bool* hidden) {
    return guard(false, [&] {
        const auto found = biff::findNamedRange(_book.names(), widened(name), {scope});
        giveArea(found.area, rowFirst, rowLast, colFirst, colLast);
        if (hidden != nullptr) *hidden = found.isHidden;
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setNamedRangeByName(const CharT* name, int rowFirst, int rowLast, int colFirst, int colLast,
                                            int scope, bool hidden) {
    return guard(false, [&] {
        biff::setNamedRange(_book.names(), _book.pool(), index(), static_cast<int>(_book.sheetTotal()),
                            {widened(name), {rowFirst, rowLast, colFirst, colLast}, {scope}, hidden});
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::removeNamedRange(const CharT* name, int scope) {
    return guard(false, [&] {
        biff::removeNamedRange(_book.names(), index(), widened(name), {scope});
        return true;
    });
}

template <class CharT>
int SheetImplT<CharT>::namedRangeCount() {
    return guard(0, [&] { return static_cast<int>(_book.names().seenBy(index()).size()); });
}

template <class CharT>
const CharT* SheetImplT<CharT>::namedRange(int at, int* rowFirst, int* rowLast, int* colFirst, int* colLast, int* scope,
                                           bool* hidden) {
    return guard<const CharT*>(nullptr, [&] {
        const auto seen = _book.names().seenBy(index());
        if (at < 0 || static_cast<std::size_t>(at) >= seen.size()) throw vlerror(biff::msg::indexOutOfRange);
        const Lbl& name = _book.names().at(seen[static_cast<std::size_t>(at)]);
        const auto range = biff::PlainRange::of(name.tokens());
        giveArea(range->area, rowFirst, rowLast, colFirst, colLast);
        store(scope, name.scope());
        if (hidden != nullptr) *hidden = name.isHidden();
        return made(_texts).name.template give<CharT>(name.text(), _book.utf8());
    });
}

template <class CharT>
bool SheetImplT<CharT>::printAreaRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guard(false, [&] {
        giveArea(biff::printArea(_book.names(), index()), rowFirst, rowLast, colFirst, colLast);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setPrintAreaRange(int rowFirst, int rowLast, int colFirst, int colLast) {
    return guard(false, [&] {
        biff::setPrintArea(_book.names(), index(), {rowFirst, rowLast, colFirst, colLast});
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::clearPrintAreaRange() {
    return guard(false, [&] {
        biff::clearBuiltin(_book.names(), index(), biff::BuiltinName::printArea);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::repeatRows(int* rowFirst, int* rowLast) {
    return guard(false, [&] {
        giveLines(biff::printTitles(_book.names(), index()).rows, rowFirst, rowLast);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setRepeatRows(int rowFirst, int rowLast) {
    return guard(false, [&] {
        biff::setRepeatRows(_book.names(), index(), {rowFirst, rowLast});
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::repeatColumns(int* colFirst, int* colLast) {
    return guard(false, [&] {
        giveLines(biff::printTitles(_book.names(), index()).columns, colFirst, colLast);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setRepeatColumns(int colFirst, int colLast) {
    return guard(false, [&] {
        biff::setRepeatColumns(_book.names(), index(), {colFirst, colLast});
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::clearRepeats() {
    return guard(false, [&] {
        biff::clearBuiltin(_book.names(), index(), biff::BuiltinName::printTitles);
        return true;
    });
}

}  // namespace vellum
