// What a sheet has beside its cells: names, comments, pictures, links, filters, rules. None of it built.
#include "engine/api/enums.h"
#include "engine/base/sheet_base.h"

namespace vellum {

template <class CharT>
const CharT* SheetBaseT<CharT>::readComment(int, int) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::writeComment(int, int, const CharT*, const CharT*, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeComment(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::pictureTotalOnSheet() {
    return notAvailable<int>(-1);
}

template <class CharT>
int SheetBaseT<CharT>::sheetPictureAt(int, int*, int*, int*, int*, int*, int*, int*, int*, const CharT**) {
    return notAvailable<int>(-1);
}

template <class CharT>
bool SheetBaseT<CharT>::removePictureAt(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::placePicture(int, int, int, double, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::placePictureSized(int, int, int, int, int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removePictureByIndex(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::namedRangeByName(const CharT*, int*, int*, int*, int*, int, bool*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setNamedRangeByName(const CharT*, int, int, int, int, int, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeNamedRange(const CharT*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::namedRangeCount() {
    return notAvailable<int>(-1);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::namedRange(int, int*, int*, int*, int*, int*, bool*) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
int SheetBaseT<CharT>::tableTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::tableAt(int, int*, int*, int*, int*, int*, int*) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
int SheetBaseT<CharT>::hyperlinkTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::hyperlinkAt(int, int*, int*, int*, int*) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::removeHyperlinkAt(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::addHyperlink(const CharT*, int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::hasFilter() {
    return notAvailable<bool>(false);
}

template <class CharT>
IAutoFilterT<CharT>* SheetBaseT<CharT>::filterObject() {
    return notAvailable<IAutoFilterT<CharT>*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::applyFilter() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeFilter() {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::sheetName() {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::setSheetName(const CharT*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::isProtected() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setProtected(bool, const CharT*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::visibilityState() {
    return notAvailable<int>(sheetVisible);
}

template <class CharT>
bool SheetBaseT<CharT>::setVisibilityState(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::parseCellAddress(const CharT*, int*, int*, bool*, bool*) {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* SheetBaseT<CharT>::formatCellAddress(int, int, bool, bool) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool SheetBaseT<CharT>::setTabPaletteColor(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::setTabRgbColor(int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::addIgnoredErrorRange(int, int, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::addValidationRule(int, int, int, int, int, int, const CharT*, const CharT*, bool, bool, bool,
                                          bool, const CharT*, const CharT*, const CharT*, const CharT*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::addValidationRuleNumeric(int, int, int, int, int, int, double, double, bool, bool, bool, bool,
                                                 const CharT*, const CharT*, const CharT*, const CharT*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool SheetBaseT<CharT>::removeValidationRules() {
    return notAvailable<bool>(false);
}

template <class CharT>
int SheetBaseT<CharT>::formControlTotal() {
    return notAvailable<int>(0);
}

template <class CharT>
IFormControlT<CharT>* SheetBaseT<CharT>::formControlAt(int) {
    return notAvailable<IFormControlT<CharT>*>(nullptr);
}

}  // namespace vellum
