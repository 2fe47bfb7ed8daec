#include "engine/base/font_base.h"

#include "engine/api/enums.h"
#include "engine/failure/messages.h"

namespace vellum {

template <class CharT>
int FontBaseT<CharT>::size() {
    return notAvailable<int>(0);
}

template <class CharT>
void FontBaseT<CharT>::setSize(int) {
    notAvailable();
}

template <class CharT>
bool FontBaseT<CharT>::isItalic() {
    return notAvailable<bool>(false);
}

template <class CharT>
void FontBaseT<CharT>::setItalic(bool) {
    notAvailable();
}

template <class CharT>
bool FontBaseT<CharT>::isStrikeOut() {
    return notAvailable<bool>(false);
}

template <class CharT>
void FontBaseT<CharT>::setStrikeOut(bool) {
    notAvailable();
}

template <class CharT>
int FontBaseT<CharT>::color() {
    return notAvailable<int>(0);
}

template <class CharT>
void FontBaseT<CharT>::setColor(int) {
    notAvailable();
}

template <class CharT>
bool FontBaseT<CharT>::isBold() {
    return notAvailable<bool>(false);
}

template <class CharT>
void FontBaseT<CharT>::setBold(bool) {
    notAvailable();
}

template <class CharT>
int FontBaseT<CharT>::script() {
    return notAvailable<int>(0);
}

template <class CharT>
void FontBaseT<CharT>::setScript(int) {
    notAvailable();
}

template <class CharT>
int FontBaseT<CharT>::underline() {
    return notAvailable<int>(0);
}

template <class CharT>
void FontBaseT<CharT>::setUnderline(int) {
    notAvailable();
}

template <class CharT>
const CharT* FontBaseT<CharT>::name() {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
bool FontBaseT<CharT>::setName(const CharT*) {
    return notAvailable<bool>(false);
}

template class FontBaseT<char>;
template class FontBaseT<wchar_t>;

}  // namespace vellum
