// Cells of a sheet: kinds, formats, numbers, booleans, errors and blanks.
#include <algorithm>
#include <cmath>

#include "biff/cells/own_tokens.h"
#include "biff/cells/rk.h"
#include "biff/container/messages.h"
#include "biff/sheet/sheet.h"
#include "biff/strings/str_map.h"
#include "biff/styles/format.h"
#include "engine/facts/number_format.h"

namespace vellum {
namespace {

template <class Cell, class To>
Cell movedTo(Cell cell, To to) {
    cell.row = to.row;
    cell.col = to.col;
    return cell;
}

}  // namespace

// Places and formats.

template <class CharT>
std::uint16_t SheetImplT<CharT>::checkedRow(int row) {
    if (row < 0 || row >= static_cast<int>(SheetIndex::rowLimit)) throw vlerror(biff::msg::rowRange);
    return static_cast<std::uint16_t>(row);
}

template <class CharT>
std::uint16_t SheetImplT<CharT>::checkedCol(int col) {
    if (col < 0 || col >= static_cast<int>(SheetIndex::colLimit)) throw vlerror(biff::msg::colRange);
    return static_cast<std::uint16_t>(col);
}

template <class CharT>
typename SheetImplT<CharT>::CellPlace SheetImplT<CharT>::place(int row, int col) {
    const std::uint16_t checked = checkedRow(row);
    return {checked, checkedCol(col)};
}

template <class CharT>
typename SheetImplT<CharT>::Format* SheetImplT<CharT>::formatOf(CellSlot slot) const {
    return slot.occupied() ? _book.xf(parts().cells.ixfe(slot)) : nullptr;
}

template <class CharT>
std::uint16_t SheetImplT<CharT>::defaultFormatIndex(std::uint16_t col) const {
    const std::int32_t format = parts().columns.format(col);
    return format < 0 ? defaultCellXf : static_cast<std::uint16_t>(format);
}

template <class CharT>
std::uint16_t SheetImplT<CharT>::ixfeFor(CellPlace at, const Format* format) const {
    if (!parts().isWorksheet()) throwNoWorksheet();  // before a string or a reference is added for the cell
    if (format != nullptr) return _book.ixfeOf(format);
    const CellSlot slot = slotAt(at);
    return slot.occupied() ? parts().cells.ixfe(slot) : defaultFormatIndex(at.col);
}

template <class CharT>
void SheetImplT<CharT>::setIxfe(CellSlot slot, std::uint16_t ixfe) {
    edit().cells.visit(slot, [ixfe](auto& cell) { cell.ixfe = ixfe; });
}

// Writing into the store.

template <class CharT>
template <class Cell>
void SheetImplT<CharT>::put(Cell cell) {
    const CellPlace at{cell.row, cell.col};
    const CellSlot old = slotAt(at);
    handOnShared(at);
    if constexpr (Cell::kind == SlotKind::formula) edit().sharedTokens.note(cell);
    if constexpr (Cell::kind == SlotKind::blank) {
        if (old.occupied() && old.kind() != SlotKind::blank) edit().boundsDirty = true;
    } else {
        edit().filled.grow(at.row, at.col);
    }
    edit().used.grow(at.row, at.col);
    edit().cells.put(std::move(cell));
}

template <class CharT>
void SheetImplT<CharT>::putNumber(CellPlace at, std::uint16_t ixfe, double value) {
    if (!std::isfinite(value)) {
        putBoolErr(at, ixfe, errorNumber, true);
    } else if (const auto rk = encodeRk(value)) {
        put(RkCell{at.row, at.col, ixfe, *rk});
    } else {
        put(NumberCell{at.row, at.col, ixfe, value});
    }
}

template <class CharT>
void SheetImplT<CharT>::putBoolErr(CellPlace at, std::uint16_t ixfe, int value, bool isError) {
    put(BoolErrCell{at.row, at.col, ixfe, static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(isError)});
}

template <class CharT>
void SheetImplT<CharT>::putLabelSst(CellPlace at, std::uint16_t ixfe, std::uint32_t isst) {
    put(LabelSstCell{at.row, at.col, ixfe, isst});
}

template <class CharT>
void SheetImplT<CharT>::putFormula(FormulaCell cell) {
    put(std::move(cell));
}

template <class CharT>
void SheetImplT<CharT>::putBlank(CellPlace at, std::uint16_t ixfe) {
    put(BlankCell{at.row, at.col, ixfe});
}

template <class CharT>
void SheetImplT<CharT>::eraseCell(CellPlace at) {
    if (!slotAt(at).occupied()) return;
    handOnShared(at);
    edit().cells.index().erase(at.row, at.col);
    edit().boundsDirty = true;
}

// The interface.

template <class CharT>
int SheetImplT<CharT>::cellType(int row, int col) {
    return guard<int>(cellEmpty, [&] { return kindOf(slotAt(place(row, col))); });
}

template <class CharT>
int SheetImplT<CharT>::kindOf(CellSlot slot) const {
    if (!slot.occupied()) return cellEmpty;
    switch (slot.kind()) {
        case SlotKind::none:
            return cellEmpty;
        case SlotKind::rk:
        case SlotKind::number:
            return cellNumber;
        case SlotKind::labelSst:
        case SlotKind::label:
            return cellString;
        case SlotKind::blank:
            return cellBlank;
        case SlotKind::boolErr:
            return parts().cells.template get<BoolErrCell>(slot).isError != 0 ? cellError : cellBoolean;
        case SlotKind::formula:
            return parts().cells.template get<FormulaCell>(slot).value.kind();
    }
    return cellEmpty;
}

template <class CharT>
void SheetImplT<CharT>::rowCells(int row, int col, int count, std::uint8_t* kinds, double* numbers) {
    std::fill_n(kinds, count, std::uint8_t{cellEmpty});
    guard(false, [&] {
        const CellPlace first = place(row, col);
        const int held = std::min(count, static_cast<int>(SheetIndex::colLimit) - col);
        for (int i = 0; i < held; ++i) {
            const CellSlot slot = parts().cells.at(first.row, static_cast<std::uint16_t>(col + i));
            kinds[i] = static_cast<std::uint8_t>(kindOf(slot));
            if (kinds[i] == cellNumber) numbers[i] = numberOf(slot).value_or(0.0);
        }
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::isFormulaCell(int row, int col) {
    return guard(false, [&] { return cellAs<FormulaCell>(slotAt(place(row, col))) != nullptr; });
}

template <class CharT>
typename SheetImplT<CharT>::Format* SheetImplT<CharT>::cellFormatAt(int row, int col) {
    return guard<Format*>(nullptr, [&] { return formatOf(slotAt(place(row, col))); });
}

template <class CharT>
bool SheetImplT<CharT>::setCellFormatAt(int row, int col, Format* format) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        if (format == nullptr) throw vlerror(biff::msg::formatNull);
        const std::uint16_t ixfe = _book.ixfeOf(format);
        if (const CellSlot slot = slotAt(at); slot.occupied()) {
            setIxfe(slot, ixfe);
        } else {
            putBlank(at, ixfe);
        }
        return true;
    });
}

template <class CharT>
std::optional<double> SheetImplT<CharT>::numberOf(CellSlot slot) const {
    if (const auto* rk = cellAs<RkCell>(slot)) return decodeRk(rk->rk);
    if (const auto* number = cellAs<NumberCell>(slot)) return number->value;
    if (const auto* formula = cellAs<FormulaCell>(slot); formula != nullptr && formula->value.kind() == cellNumber) {
        return formula->value.number();
    }
    return std::nullopt;
}

template <class CharT>
double SheetImplT<CharT>::readNumber(int row, int col, Format** format) {
    return guard(0.0, [&] {
        const CellSlot slot = slotAt(place(row, col));
        const auto value = numberOf(slot);
        if (!value) throw vlerror(biff::msg::notNumber);
        giveFormat(slot, format);
        return *value;
    });
}

template <class CharT>
bool SheetImplT<CharT>::writeNumber(int row, int col, double value, Format* format) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        putNumber(at, ixfeFor(at, format), value);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::readBool(int row, int col, Format** format) {
    return guard(false, [&] {
        const CellSlot slot = slotAt(place(row, col));
        const auto* cell = cellAs<BoolErrCell>(slot);
        const auto* formula = cellAs<FormulaCell>(slot);
        const bool isBool =
            (cell != nullptr && cell->isError == 0) || (formula != nullptr && formula->value.kind() == cellBoolean);
        if (!isBool) throw vlerror(biff::msg::notBool);
        giveFormat(slot, format);
        return cell != nullptr ? cell->value != 0 : formula->value.boolean();
    });
}

template <class CharT>
bool SheetImplT<CharT>::writeBool(int row, int col, bool value, Format* format, int errorCode) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        const bool isError = errorCode != errorNone;
        putBoolErr(at, ixfeFor(at, format), isError ? errorCode : static_cast<int>(value), isError);
        return true;
    });
}

