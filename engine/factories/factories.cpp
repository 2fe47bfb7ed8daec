#include "engine/factories/factories.h"

#include <exception>
#include <memory>

#include "biff/book/book.h"
#include "xlsx/book/book_proxy.h"

namespace vellum {

template <class CharT>
IBookT<CharT>* vlCreateBook() noexcept {
    try {
        return std::make_unique<BookImplT<CharT>>().release();
    } catch (const std::exception&) {
        return nullptr;
    }
}

template <class CharT>
IBookT<CharT>* vlCreateXMLBook() noexcept {
    try {
        return std::make_unique<XMLBookProxy<CharT>>().release();
    } catch (const std::exception&) {
        return nullptr;
    }
}

template IBookT<char>* vlCreateBook<char>() noexcept;
template IBookT<wchar_t>* vlCreateBook<wchar_t>() noexcept;
template IBookT<char>* vlCreateXMLBook<char>() noexcept;
template IBookT<wchar_t>* vlCreateXMLBook<wchar_t>() noexcept;

}  // namespace vellum
