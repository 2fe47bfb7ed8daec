#include "engine/base/book_base.h"

#include <type_traits>

#include "engine/api/enums.h"
#include "engine/failure/guarded.h"

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

template class BookBaseT<char>;
template class BookBaseT<wchar_t>;

}  // namespace vellum
