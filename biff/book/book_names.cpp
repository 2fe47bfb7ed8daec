// The book's names for those who list them.
#include "biff/book/book.h"
#include "biff/names/name_copy.h"
#include "biff/names/plain_range.h"
#include "engine/failure/guarded.h"
#include "engine/text/conversions.h"
#include "formula/printing/formula_to_text.h"

namespace vellum {

namespace {

// A name that cannot be parsed is there, and nobody knows what it is.
constexpr std::wstring_view noName = L"?";

void giveArea(const biff::DefinedNames& names, const Lbl& lbl, IBookNames::Name& name) {
    const auto range = biff::PlainRange::of(lbl.tokens());
    const auto sheets = range ? names.links.ownSheets(range->xti) : std::nullopt;
    if (!sheets || sheets->first < 0 || sheets->first != sheets->last) return;
    name.sheet = sheets->first;
    name.rowFirst = range->area.rowFirst;
    name.rowLast = range->area.rowLast;
    name.colFirst = range->area.colFirst;
    name.colLast = range->area.colLast;
}

std::optional<std::string> formulaOf(const Lbl& lbl, Globals& globals, wchar_t separator) {
    try {
        formula::FormulaText text;
        const biff::FormulaBook book(globals, separator, false);
        return toNarrow(text.formulaToText(lbl.tokens(), book, formula::Generation::biff8, {}, {}), true);
    } catch (const vlerror&) {
        return std::nullopt;
    }
}

}  // namespace

template <class CharT>
formula::FormulaContext& BookImplT<CharT>::formulas() {
    return _formulaBook.emplace(_globals, static_cast<wchar_t>(listSeparator()), usesR1C1());
}

template <class CharT>
void BookImplT<CharT>::copyNames(const SheetImplT<CharT>& source, const SheetImplT<CharT>& made) {
    BookContext<CharT>& from = source.book();
    if (&from == this) {
        biff::copyNames(_globals.names, indexOfSheet(source), indexOfSheet(made), formulas());
    } else {
        biff::adoptNames(_globals.names, _pool, indexOfSheet(made), from.names(), from.indexOfSheet(source));
    }
}

template <class CharT>
int BookImplT<CharT>::nameTotal() {
    _listedNames.clear();
    for (std::size_t i = 0; i < _globals.names.size(); ++i) {
        if (!_globals.names.at(i).isGone()) _listedNames.push_back(i);
    }
    return static_cast<int>(_listedNames.size());
}

template <class CharT>
bool BookImplT<CharT>::nameAt(int index, IBookNames::Name& name) {
    return guarded(this->_lastError, false, [&] {
        if (index < 0 || static_cast<std::size_t>(index) >= _listedNames.size())
            throw vlerror(biff::msg::indexOutOfRange);
        const Lbl& lbl = _globals.names.at(_listedNames[static_cast<std::size_t>(index)]);
        name = {};
        name.text = toNarrow(lbl.isSound() ? lbl.text() : noName, true);
        name.scope = std::max(lbl.scope(), int{scopeWorkbook});
        name.hidden = lbl.isHidden();
        name.builtIn = lbl.isBuiltIn();
        giveArea(_globals.names, lbl, name);
        name.formula = formulaOf(lbl, _globals, static_cast<wchar_t>(listSeparator()));
        return true;
    });
}

template <class CharT>
IBookNames::Outside BookImplT<CharT>::outside() {
    const auto found = _globals.names.links.outside();
    int lost = 0;
    for (const auto& sheet : _sheets) lost += sheet->lostFormulas();
    return {found.otherBooks, found.addInFunctions, found.ddeLinks, lost};
}

}  // namespace vellum
