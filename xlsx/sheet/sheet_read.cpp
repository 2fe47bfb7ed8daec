// What cells hold.
#include <algorithm>

#include "bindery/values/value_spec.h"
#include "engine/api/enums.h"
#include "engine/facts/error_text.h"
#include "engine/failure/messages.h"
#include "engine/failure/vlerror.h"
#include "xlsx/cells/cell_values.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"
#include "xlsx/strings/rich_string.h"
#include "xlsx/strings/shared_strings.h"
#include "xlsx/styles/format.h"
#include "xlsx/styles/styles.h"

namespace vellum {

/// A CellKind. A formula without a cached value counts as a number.
template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::kindOf(const Cell& cell) const {
    if (!isFilled(cell)) return cell.hasStyle() ? cellBlank : cellEmpty;
    switch (cell.type()) {
        case CellType::s:
        case CellType::str:
        case CellType::inlineStr:
            return cellString;
        case CellType::b:
            return cellBoolean;
        case CellType::e:
            return cellError;
        case CellType::d:
            return cellDate;
        default:
            return cellNumber;
    }
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::formatOf(const Cell& cell) -> Format* {
    auto* const styles = book().findStyles();
    return styles ? styles->formatAt(cell.style()) : nullptr;
}

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::give(std::wstring_view text) {
    const CharT* const given = _text.template give<CharT>(text, book().isUtf8());
    if (_text.lostCharacters()) lastError().set(xlsx::msg::lostCharacters);
    return given;
}

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::giveUtf8(std::string_view text) {
    if (!book().isUtf8()) return give(bindery::toWide(text));
    _text.setNarrow(text);
    return _text.template as<CharT>(true);
}

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::giveShared(SharedStrings<CharT, Tag>& strings, std::size_t position) {
    if constexpr (std::is_same_v<CharT, char>) {
        if (book().isUtf8()) {
            if (const auto known = strings.givenUtf8(position)) return giveUtf8(*known);
            const char* const given = give(strings.textAt(position));
            strings.keepGivenUtf8(position, given);
            return given;
        }
    }
    return give(strings.textAt(position));
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::cellType(int row, int col) {
    return guard<int>(cellEmpty, [&] {
        const Cell* const cell = findCell(row, col);
        return cell ? kindOf(*cell) : int{cellEmpty};
    });
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::rowCells(int row, int col, int count, std::uint8_t* kinds, double* numbers) {
    std::fill_n(kinds, count, std::uint8_t{cellEmpty});
    guard(false, [&] {
        const CellPlace first = place(row, col);
        const Row* const in = findRow(first.row);
        if (!in) return false;
        const Cells& cells = in->c();
        const std::uint32_t end = std::min(first.col + static_cast<std::uint32_t>(count), sheetColumns);
        std::uint32_t next = first.col;  // of cells that claim the same place the first counts
        for (std::size_t k = cellAt(cells, first.col); k < cells.size() && cells[k].column() < end; ++k) {
            const Cell& cell = cells[k];
            if (cell.column() < next) continue;
            next = cell.column() + 1;
            const std::uint32_t i = cell.column() - first.col;
            const int kind = kindOf(cell);
            kinds[i] = static_cast<std::uint8_t>(kind);
            if (kind == cellNumber || kind == cellDate) numbers[i] = guard(0.0, [&] { return numberIn(cell); });
        }
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isFormulaCell(int row, int col) {
    return guard(false, [&] {
        const Cell* const cell = findCell(row, col);
        return cell && cell->hasFormula();
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isDate(int row, int col) {
    return guard(false, [&] {
        const Cell* const cell = findCell(row, col);
        auto* const styles = cell ? book().findStyles() : nullptr;
        return styles && styles->isDateFormat(cell->style());
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isRichTextCell(int row, int col) {
    return guard(false, [&] {
        const Cell* const cell = findCell(row, col);
        if (!cell || cell->type() != CellType::s || cell->text().empty()) return false;
        auto* const strings = book().findSharedStrings();
        return strings && strings->isRich(positionOf(cell->text()));
    });
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::cellFormatAt(int row, int col) -> Format* {
    return guard<Format*>(nullptr, [&] {
        const CellPlace at = place(row, col);
        auto* const styles = book().findStyles();
        std::uint32_t index = 0;
        if (const Cell* const cell = findCell(at)) {
            index = cell->style();
        } else if (const Row* const inRow = findRow(at.row); inRow && inRow->isset_s()) {
            index = inRow->s();
        } else if (at.col < _columnStyle.size() && _columnStyle[at.col] != 0) {
            index = _columnStyle[at.col];
        } else {
            throw vlerror(xlsx::msg::formatsNotFound);
        }
        if (!styles) throw vlerror(xlsx::msg::formatsNotFound);
        return static_cast<Format*>(styles->formatAt(index));
    });
}

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::readString(int row, int col, Format** format) {
    return guard<const CharT*>(nullptr, [&] {
        const Cell& cell = requireCell(row, col);
        giveFormat(cell, format);
        if (cell.type() == CellType::inlineStr && cell.inlineString()) {
            const auto& string = *cell.inlineString();
            std::wstring joined;
            if (const auto* const text = string.find_t()) joined = text->text();
            for (const auto& run : string.r()) joined += run.t().text();
            return give(joined);
        }
        if (!cell.hasValue()) throw vlerror(xlsx::msg::noString);
        switch (cell.type()) {
            case CellType::s: {
                auto* const strings = book().findSharedStrings();
                if (!strings) throw vlerror(xlsx::msg::sharedStringsNotFound);
                return cell.hasText() ? giveShared(*strings, positionOf(cell.text())) : give({});
            }
            case CellType::str:
            case CellType::d:
                return giveUtf8(cell.text());
            case CellType::absent:
                return giveUtf8(shortNumberText(numberOf(cell.text())));
            default:
                throw vlerror(xlsx::msg::noString);
        }
    });
}

template <class CharT, class Tag>
IRichStringT<CharT>* XMLSheetImplT<CharT, Tag>::readRichText(int row, int col, Format** format) {
    return guard<IRichStringT<CharT>*>(nullptr, [&]() -> IRichStringT<CharT>* {
        const Cell& cell = requireCell(row, col);
        giveFormat(cell, format);
        if (cell.type() != CellType::s || cell.text().empty()) throw vlerror(xlsx::msg::noRichString);
        auto* const strings = book().findSharedStrings();
        if (!strings) throw vlerror(xlsx::msg::sharedStringsNotFound);
        return strings->richStringAt(positionOf(cell.text()), book(), formatOf(cell));
    });
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::numberIn(const Cell& cell) {
    if (!cell.hasValue()) throw vlerror(xlsx::msg::noNumber);
    switch (cell.type()) {
        case CellType::absent:
        case CellType::n:
            return numberOf(cell.text());
        case CellType::str: {
            bool whole = false;
            const double value = numberOf(cell.text(), &whole);
            if (!whole) throw vlerror(xlsx::msg::noNumber);
            return value;
        }
        case CellType::d: {
            if (cell.text().empty()) throw vlerror(xlsx::msg::noNumber);
            const auto date = isoDateOf(cell.text(), book().dates1904());
            if (!date) throw vlerror(xlsx::msg::badDateTime);
            return *date;
        }
        default:
            throw vlerror(xlsx::msg::noNumber);
    }
}

template <class CharT, class Tag>
double XMLSheetImplT<CharT, Tag>::readNumber(int row, int col, Format** format) {
    return guard(0.0, [&] {
        const Cell& cell = requireCell(row, col);
        giveFormat(cell, format);
        return numberIn(cell);
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::readBool(int row, int col, Format** format) {
    return guard(false, [&] {
        const Cell& cell = requireCell(row, col);
        giveFormat(cell, format);
        if (cell.type() != CellType::b) throw vlerror(xlsx::msg::noBool);
        return numberOf(cell.text()) != 0.0;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::readBlank(int row, int col, Format** format) {
    return guard(false, [&] {
        const Cell& cell = requireCell(row, col);
        giveFormat(cell, format);
        if (cell.hasValue()) throw vlerror(xlsx::msg::notBlank);
        return true;
    });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::readError(int row, int col, Format** format) {
    return guard<int>(errorNone, [&] {
        const Cell& cell = requireCell(row, col);
        giveFormat(cell, format);
        if (cell.type() != CellType::e) throw vlerror(xlsx::msg::noError);
        const int code = errorCodeOf(cell.text());
        if (code == errorNone) throw vlerror(xlsx::msg::unknownError);
        return code;
    });
}

}  // namespace vellum
