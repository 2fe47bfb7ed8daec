#include "cli/workbook/pictures.h"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <vector>

#include "cli/workbook/book_file.h"
#include "cli/workbook/cell_name.h"
#include "cli/workbook/picture_file.h"
#include "engine/api/enums.h"
#include "engine/api/iobjects.h"
#include "engine/api/isheet.h"

namespace cli {
namespace {

using Book = vellum::IBookT<char>;

/// By picture: the areas that it covers, such as "Sheet1!B2:D9".
std::vector<std::string> placesOf(Book& book) {
    std::vector<std::string> places(static_cast<std::size_t>(std::max(book.pictureTotal(), 0)));
    for (int i = 0; i < book.sheetCount(); ++i) {
        auto* const sheet = book.sheetKindAt(i) == vellum::sheetWorksheet ? book.getSheet(i) : nullptr;
        const int total = sheet ? sheet->pictureTotalOnSheet() : 0;
        for (int n = 0; n < total; ++n) {
            int row = 0, col = 0, rowBottom = 0, colRight = 0, unused = 0;
            const int id =
                sheet->sheetPictureAt(n, &row, &col, &rowBottom, &colRight, &unused, &unused, &unused, &unused);
            if (id < 0 || static_cast<std::size_t>(id) >= places.size()) continue;
            std::string& text = places[static_cast<std::size_t>(id)];
            if (!text.empty()) text += ", ";
            const char* const name = book.sheetNameAt(i);
            text.append(name ? name : "").append("!").append(cellName(row, col));
            text.append(":").append(cellName(rowBottom, colRight));
        }
    }
    return places;
}

std::string fileName(int id, std::string_view extension) {
    std::string digits = std::to_string(id);
    if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
    return "picture-" + digits + "." + std::string(extension);
}

bool writeFile(const std::filesystem::path& path, std::string_view front, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << front << bytes;
    file.close();
    return !file.fail();
}

class PictureWriter {
public:
    PictureWriter(Book& book, std::filesystem::path folder, std::ostream& out, std::ostream& errors)
        : _book(book), _folder(std::move(folder)), _out(out), _errors(errors), _places(placesOf(book)) {}

    /// False when the picture is damaged or its file cannot be written.
    bool write(int id) {
        const char* data = nullptr;
        std::size_t size = 0;
        const int kind = _book.pictureAt(id, &data, &size);
        if (!data) return refused(id);
        int width = 0, height = 0;
        if (auto* const sizes = dynamic_cast<vellum::IBookPictures*>(&_book)) sizes->pictureSize(id, &width, &height);
        const std::string_view bytes(data, size);
        const PictureFile file = pictureFile(kind, bytes, width, height);
        const std::string name = fileName(id, file.extension);
        if (!writeFile(_folder / name, file.front, bytes)) {
            _errors << (_folder / name).string() << ": can't write the file\n";
            return false;
        }
        _out << name << "  " << file.front.size() + size << " bytes";
        if (width > 0 && height > 0) _out << "  " << width << " x " << height;
        const std::string& place = _places[static_cast<std::size_t>(id)];
        if (!place.empty()) _out << "  " << place;
        _out << '\n';
        return true;
    }

private:
    /// A picture that was deleted leaves an empty entry, of which nothing can be given; that is no damage.
    bool refused(int id) {
        const std::string_view text = _book.errorMessage();
        const bool isDamaged = text == "error in compressed data";
        (isDamaged ? _errors : _out) << "picture " << id << ": " << text << '\n';
        return !isDamaged;
    }

    Book& _book;
    std::filesystem::path _folder;
    std::ostream& _out;
    std::ostream& _errors;
    std::vector<std::string> _places;
};

}  // namespace

int pictures(const std::string& path, const std::string& folder, std::ostream& out, std::ostream& errors) {
    std::string error;
    const BookPtr book = loadBook(path, error);
    if (!book) {
        errors << path << ": " << error << '\n';
        return 1;
    }
    std::error_code failed;
    std::filesystem::create_directories(folder, failed);
    if (failed) {
        errors << folder << ": " << failed.message() << '\n';
        return 1;
    }
    PictureWriter writer(*book, folder, out, errors);
    bool good = true;
    for (int id = 0; id < book->pictureTotal(); ++id) good = writer.write(id) && good;
    if (!out.flush()) errors << "can't write the report\n";
    return good && out ? 0 : 1;
}

}  // namespace cli
