#include "cli/workbook/resave.h"

#include "cli/workbook/book_file.h"

namespace cli {

int resave(const std::string& in, const std::string& out, std::ostream& errors) {
    std::string error;
    const BookPtr book = loadBook(in, error);
    if (!book) {
        errors << error << '\n';
        return 1;
    }
    if (book->saveFile(out.c_str())) return 0;
    errors << book->errorMessage() << '\n';
    return 1;
}

}  // namespace cli
