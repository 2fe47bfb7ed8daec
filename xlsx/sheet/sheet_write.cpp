// Writing cells.
#include <charconv>
#include <cmath>

#include "engine/api/enums.h"
#include "engine/facts/error_text.h"
#include "engine/failure/vlerror.h"
#include "engine/text/conversions.h"
#include "xlsx/cells/cell_values.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"
#include "xlsx/strings/rich_string.h"
#include "xlsx/strings/shared_strings.h"
#include "xlsx/styles/styles.h"

namespace vellum {
namespace {

/// The decimal text of a position in the string table.
template <class Cell>
void setPosition(Cell& cell, std::size_t position) {
    char text[20];
    cell.setText({text, std::to_chars(text, text + sizeof text, position).ptr});
}

}  // namespace

/// Lives until the next call.
template <class CharT, class Tag>
std::wstring_view XMLSheetImplT<CharT, Tag>::widened(const CharT* text) {
    if (!text) throw vlerror(xlsx::msg::textNull);
    if constexpr (std::is_same_v<CharT, wchar_t>) {
        return text;
    } else {
        widen(text, _wide, book().isUtf8());
        return _wide;
    }
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::putNumber(Cell& cell, double value) {
    if (!std::isfinite(value)) {
        putError(cell, errorNumber);
        return;
    }
    cell.setType(CellType::absent);
    cell.setText(NumberText(value).view());
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::putError(Cell& cell, int errorCode) {
    const std::string_view text = errorTextOf(errorCode);
    if (text.empty()) {
        _areasDirty = true;  // what the cell held is gone
        throw vlerror(xlsx::msg::unknownError);
    }
    cell.setType(CellType::e);
    cell.setText(text);
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setCellFormatAt(int row, int col, Format* format) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        book().ensureStyles().formatIndexOf(format);
        ensureCell(at, format, false);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeNumber(int row, int col, double value, Format* format) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        putNumber(ensureCell(at, format, true), value);
        fill(at);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeString(int row, int col, const CharT* text, Format* format, int stringKind) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        const std::wstring_view wide = widened(text);
        if (stringKind == stringIsText) {
            const std::size_t position = book().ensureSharedStrings().addString(wide);
            Cell& cell = ensureCell(at, format, true);
            cell.setType(CellType::s);
            setPosition(cell, position);
        } else {
            ensureCell(at, format, true).setValue(wide);
        }
        fill(at);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeRichText(int row, int col, IRichStringT<CharT>* text, Format* format) {
    return guard(false, [&] {
        auto* const richString = dynamic_cast<XMLRichStringImplT<CharT, Tag>*>(text);
        if (!richString) throw vlerror(xlsx::msg::richStringNull);
        if (!richString->isOf(book())) throw vlerror(xlsx::msg::foreignRichString);
        const CellPlace at = place(row, col);
        Cell& cell = ensureCell(at, format, true);
        cell.setType(CellType::s);
        setPosition(cell, richString->position());
        book().ensureSharedStrings().countUse();
        richString->setFormat(format);
        fill(at);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeBool(int row, int col, bool value, Format* format, int errorCode) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        Cell& cell = ensureCell(at, format, true);
        if (errorCode != errorNone) {
            putError(cell, errorCode);
        } else {
            cell.setType(CellType::b);
            cell.setText(value ? "1" : "0");
        }
        fill(at);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeError(int row, int col, int errorCode, Format* format) {
    return writeBool(row, col, false, format, errorCode);
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeBlank(int row, int col, Format* format) {
    return guard(false, [&] {
        const Cell* const old = findCell(row, col);
        if (old && isFilled(*old)) _areasDirty = true;  // it may have been the last one that held something
        ensureCell(place(row, col), format, true);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::copyCell(int rowSrc, int colSrc, int rowDst, int colDst) {
    return guard(false, [&] {
        const CellPlace from = place(rowSrc, colSrc), to = place(rowDst, colDst);
        numberAll();
        const Cell* const source = findCell(from);
        if (source && from.row == to.row && from.col == to.col) return true;
        Cell copy;
        if (source) {
            copy = *source;
            if (const auto formula = copy.formula()) {
                const bool isTable = formula->t() == "dataTable";
                const std::string address = cellAddressText(to.row, to.col);
                if (formula->t() == "shared") {
                    // A second master of the group, or a member out of its range, would be corrupt.
                    const std::wstring text = formulaText(from, *source, to);
                    copy.setFormula(text);
                } else if (isTable) {
                    copy.clearFormula();
                } else if (formula->isset_ref()) {
                    copy.makeFormula().ref(address);
                }
            }
        }
        Cell& target = ensureCell(to, nullptr, true);
        if (source) {
            target = std::move(copy);
            target.setReference(to.row, to.col);
            if (target.type() == CellType::s && target.hasValue()) {
                if (auto* const strings = book().findSharedStrings()) strings->countUse();
            }
        }
        _areasDirty = true;
        return true;
    });
}

}  // namespace vellum
