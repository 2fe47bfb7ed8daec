#include "engine/factories.h"

#include <exception>
#include <memory>

#ifdef VELLUM_HAS_BIFF
#include "biff/book.h"
#endif
#ifdef VELLUM_HAS_XLSX
#include "xlsx/book_proxy.h"
#endif

namespace vellum {

template <class CharT>
IBookT<CharT>* vlCreateBook() noexcept {
#ifdef VELLUM_HAS_BIFF
    try {
        return std::make_unique<BookImplT<CharT>>().release();
    } catch (const std::exception&) {
        return nullptr;
    }
#else
    return nullptr;
#endif
}

template <class CharT>
IBookT<CharT>* vlCreateXMLBook() noexcept {
#ifdef VELLUM_HAS_XLSX
    try {
        return std::make_unique<XMLBookProxy<CharT>>().release();
    } catch (const std::exception&) {
        return nullptr;
    }
#else
    return nullptr;
#endif
}

template IBookT<char>* vlCreateBook<char>() noexcept;
template IBookT<wchar_t>* vlCreateBook<wchar_t>() noexcept;
template IBookT<char>* vlCreateXMLBook<char>() noexcept;
template IBookT<wchar_t>* vlCreateXMLBook<wchar_t>() noexcept;

}  // namespace vellum