template <class CharT>
int SheetImplT<CharT>::readError(int row, int col, Format** format) {
    return guard<int>(errorNone, [&]() -> int {
        const CellSlot slot = slotAt(place(row, col));
        const auto* cell = cellAs<BoolErrCell>(slot);
        const auto* formula = cellAs<FormulaCell>(slot);
        const bool isError =
            (cell != nullptr && cell->isError != 0) || (formula != nullptr && formula->value.kind() == cellError);
        if (!isError) throw vlerror(biff::msg::notError);
        giveFormat(slot, format);
        return cell != nullptr ? cell->value : formula->value.error();
    });
}

template <class CharT>
bool SheetImplT<CharT>::writeError(int row, int col, int errorCode, Format* format) {
    return writeBool(row, col, false, format, errorCode);
}

template <class CharT>
bool SheetImplT<CharT>::readBlank(int row, int col, Format** format) {
    return guard(false, [&] {
        const CellSlot slot = slotAt(place(row, col));
        if (format == nullptr) throw vlerror(biff::msg::formatOutNull);
        if (cellAs<BlankCell>(slot) == nullptr) throw vlerror(biff::msg::notBlank);
        giveFormat(slot, format);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::writeBlank(int row, int col, Format* format) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        putBlank(at, ixfeFor(at, format));
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::cellFrom(int* row, int* col) {
    auto atRow = static_cast<std::uint32_t>(std::max(*row, 0)), atCol = static_cast<std::uint32_t>(std::max(*col, 0));
    const bool found = ask(false, [&](const SheetParts& p) { return p.cells.index().nextOccupied(atRow, atCol); });
    if (!found) return false;
    *row = static_cast<int>(atRow);
    *col = static_cast<int>(atCol);
    return true;
}

template <class CharT>
bool SheetImplT<CharT>::isDate(int row, int col) {
    return guard(false, [&] {
        const CellSlot slot = slotAt(place(row, col));
        if (cellAs<RkCell>(slot) == nullptr && cellAs<NumberCell>(slot) == nullptr) return false;
        const FormatImplT<CharT>* format = _book.xf(parts().cells.ixfe(slot));
        if (format == nullptr) return false;
        if (const auto known = builtInShowsDate(format->ifmt())) return *known;
        const wchar_t* const text = _book.numFormatText(format->ifmt());
        return text != nullptr && showsDate(text);
    });
}

template <class CharT>
bool SheetImplT<CharT>::copyCell(int rowSrc, int colSrc, int rowDst, int colDst) {
    return guard(false, [&] {
        const CellSlot slot = slotAt(place(rowSrc, colSrc));
        const CellPlace to = place(rowDst, colDst);
        if (!slot.occupied()) throw vlerror(biff::msg::emptyCell);
        if (to.row == rowSrc && to.col == colSrc) return true;  // tokens of others may stand behind it
        if (const auto* text = cellAs<LabelSstCell>(slot)) {
            putString(to, text->ixfe, text->isst);
        } else if (const auto* formula = cellAs<FormulaCell>(slot)) {
            FormulaCell copy = formula->copyWithoutTail(_book.pool());
            if (const auto* const anchor = anchorOf(*formula)) biff::giveOwnTokens(copy, *anchor, _book.pool());
            put(movedTo(std::move(copy), to));
        } else if (const auto* rk = cellAs<RkCell>(slot)) {
            put(movedTo(*rk, to));
        } else if (const auto* number = cellAs<NumberCell>(slot)) {
            put(movedTo(*number, to));
        } else if (const auto* blank = cellAs<BlankCell>(slot)) {
            put(movedTo(*blank, to));
        } else if (const auto* boolErr = cellAs<BoolErrCell>(slot)) {
            put(movedTo(*boolErr, to));
        } else if (const auto* label = cellAs<LabelCell>(slot)) {
            put(movedTo(*label, to));
        } else {
            throw vlerror(biff::msg::unknownCell);
        }
        return true;
    });
}

}  // namespace vellum
