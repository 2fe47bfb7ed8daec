// A package of hostile parts: load, read the cells, save, and load the result. An input is an archive, or a text that
// stands for one, which mutations do not break: "=name" begins a line and an entry, the lines below are its content.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "zip/zip_reader.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

struct Release {
    void operator()(Book* book) const { book->release(); }
};

constexpr int maxCells = 100'000;
constexpr std::size_t maxEntries = 64;

std::string archiveOf(std::string_view text) {
    zip::ZipReader archive;
    archive.createInMemory();
    for (std::size_t count = 0; count < maxEntries && text.starts_with('='); ++count) {
        const std::size_t line = text.find('\n');
        if (line == std::string_view::npos) break;
        const std::string name(text.substr(1, line - 1));
        const std::size_t next = text.find("\n=", line);
        const std::size_t end = next == std::string_view::npos ? text.size() : next;
        const std::string_view content = end > line ? text.substr(line + 1, end - line - 1) : std::string_view();
        if (name.size() < 256) archive.addEntry(name, content.data(), content.size());
        text = next == std::string_view::npos ? std::string_view() : text.substr(next + 1);
    }
    archive.finish();
    char* data = nullptr;
    std::size_t size = 0;
    archive.takeBuffer(&data, &size);
    std::string bytes(data, size);
    std::free(data);
    return bytes;
}

void visit(Sheet& sheet, int& left) {
    auto* const cells = dynamic_cast<vellum::ISheetCells*>(&sheet);
    for (int row = 0, col = 0; left > 0 && cells->cellFrom(&row, &col); ++col, --left) {
        vellum::IFormatT<char>* format = nullptr;
        if (sheet.cellType(row, col) == vellum::cellNumber) sheet.readNumber(row, col, &format);
        sheet.readString(row, col, &format);
        sheet.isDate(row, col);
        if (format) format->fillPattern(), format->borderLeftColor(), format->font();
        if (sheet.isFormulaCell(row, col)) sheet.readFormula(row, col, &format);
        if (sheet.isRichTextCell(row, col)) sheet.readRichText(row, col, &format);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string bytes = input.starts_with('=') ? archiveOf(input) : std::string(input);
    const std::unique_ptr<Book, Release> book(vellum::vlCreateXMLBook<char>());
    if (!book->loadMemory(bytes.data(), bytes.size())) {
        if (book->sheetCount() != 0) std::abort();
        return 0;
    }
    int left = maxCells;
    for (int i = 0; i < book->sheetCount() && left > 0; ++i, --left) {
        if (Sheet* const sheet = book->getSheet(i)) visit(*sheet, left);
    }
    // The operations that delete parts.
    if (book->sheetCount() > 1 && size % 2 == 0) book->removeSheet(0);
    const int sheets = book->sheetCount();
    const char* saved = nullptr;
    std::size_t savedSize = 0;
    if (!book->saveMemory(&saved, &savedSize)) return 0;
    const std::vector<char> copy(saved, saved + savedSize);
    if (!book->loadMemory(copy.data(), copy.size()) || book->sheetCount() != sheets) std::abort();
    return 0;
}
