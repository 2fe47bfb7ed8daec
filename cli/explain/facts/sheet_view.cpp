#include "cli/explain/facts/sheet_view.h"

#include <charconv>

#include "cli/formats/cell_text.h"
#include "engine/api/iformat.h"
#include "engine/api/iformula_results.h"
#include "engine/facts/error_text.h"
#include "engine/facts/number_format.h"

namespace cli::explain {
namespace {

int formatIdOf(const RangeSpec& range, int row, int col) {
    Sheet* const sheet = worksheetOf(range);
    auto* const format = sheet ? sheet->cellFormatAt(row, col) : nullptr;
    return format ? format->numFormat() : 0;
}

std::string formatText(const RangeSpec& range, int id) {
    const char* const text = workbookOf(range)->customNumFormatText(id);
    return text ? text : "";
}

std::string digitsOf(double value) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 15).ptr};
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
    if (Sheet* const sheet = worksheetOf(range)) return CellTexts(*workbookOf(range)).at(*sheet, row, col).text;
    switch (range.ops.cellKind(range.sheet, row, col)) {
        case quillet::cellNumber:
            return digitsOf(range.ops.readReal(range.sheet, row, col, nullptr));
        case quillet::cellText: {
            const char* const text = range.ops.readText(range.sheet, row, col, nullptr);
            return text ? text : "";
        }
        case quillet::cellBoolean:
            return range.ops.readBoolText(range.sheet, row, col);
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

bool isUncalculated(const RangeSpec& range, int row, int col) {
    if (!isFormula(range, row, col)) return false;
    auto* const results = dynamic_cast<vellum::IFormulaResults*>(worksheetOf(range));
    return results != nullptr && !results->isCalculated(row, col);
}

bool isFormula(const RangeSpec& range, int row, int col) {
    Sheet* const sheet = worksheetOf(range);
    return sheet && sheet->isFormulaCell(row, col);
}

}  // namespace cli::explain
