#include "cli/workbook/book_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>

#include "engine/api/ibook_tries.h"
#include "engine/factories/factories.h"

namespace cli {

bool isPackage(const std::string& path) {
    char magic[4] = {};
    std::ifstream(path, std::ios::binary).read(magic, sizeof magic);
    const std::string_view found(magic, sizeof magic);
    // A local entry, the end of an empty archive, or the mark of an archive in several volumes.
    return found == "PK\3\4" || found == "PK\5\6" || found == "PK\7\10";
}

BookPtr loadBook(const std::string& path, std::string& error, std::string* firstTry) {
    BookPtr book(isPackage(path) ? vellum::vlCreateXMLBook<char>() : vellum::vlCreateBook<char>());
    if (!book) {
        error = "cannot create book";
        return book;
    }
    book->setLocale("UTF-8");
    if (!book->loadFile(path.c_str())) {
        error = book->errorMessage();
        if (access(path.c_str(), R_OK) != 0) error.append(": ").append(std::strerror(errno));
        auto* const tries = dynamic_cast<vellum::IBookTries*>(book.get());
        if (firstTry && tries) *firstTry = tries->firstTryText();
        book.reset();
        return book;
    }
    book->setLocale("UTF-8");  // a Strict package comes up in a new book, which knows nothing of the first call
    return book;
}

}  // namespace cli
