// New books, and what an operation on them takes beside another one.
#pragma once
#include <cstdio>
#include <ctime>

#include "cli/workbook/book_file.h"
#include "engine/api/ibook.h"
#include "engine/factories/factories.h"

namespace bench {

/// With one sheet.
inline cli::BookPtr newBook(bool binary) {
    cli::BookPtr book(binary ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>());
    book->setLocale("UTF-8");
    book->addSheet("S");
    return book;
}

/// Processor time.
template <class Work>
double seconds(Work&& work) {
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

inline void tell(const char* what, double took, double against) {
    std::printf("%-44s %8.4f s  %6.2f times\n", what, took, against > 0 ? took / against : 1.0);
}

}  // namespace bench
