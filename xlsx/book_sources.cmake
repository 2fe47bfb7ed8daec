# The book, its package and sheet list.
set(QUILLET_XLSX_BOOK_SOURCES
    book.cpp book_load.cpp book_proxy.cpp book_save.cpp book_settings.cpp book_sheets.cpp sheet_names.cpp)
