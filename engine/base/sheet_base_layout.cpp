// Rows, columns and blocks of a sheet that no engine has built.
#include "engine/base/sheet_base.h"

namespace vellum {

template <class CharT>
double SheetBaseT<CharT>::columnWidth(int) {
    return notAvailable<double>(-1.0);
}

template <class CharT>
double SheetBaseT<CharT>::rowHeight(int) {
    return notAvailable<double>(-1.0);
}

template <class CharT>
int SheetBaseT<CharT>::columnWidthPixels(int) {
    return notAvailable<int>(-1);
}

template <class CharT>
int SheetBaseT<CharT>::rowHeightPixels(int) {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::setColumn(int, int, double, Format*, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setRow(int, double, Format*, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isRowHidden(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setRowHidden(int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isColumnHidden(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setColumnHidden(int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::defaultRowHeightValue() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::setDefaultRowHeightValue(double) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::mergeAt(int, int, int*, int*, int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::addMerge(int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeMergeAt(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::mergeTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::mergeByIndex(int, int*, int*, int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeMergeByIndex(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::splitAt(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::splitPosition(int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::groupRowRange(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::groupColumnRange(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::summaryBelow() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setSummaryBelow(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::summaryRight() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setSummaryRight(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::insertColumns(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::insertRows(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeColumns(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeRows(int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::autoFitColumns(int, int, int, int) {
    return notAvailable<bool>(false);
}

}  // namespace vellum
