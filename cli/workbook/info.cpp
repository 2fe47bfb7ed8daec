#include "cli/workbook/info.h"

#include <algorithm>
#include <iomanip>
#include <string_view>
#include <vector>

#include "cli/workbook/book_file.h"
#include "cli/workbook/cell_name.h"
#include "cli/workbook/info_features.h"
#include "cli/workbook/info_names.h"
#include "cli/workbook/info_objects.h"
#include "engine/api/enums.h"
#include "engine/api/isheet.h"

namespace cli {
namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

constexpr int biff8 = 0x600;

std::string formatName(Book& book) {
    const int version = book.binaryVersion();
    if (version == 0) return "Open XML workbook";
    return version == biff8 ? "binary workbook, BIFF8" : "binary workbook, BIFF5 (saved as BIFF8)";
}

const char* stateName(int state) {
    constexpr const char* names[] = {"visible", "hidden", "very hidden"};
    return state >= 0 && state < 3 ? names[state] : "?";
}

std::string usedArea(Sheet& sheet) {
    const int endRow = sheet.lastRow(), endCol = sheet.lastCol();
    if (endRow <= 0 || endCol <= 0) return "empty";
    return cellName(sheet.firstRow(), sheet.firstCol()) + ":" + cellName(endRow - 1, endCol - 1);
}

struct SheetLine {
    std::string name, kind, state, area, notes, objects;
};

SheetLine describe(Book& book, int index) {
    constexpr const char* kinds[] = {"worksheet", "chart", "other"};
    const char* const name = book.sheetNameAt(index);
    SheetLine line{name ? name : "", kinds[book.sheetKindAt(index)], "", "", "", ""};
    Sheet* const sheet = book.getSheet(index);
    if (!sheet) return line;
    line.state = stateName(sheet->visibilityState());
    if (book.sheetKindAt(index) == vellum::sheetWorksheet) {
        line.area = usedArea(*sheet);
        line.notes = featureNotes(*sheet);
        line.objects = objectSummary(*sheet);
    }
    return line;
}

/// Columns on a terminal, by characters: the bytes that go on a UTF-8 character take no place.
std::size_t shownWidth(std::string_view utf8) {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

void printSheets(Book& book, std::ostream& out) {
    std::vector<SheetLine> lines;
    std::size_t nameWidth = 4;
    for (int i = 0; i < book.sheetCount(); ++i) {
        lines.push_back(describe(book, i));
        nameWidth = std::max(nameWidth, shownWidth(lines.back().name));
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const SheetLine& line = lines[i];
        out << std::right << std::setw(5) << i + 1 << "  " << line.name
            << std::string(nameWidth - shownWidth(line.name) + 2, ' ') << std::left << std::setw(11) << line.kind
            << std::setw(13) << line.state << line.area << '\n';
        if (!line.notes.empty()) out << "       " << line.notes << '\n';
        if (!line.objects.empty()) out << "       " << line.objects << '\n';
    }
}

void printKept(Book& book, std::ostream& out) {
    auto* const kept = dynamic_cast<vellum::IBookKept*>(&book);
    const int total = kept ? kept->keptTotal() : 0;
    if (total <= 0) return;
    out << "Kept as bytes: " << total << '\n';
    for (int i = 0; i < total; ++i) {
        std::size_t size = 0;
        const char* const name = kept->keptAt(i, &size);
        out << std::right << std::setw(12) << size << "  " << (name ? name : "") << '\n';
    }
}

}  // namespace

int info(const std::string& path, std::ostream& out, std::ostream& errors) {
    std::string error, firstTry;
    const BookPtr book = loadBook(path, error, &firstTry);
    if (!book) {
        errors << path << ": " << error << '\n';
        if (!firstTry.empty() && firstTry != error) {
            errors << "  as a Transitional workbook: " << firstTry << "\n  as a Strict one: " << error << '\n';
        }
        return 1;
    }
    out << path << ": " << formatName(*book) << '\n';
    out << "Dates count from " << (book->isDate1904() ? "1904" : "1900");
    if (book->isTemplateFile()) out << ", template";
    if (book->isWriteProtected()) out << ", write protected";
    out << "\nCell formats: " << book->formatTotal() << ", fonts: " << book->fontTotal();
    const std::string pictures = pictureSummary(*book);
    if (!pictures.empty()) out << "\nPictures: " << pictures;
    out << "\nSheets: " << book->sheetCount() << '\n';
    printSheets(*book, out);
    printNames(*book, out);
    printKept(*book, out);
    if (out.flush()) return 0;
    errors << "can't write the report\n";
    return 1;
}

}  // namespace cli
