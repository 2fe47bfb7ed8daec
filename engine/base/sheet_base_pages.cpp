// View and printing of a sheet that no engine has built.
#include "engine/base/sheet_base.h"

namespace vellum {

template <class CharT>
int SheetBaseT<CharT>::rowBreakAt(int) {
    return notAvailable<int>(-1);
}

template <class CharT>
int SheetBaseT<CharT>::rowBreakTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
int SheetBaseT<CharT>::columnBreakAt(int) {
    return notAvailable<int>(-1);
}

template <class CharT>
int SheetBaseT<CharT>::columnBreakTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::setRowBreak(int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setColumnBreak(int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::showsGridlines() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setShowsGridlines(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::printsGridlines() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setPrintsGridlines(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::zoomPercent() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::setZoomPercent(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::printZoomPercent() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::setPrintZoomPercent(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::printFitPages(int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setPrintFitPages(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isLandscape() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setLandscape(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::paperCode() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::setPaperCode(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::headerText() {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::setHeaderText(const CharT*, double) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::headerMargin() {
    return notAvailable<double>(0.0);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::footerText() {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::setFooterText(const CharT*, double) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::footerMargin() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::centersHorizontally() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setCentersHorizontally(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::centersVertically() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setCentersVertically(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::marginLeft() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::setMarginLeft(double) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::marginRight() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::setMarginRight(double) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::marginTop() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::setMarginTop(double) {
    return notAvailable<bool>(false);
}

template <class CharT>
double SheetBaseT<CharT>::marginBottom() {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool SheetBaseT<CharT>::setMarginBottom(double) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::printsRowColHeadings() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setPrintsRowColHeadings(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::repeatRows(int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setRepeatRows(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::repeatColumns(int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setRepeatColumns(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::printAreaRange(int*, int*, int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setPrintAreaRange(int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::clearRepeats() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::clearPrintAreaRange() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::topLeftCell(int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setTopLeftCell(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isRightToLeft() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setRightToLeft(bool) {
    return notAvailable<bool>(false);
}

}  // namespace vellum
