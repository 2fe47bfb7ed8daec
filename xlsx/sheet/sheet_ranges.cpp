// Defined names as the sheet sees them, and addresses of cells.
#include <algorithm>
#include <limits>

#include "engine/api/enums.h"
#include "engine/failure/vlerror.h"
#include "xlsx/features/block.h"
#include "xlsx/features/defined_names.h"
#include "xlsx/features/name_text.h"
#include "xlsx/features/print_names.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"

namespace vellum {

/// Names of the whole workbook, and those of this sheet only. The list is kept until names change, since callers go
/// through it name by name.
template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::visibleNames() -> const std::vector<DefinedName*>& {
    const unsigned version = book().names().version();
    if (_visibleNamesVersion == version) return _visibleNames;
    _visibleNames.clear();
    if (auto* const names = book().workbook().find_definedNames()) {
        for (DefinedName& name : names->definedName()) {
            const int scope = xlsx::DefinedNames<Tag>::scopeOf(name);
            if (scope == scopeWorkbook || scope == _index) _visibleNames.push_back(&name);
        }
    }
    _visibleNamesVersion = version;
    return _visibleNames;
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::namedRangeCount() {
    return guard(0, [&] { return static_cast<int>(visibleNames().size()); });
}

/// The first area of a name, when it lies on this sheet.
template <class CharT, class Tag>
std::optional<CellRange> XMLSheetImplT<CharT, Tag>::areaOfName(const DefinedName& name) {
    const auto* const element = sheetElement();
    if (!element) return {};
    return xlsx::rangeOnSheet(xlsx::areasOf(name.text()).front(), element->name());
}

/// The warning for a name of which only the first area was told.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::warnOfMoreAreas(bool hasMore) {
    if (hasMore) lastError().set(xlsx::msg::partsSkipped);
}

/// Fails for a name whose text is no area of this sheet.
template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::namedRange(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast,
                                                   int* scope, bool* hidden) {
    return guard<const CharT*>(nullptr, [&]() -> const CharT* {
        const auto& visible = visibleNames();
        const auto at = static_cast<std::size_t>(index);
        if (index < 0 || at >= visible.size()) throw vlerror(xlsx::msg::indexOutOfRange);
        const DefinedName& found = *visible[at];
        const auto range = areaOfName(found);
        if (!range) {
            lastError().set(xlsx::msg::namedRangeNotFound);  // not thrown: most names belong to other sheets
            return nullptr;
        }
        xlsx::giveBlock(*range, rowFirst, rowLast, colFirst, colLast);
        if (scope) *scope = xlsx::DefinedNames<Tag>::scopeOf(found);
        if (hidden) *hidden = found.hidden();
        warnOfMoreAreas(xlsx::areasOf(found.text()).size() > 1);
        return _nameText.template give<CharT>(found.name(), book().isUtf8());
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::namedRangeByName(const CharT* name, int* rowFirst, int* rowLast, int* colFirst,
                                                 int* colLast, int scope, bool* hidden) {
    return guard(false, [&] {
        const auto& alike = book().names().named(widened(name));
        const auto lies = [&](const DefinedName* known) {
            const int of = xlsx::DefinedNames<Tag>::scopeOf(*known);
            return (scope == scopeAny || scope == of) && areaOfName(*known);
        };
        const auto found = std::find_if(alike.begin(), alike.end(), lies);
        if (found == alike.end()) throw vlerror(xlsx::msg::namedRangeNotFound);
        xlsx::giveBlock(*areaOfName(**found), rowFirst, rowLast, colFirst, colLast);
        if (hidden) *hidden = (*found)->hidden();
        warnOfMoreAreas(xlsx::areasOf((*found)->text()).size() > 1);
        return true;
    });
}

/// A scope as names have it: of this sheet for any.
template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::checkedScope(int scope) {
    if (scope == scopeAny) return namedSheet().index;
    const auto* const sheets = book().workbook().find_sheets();
    const bool exists = scope >= 0 && sheets && static_cast<std::size_t>(scope) < sheets->sheet().size();
    if (!exists && scope != scopeWorkbook) throw vlerror(xlsx::msg::indexOutOfRange);
    return scope;
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setNamedRangeByName(const CharT* name, int rowFirst, int rowLast, int colFirst,
                                                    int colLast, int scope, bool hidden) {
    return guard(false, [&] {
        const std::wstring_view text = widened(name);
        if (text.find(L' ') != std::wstring_view::npos) throw vlerror(xlsx::msg::spaceInName);
        const CellRange range = xlsx::block(rowFirst, rowLast, colFirst, colLast);
        const auto sheet = namedSheet();
        DefinedName& made = book().names().make(text, checkedScope(scope));
        made.text(xlsx::absoluteArea(sheet.name, range));
        if (hidden) {
            made.hidden(true);
        } else {
            made.unset_hidden();
        }
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removeNamedRange(const CharT* name, int scope) {
    return guard(false, [&] {
        const std::wstring_view text = widened(name);
        auto& names = book().names();
        const DefinedName* found = names.find(text, scope == scopeAny ? _index : scope);
        if (!found && scope == scopeAny) found = names.find(text, scopeWorkbook);
        if (!found) throw vlerror(xlsx::msg::namedRangeToRemoveNotFound);
        names.remove(*found);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::printAreaRange(int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guard(false, [&] {
        const auto area = xlsx::printArea(book().names(), namedSheet());
        if (!area) throw vlerror(xlsx::msg::notFound);
        xlsx::giveBlock(area->range, rowFirst, rowLast, colFirst, colLast);
        warnOfMoreAreas(area->hasMore);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setPrintAreaRange(int rowFirst, int rowLast, int colFirst, int colLast) {
    return guard(false, [&] {
        const CellRange range = xlsx::block(rowFirst, rowLast, colFirst, colLast);
        xlsx::setPrintArea(book().names(), namedSheet(), range);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::clearPrintAreaRange() {
    return guard(false, [&] {
        xlsx::clearPrintArea(book().names(), namedSheet());
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::repeatRows(int* rowFirst, int* rowLast) {
    return guard(false, [&] {
        const auto rows = xlsx::repeated(book().names(), namedSheet(), xlsx::repeatedRows);
        if (!rows) throw vlerror(xlsx::msg::notFound);
        xlsx::giveBlock({rows->first, rows->last, 0, 0}, rowFirst, rowLast, nullptr, nullptr);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setRepeatRows(int rowFirst, int rowLast) {
    return guard(false, [&] {
        const CellRange range = xlsx::block(rowFirst, rowLast, 0, 0);
        xlsx::setRepeat(book().names(), namedSheet(), xlsx::repeatedRows, {range.rowFirst, range.rowLast});
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::repeatColumns(int* colFirst, int* colLast) {
    return guard(false, [&] {
        const auto columns = xlsx::repeated(book().names(), namedSheet(), xlsx::repeatedColumns);
        if (!columns) throw vlerror(xlsx::msg::repeatColumnsNotFound);
        xlsx::giveBlock({0, 0, columns->first, columns->last}, nullptr, nullptr, colFirst, colLast);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setRepeatColumns(int colFirst, int colLast) {
    return guard(false, [&] {
        const CellRange range = xlsx::block(0, 0, colFirst, colLast);
        xlsx::setRepeat(book().names(), namedSheet(), xlsx::repeatedColumns, {range.colFirst, range.colLast});
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::clearRepeats() {
    return guard(false, [&] {
        xlsx::clearRepeats(book().names(), namedSheet());
        return true;
    });
}

/// A row or column that the text leaves out is -1.
template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::parseCellAddress(const CharT* text, int* row, int* col, bool* rowRelative,
                                                 bool* colRelative) {
    return guard(false, [&] {
        const auto part = readAddressPart(xlsx::inCapitals(widened(text)));
        if (!part) throw vlerror(xlsx::msg::refUnrecognized);
        if (row) *row = part->hasRow() ? static_cast<int>(part->row) : -1;
        if (col) *col = part->hasCol() ? static_cast<int>(part->col) : -1;
        if (rowRelative) *rowRelative = !part->rowFixed;
        if (colRelative) *colRelative = !part->colFixed;
        return true;
    });
}

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::formatCellAddress(int row, int col, bool rowRelative, bool colRelative) {
    return guard<const CharT*>(nullptr, [&] {
        const CellPlace at = place(row, col);
        std::wstring address;
        appendCellAddress(address, {at.row, at.col, !rowRelative, !colRelative});
        return _addressText.template give<CharT>(address, book().isUtf8());
    });
}

}  // namespace vellum
