#include "engine/base/book_base.h"

#include <type_traits>

#include "engine/api/enums.h"
#include "engine/failure/guarded.h"
#include "engine/failure/messages.h"

namespace vellum {

template <class CharT>
int BookBaseT<CharT>::engineVersion() {
    return engineVersionNumber;
}

template <class CharT>
bool BookBaseT<CharT>::setLocale(const char* name) {
    return guarded(_lastError, false, [&] {
        _locale.set(name, std::is_same_v<CharT, wchar_t>);
        return true;
    });
}

template <class CharT>
const char* BookBaseT<CharT>::errorMessage() {
    return _lastError.text();
}

template <class CharT>
bool BookBaseT<CharT>::loadFile(const CharT*, const CharT*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::loadFileSheet(const CharT*, int, const CharT*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::loadFileRows(const CharT*, int, int, int, const CharT*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::loadWithoutEmptyCells(const CharT*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::loadFileOutline(const CharT*) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::saveFile(const CharT*, bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::loadMemory(const void*, std::size_t, int, int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::saveMemory(const char**, std::size_t*) {
    return notAvailable<bool>(false);
}

template <class CharT>
ISheetT<CharT>* BookBaseT<CharT>::addSheet(const CharT*, ISheetT<CharT>*) {
    return notAvailable<ISheetT<CharT>*>(nullptr);
}

template <class CharT>
ISheetT<CharT>* BookBaseT<CharT>::insertSheet(int, const CharT*, ISheetT<CharT>*) {
    return notAvailable<ISheetT<CharT>*>(nullptr);
}

template <class CharT>
ISheetT<CharT>* BookBaseT<CharT>::getSheet(int) {
    return notAvailable<ISheetT<CharT>*>(nullptr);
}

template <class CharT>
const CharT* BookBaseT<CharT>::sheetNameAt(int) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
int BookBaseT<CharT>::sheetKindAt(int) {
    return notAvailable<int>(sheetOther);
}

template <class CharT>
bool BookBaseT<CharT>::moveSheet(int, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::removeSheet(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int BookBaseT<CharT>::sheetCount() {
    return notAvailable<int>(0);
}

template <class CharT>
IFormatT<CharT>* BookBaseT<CharT>::newFormat(IFormatT<CharT>*) {
    return notAvailable<IFormatT<CharT>*>(nullptr);
}

template <class CharT>
IFontT<CharT>* BookBaseT<CharT>::newFont(IFontT<CharT>*) {
    return notAvailable<IFontT<CharT>*>(nullptr);
}

template <class CharT>
IRichStringT<CharT>* BookBaseT<CharT>::newRichString() {
    return notAvailable<IRichStringT<CharT>*>(nullptr);
}

template <class CharT>
int BookBaseT<CharT>::newCustomNumFormat(const CharT*) {
    return notAvailable<int>(0);
}

template <class CharT>
const CharT* BookBaseT<CharT>::customNumFormatText(int) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
IFormatT<CharT>* BookBaseT<CharT>::formatAt(int) {
    return notAvailable<IFormatT<CharT>*>(nullptr);
}

template <class CharT>
int BookBaseT<CharT>::formatTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
IFontT<CharT>* BookBaseT<CharT>::fontAt(int) {
    return notAvailable<IFontT<CharT>*>(nullptr);
}

template <class CharT>
int BookBaseT<CharT>::fontTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
double BookBaseT<CharT>::datePack(int, int, int, int, int, int, int) {
    return notAvailable<double>(0.0);
}

template <class CharT>
bool BookBaseT<CharT>::dateUnpack(double, int*, int*, int*, int*, int*, int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
int BookBaseT<CharT>::packColor(int, int, int) {
    return notAvailable<int>(noColor);
}

template <class CharT>
bool BookBaseT<CharT>::unpackColor(int, int*, int*, int*) {
    return notAvailable<bool>(false);
}

template <class CharT>
int BookBaseT<CharT>::activeSheetIndex() {
    return notAvailable<int>(-1);
}

template <class CharT>
bool BookBaseT<CharT>::setActiveSheetIndex(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int BookBaseT<CharT>::pictureTotal() {
    return notAvailable<int>(-1);
}

template <class CharT>
int BookBaseT<CharT>::pictureAt(int, const char**, std::size_t*) {
    return notAvailable<int>(pictureUnknown);
}

template <class CharT>
int BookBaseT<CharT>::addPictureFile(const CharT*) {
    return notAvailable<int>(-1);
}

template <class CharT>
int BookBaseT<CharT>::addPictureData(const void*, std::size_t) {
    return notAvailable<int>(-1);
}

template <class CharT>
int BookBaseT<CharT>::addPictureLink(const CharT*, bool) {
    return notAvailable<int>(-1);
}

template <class CharT>
const CharT* BookBaseT<CharT>::defaultFontName(int*) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool BookBaseT<CharT>::setDefaultFontSpec(const CharT*, int) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::usesR1C1() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::setUsesR1C1(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::usesRgbColors() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::setUsesRgbColors(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
int BookBaseT<CharT>::calculationMode() {
    return notAvailable<int>(calculateAuto);
}

template <class CharT>
bool BookBaseT<CharT>::setCalculationMode(int) {
    return notAvailable<bool>(false);
}

template <class CharT>
int BookBaseT<CharT>::binaryVersion() {
    return notAvailable<int>(0);
}

template <class CharT>
bool BookBaseT<CharT>::isDate1904() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::setDate1904(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::isTemplateFile() {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::setTemplateFile(bool) {
    return notAvailable<bool>(false);
}

template <class CharT>
bool BookBaseT<CharT>::isWriteProtected() {
    return notAvailable<bool>(false);
}

template <class CharT>
int BookBaseT<CharT>::keptTotal() {
    return 0;
}

template <class CharT>
const char* BookBaseT<CharT>::keptAt(int, std::size_t*) {
    return nullptr;
}

template class BookBaseT<char>;
template class BookBaseT<wchar_t>;

}  // namespace vellum
