#include "engine/base/rich_string_base.h"

#include "engine/api/enums.h"
#include "engine/failure/messages.h"

namespace vellum {

template <class CharT>
IFontT<CharT>* RichStringBaseT<CharT>::addFont(IFontT<CharT>*) {
    return notAvailable<IFontT<CharT>*>(nullptr);
}

template <class CharT>
bool RichStringBaseT<CharT>::addRun(const CharT*, IFontT<CharT>*) {
    return notAvailable<bool>(false);
}

template <class CharT>
const CharT* RichStringBaseT<CharT>::runAt(int, IFontT<CharT>**) {
    return notAvailable<const CharT*>(nullptr);
}

template <class CharT>
int RichStringBaseT<CharT>::runTotal() {
    return notAvailable<int>(-1);
}

template class RichStringBaseT<char>;
template class RichStringBaseT<wchar_t>;

}  // namespace vellum
