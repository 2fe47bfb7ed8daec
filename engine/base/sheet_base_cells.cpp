// Cells of a sheet that no engine has built, and the walk over those that one has.
#include <algorithm>

#include "engine/api/enums.h"
#include "engine/base/sheet_base.h"

namespace vellum {

template <class CharT>
int SheetBaseT<CharT>::cellType(int, int) {
    return notAvailable<int>(cellEmpty);
}

template <class CharT>
bool SheetBaseT<CharT>::isFormulaCell(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
typename SheetBaseT<CharT>::Format* SheetBaseT<CharT>::cellFormatAt(int, int) {
    return notAvailable<Format*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::setCellFormatAt(int, int, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::readString(int, int, Format**) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::writeString(int, int, const CharT*, Format*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
IRichStringT<CharT>* SheetBaseT<CharT>::readRichText(int, int, Format**) {
    return notAvailable<IRichStringT<CharT>*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::writeRichText(int, int, IRichStringT<CharT>*, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::readNumber(int, int, Format**) {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::writeNumber(int, int, double, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::readBool(int, int, Format**) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::writeBool(int, int, bool, Format*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::readBlank(int, int, Format**) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::writeBlank(int, int, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::readFormula(int, int, Format**) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::writeFormula(int, int, const CharT*, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::writeFormulaNumber(int, int, const CharT*, double, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::writeFormulaText(int, int, const CharT*, const CharT*, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::writeFormulaBoolean(int, int, const CharT*, bool, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isDate(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isRichTextCell(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::readError(int, int, Format**) {
    return notAvailable<int>(errorNone);
}

template <class CharT>
bool SheetBaseT<CharT>::writeError(int, int, int, Format*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::clearRange(int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::copyCell(int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::firstRow() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::lastRow() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::firstCol() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::lastCol() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::firstFilledRow() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::lastFilledRow() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::firstFilledColumn() {
    return notAvailable<int>(0);
}

template <class CharT>
int SheetBaseT<CharT>::lastFilledColumn() {
    return notAvailable<int>(0);
}

template <class CharT>
bool SheetBaseT<CharT>::cellFrom(int* row, int* col) {
    const int firstRow = this->firstRow(), endRow = this->lastRow(), firstCol = this->firstCol(),
              endCol = this->lastCol();
    int r = *row, c = *col;
    if (r < firstRow) r = firstRow, c = firstCol;
    for (; r < endRow; ++r, c = firstCol) {
        for (c = std::max(c, firstCol); c < endCol; ++c) {
            if (this->cellType(r, c) == cellEmpty && !this->isFormulaCell(r, c)) continue;
            *row = r;
            *col = c;
            return true;
        }
    }
    return false;
}

}  // namespace vellum
