#include "engine/base/format_base.h"

#include "engine/api/enums.h"
#include "engine/failure/messages.h"

namespace vellum {

template <class CharT>
IFontT<CharT>* FormatBaseT<CharT>::font() {
    return notAvailable<IFontT<CharT>*>(nullptr);
}

template <class CharT>
bool FormatBaseT<CharT>::setFont(IFontT<CharT>*) {
    return notAvailable<bool>(false);
}

template <class CharT>
int FormatBaseT<CharT>::numFormat() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setNumFormat(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::alignHorizontal() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setAlignHorizontal(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::alignVertical() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setAlignVertical(int) {
    notAvailable();
}

template <class CharT>
bool FormatBaseT<CharT>::wrapsText() {
    return notAvailable<bool>(false);
}

template <class CharT>
void FormatBaseT<CharT>::setWrapsText(bool) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::rotation() {
    return notAvailable<int>(0);
}

template <class CharT>
bool FormatBaseT<CharT>::setRotation(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int FormatBaseT<CharT>::indent() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setIndent(int) {
    notAvailable();
}

template <class CharT>
bool FormatBaseT<CharT>::shrinksToFit() {
    return notAvailable<bool>(false);
}

template <class CharT>
void FormatBaseT<CharT>::setShrinksToFit(bool) {
    notAvailable();
}

template <class CharT>
void FormatBaseT<CharT>::setBorderAll(int) {
    notAvailable();
}

template <class CharT>
void FormatBaseT<CharT>::setBorderColorAll(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderLeft() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderLeft(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderRight() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderRight(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderTop() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderTop(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderBottom() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderBottom(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderLeftColor() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderLeftColor(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderRightColor() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderRightColor(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderTopColor() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderTopColor(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderBottomColor() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderBottomColor(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderDiagonal() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderDiagonal(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderDiagonalStyle() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderDiagonalStyle(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::borderDiagonalColor() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setBorderDiagonalColor(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::fillPattern() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setFillPattern(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::patternForeColor() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setPatternForeColor(int) {
    notAvailable();
}

template <class CharT>
int FormatBaseT<CharT>::patternBackColor() {
    return notAvailable<int>(0);
}

template <class CharT>
void FormatBaseT<CharT>::setPatternBackColor(int) {
    notAvailable();
}

template <class CharT>
bool FormatBaseT<CharT>::isLocked() {
    return notAvailable<bool>(false);
}

template <class CharT>
void FormatBaseT<CharT>::setLocked(bool) {
    notAvailable();
}

template <class CharT>
bool FormatBaseT<CharT>::isFormulaHidden() {
    return notAvailable<bool>(false);
}

template <class CharT>
void FormatBaseT<CharT>::setFormulaHidden(bool) {
    notAvailable();
}

template class FormatBaseT<char>;
template class FormatBaseT<wchar_t>;

}  // namespace vellum
