// BookImplT is compiled here, once for each form of it: its pieces are sources of this one.
#include "biff/book/book.h"

#include "biff/book/book.cpp"
#include "biff/book/book_files.cpp"
#include "biff/book/book_formats.cpp"
#include "biff/book/book_kept.cpp"
#include "biff/book/book_names.cpp"
#include "biff/book/book_pictures.cpp"
#include "biff/book/book_settings.cpp"
#include "biff/book/book_sheets.cpp"

namespace vellum {

template class BookImplT<char>;
template class BookImplT<wchar_t>;

}  // namespace vellum
