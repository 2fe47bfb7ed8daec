// XMLBookImplT is compiled here, once for each form of it: its pieces are sources of this one.
#include "xlsx/book/book.h"

#include "xlsx/book/book.cpp"
#include "xlsx/book/book_load.cpp"
#include "xlsx/book/book_names.cpp"
#include "xlsx/book/book_pictures.cpp"
#include "xlsx/book/book_save.cpp"
#include "xlsx/book/book_settings.cpp"
#include "xlsx/book/book_sheets.cpp"
#include "xlsx/book/book_styles.cpp"

namespace vellum {

template class XMLBookImplT<char, excelNormal_tag>;
template class XMLBookImplT<char, excelStrict_tag>;
template class XMLBookImplT<wchar_t, excelNormal_tag>;
template class XMLBookImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
