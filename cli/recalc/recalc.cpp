#include "cli/recalc/recalc.h"

#include <ostream>
#include <vector>

#include "cli/recalc/calculated_copy.h"
#include "cli/workbook/cell_name.h"
#include "engine/api/enums.h"
#include "engine/api/iformula_results.h"
#include "engine/api/isheet.h"

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

struct Outcome {
    long long formulas = 0, changed = 0;
    std::vector<std::string> notCalculated;
};

vellum::FormulaResult resultAt(Sheet& sheet, int row, int col) {
    vellum::FormulaResult result;
    switch (sheet.cellType(row, col)) {
        case vellum::cellNumber:
            result.number = sheet.readNumber(row, col);
            break;
        case vellum::cellBoolean:
            result.kind = vellum::cellBoolean;
            result.boolean = sheet.readBool(row, col);
            break;
        case vellum::cellError:
            result.kind = vellum::cellError;
            result.error = sheet.readError(row, col);
            break;
        default: {
            result.kind = vellum::cellString;
            const char* const text = sheet.readString(row, col);
            result.text = text != nullptr ? text : "";
        }
    }
    return result;
}

bool isSame(const vellum::FormulaResult& a, const vellum::FormulaResult& b) {
    if (a.kind != b.kind) return false;
    switch (a.kind) {
        case vellum::cellNumber:
            return a.number == b.number;
        case vellum::cellBoolean:
            return a.boolean == b.boolean;
        case vellum::cellError:
            return a.error == b.error;
        default:
            return a.text == b.text;
    }
}

/// A function or name that the other program does not have gives #NAME?.
bool isUnknown(const vellum::FormulaResult& before, const vellum::FormulaResult& now) {
    return now.kind == vellum::cellError && now.error == vellum::errorName && !isSame(before, now);
}

bool replaceResults(Sheet& sheet, Sheet* calculated, Outcome& outcome) {
    auto* const cells = dynamic_cast<vellum::ISheetCells*>(&sheet);
    auto* const results = dynamic_cast<vellum::IFormulaResults*>(&sheet);
    const char* const name = sheet.sheetName();
    const std::string prefix = std::string(name != nullptr ? name : "").append("!");
    for (int row = 0, col = 0; cells->cellFrom(&row, &col); ++col) {
        if (!sheet.isFormulaCell(row, col)) continue;
        ++outcome.formulas;
        const vellum::FormulaResult before = resultAt(sheet, row, col);
        const bool known = calculated != nullptr && calculated->isFormulaCell(row, col);
        const vellum::FormulaResult now = known ? resultAt(*calculated, row, col) : before;
        if (!known || isUnknown(before, now)) {
            outcome.notCalculated.push_back(prefix + cellName(row, col));
            continue;
        }
        if (isSame(before, now) && results->isCalculated(row, col)) continue;
        if (!results->setResult(row, col, now)) return false;
        ++outcome.changed;
    }
    return true;
}

Sheet* worksheetAt(vellum::IBookT<char>& book, int index) {
    return book.sheetKindAt(index) == vellum::sheetWorksheet ? book.getSheet(index) : nullptr;
}

/// The sheet of the same name; the other program keeps their names.
Sheet* sheetNamed(vellum::IBookT<char>& book, const std::string& name) {
    for (int i = 0; i < book.sheetCount(); ++i) {
        const char* const found = book.sheetNameAt(i);
        if (found != nullptr && name == found) return worksheetAt(book, i);
    }
    return nullptr;
}

}  // namespace

int recalc(const std::string& path, std::ostream& out, std::ostream& errors) {
    constexpr int trouble = 2;
    std::string error;
    const BookPtr book = loadBook(path, error);
    const BookPtr calculated = book ? calculatedCopy(path, error) : nullptr;
    if (!calculated) {
        errors << path << ": " << error << '\n';
        return trouble;
    }
    Outcome outcome;
    for (int i = 0; i < book->sheetCount(); ++i) {
        Sheet* const sheet = worksheetAt(*book, i);
        if (sheet == nullptr) continue;
        const char* const name = book->sheetNameAt(i);
        if (!replaceResults(*sheet, sheetNamed(*calculated, name != nullptr ? name : ""), outcome)) {
            errors << path << ": " << book->errorMessage() << '\n';
            return trouble;
        }
    }
    if (outcome.changed > 0 && !book->saveFile(path.c_str())) {
        errors << path << ": " << book->errorMessage() << '\n';
        return trouble;
    }
    out << path << ": " << outcome.formulas << " formulas, " << outcome.changed << " results changed\n";
    for (const std::string& cell : outcome.notCalculated) out << "not calculated: " << cell << '\n';
    return out.flush() ? 0 : trouble;
}

}  // namespace cli
