#include "cli/explain/facts/sheet_view.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "engine/api/enums.h"
#include "engine/api/iformat.h"
#include "engine/facts/error_text.h"
#include "engine/facts/number_format.h"
#include "host/values/cell_values.h"

namespace cli::explain {
namespace {

constexpr int percentFormats[] = {9, 10};  // "0%" and "0.00%" of the built-in ones

int formatIdOf(const RangeSpec& range, int row, int col) {
    Sheet* const sheet = worksheetOf(range);
    auto* const format = sheet ? sheet->cellFormatAt(row, col) : nullptr;
    return format ? format->numFormat() : 0;
}

std::string formatText(const RangeSpec& range, int id) {
    const char* const text = workbookOf(range)->customNumFormatText(id);
    return text ? text : "";
}

bool showsPercent(const RangeSpec& range, int row, int col) {
    const int id = formatIdOf(range, row, col);
    if (id == percentFormats[0] || id == percentFormats[1]) return true;
    return id >= vellum::firstCustomFormat && formatText(range, id).find('%') != std::string::npos;
}

std::string digitsOf(double value) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 15).ptr};
}

std::string shownNumber(const RangeSpec& range, int row, int col) {
    const double value = range.ops.readReal(range.sheet, row, col, nullptr);
    if (!worksheetOf(range)) return digitsOf(value);
    char text[quillet::dateTextSize];
    if (hasDateFormat(range, row, col) && quillet::dateCellText(range.book, value, text)) return text;
    return showsPercent(range, row, col) ? digitsOf(value * 100) + "%" : digitsOf(value);
}

}  // namespace

Book* workbookOf(const RangeSpec& range) {
    return range.ops.cellKind == quillet::workbookTableOps.cellKind ? static_cast<Book*>(range.book) : nullptr;
}

Sheet* worksheetOf(const RangeSpec& range) {
    return workbookOf(range) ? static_cast<Sheet*>(range.sheet) : nullptr;
}

std::string errorIn(const RangeSpec& range, int row, int col) {
    Sheet* const sheet = worksheetOf(range);
    const auto text = sheet ? vellum::errorTextOf(sheet->readError(row, col)) : std::string_view{};
    return text.empty() ? "error" : std::string(text);
}

bool hasDateFormat(const RangeSpec& range, int row, int col) {
    if (!worksheetOf(range)) return false;
    if (range.ops.cellIsDate(range.sheet, row, col)) return true;
    const int id = formatIdOf(range, row, col);
    if (const auto known = vellum::builtInShowsDate(static_cast<unsigned>(id))) return *known;
    const std::string text = formatText(range, id);
    return vellum::showsDate(std::wstring(text.begin(), text.end()));  // its letters are ASCII
}

std::string shownText(const RangeSpec& range, int row, int col) {
    switch (range.ops.cellKind(range.sheet, row, col)) {
        case quillet::cellNumber:
            return shownNumber(range, row, col);
        case quillet::cellText: {
            const char* const text = range.ops.readText(range.sheet, row, col, nullptr);
            return text ? text : "";
        }
        case quillet::cellBoolean:
            return range.ops.readBool(range.sheet, row, col, nullptr) != 0 ? "TRUE" : "FALSE";
        case quillet::cellError:
            return errorIn(range, row, col);
        default:
            return {};
    }
}

std::string kindName(const RangeSpec& range, int row, int col) {
    std::string name = isFormula(range, row, col) ? "formula " : "";
    switch (range.ops.cellKind(range.sheet, row, col)) {
        case quillet::cellNumber:
            return name + "number";
        case quillet::cellText:
            return name + "text";
        case quillet::cellBoolean:
            return name + "boolean";
        case quillet::cellError:
            return name + "error";
        default:
            return name + "empty";
    }
}

bool isFormula(const RangeSpec& range, int row, int col) {
    Sheet* const sheet = worksheetOf(range);
    return sheet && sheet->isFormulaCell(row, col);
}

}  // namespace cli::explain
