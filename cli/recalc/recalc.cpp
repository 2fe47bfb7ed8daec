#include "cli/recalc/recalc.h"

#include <sys/stat.h>

#include <charconv>
#include <ostream>
#include <sstream>
#include <string_view>

#include "cli/backup/backups.h"
#include "cli/recalc/calculated_copy.h"
#include "cli/workbook/cell_name.h"
#include "engine/api/enums.h"
#include "engine/api/iformula_results.h"
#include "engine/api/isheet.h"

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

/// Characters that XML does not take are read from packages as _x0007_, and written as they are.
std::string withoutEscapes(std::string_view text) {
    constexpr std::size_t length = 7;
    std::string out;
    while (!text.empty()) {
        unsigned unit = 0;
        const bool framed = text.size() >= length && text.starts_with("_x") && text[length - 1] == '_';
        const char* const end = text.data() + length - 1;
        if (framed && std::from_chars(text.data() + 2, end, unit, 16).ptr == end && unit > 0 && unit < 0x80) {
            out += static_cast<char>(unit);
            text.remove_prefix(length);
        } else {
            out += text.front();
            text.remove_prefix(1);
        }
    }
    return out;
}

vellum::FormulaResult resultAt(Sheet& sheet, int row, int col, bool package) {
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
            result.text = text == nullptr ? "" : package ? withoutEscapes(text) : text;
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

bool replaceResults(Sheet& sheet, Sheet* calculated, bool package, Recalculated& outcome) {
    auto* const cells = dynamic_cast<vellum::ISheetCells*>(&sheet);
    auto* const results = dynamic_cast<vellum::IFormulaResults*>(&sheet);
    const char* const name = sheet.sheetName();
    const std::string prefix = std::string(name != nullptr ? name : "").append("!");
    for (int row = 0, col = 0; cells->cellFrom(&row, &col); ++col) {
        if (!sheet.isFormulaCell(row, col)) continue;
        ++outcome.formulas;
        const vellum::FormulaResult before = resultAt(sheet, row, col, package);
        const bool known = calculated != nullptr && calculated->isFormulaCell(row, col);
        const vellum::FormulaResult now = known ? resultAt(*calculated, row, col, true) : before;
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

bool replaceAll(vellum::IBookT<char>& book, vellum::IBookT<char>& calculated, bool package, Recalculated& outcome) {
    for (int i = 0; i < book.sheetCount(); ++i) {
        Sheet* const sheet = worksheetAt(book, i);
        if (sheet == nullptr) continue;
        const char* const name = book.sheetNameAt(i);
        if (!replaceResults(*sheet, sheetNamed(calculated, name != nullptr ? name : ""), package, outcome))
            return false;
    }
    return true;
}

/// What changes whenever somebody writes the file.
struct FileState {
    explicit FileState(const std::string& path) { known = stat(path.c_str(), &info) == 0; }
    [[nodiscard]] bool isSame(const FileState& other) const {
        return known && other.known && info.st_ino == other.info.st_ino && info.st_size == other.info.st_size &&
               info.st_mtim.tv_sec == other.info.st_mtim.tv_sec && info.st_mtim.tv_nsec == other.info.st_mtim.tv_nsec;
    }
    struct stat info {};
    bool known;
};

/// Saves in place. The file as it was lies beside it until what was saved has been loaded again.
bool saveKept(vellum::IBookT<char>& book, const std::string& path, Backups* caller, std::string& error) {
    Backups own;
    Backups& backups = caller != nullptr ? *caller : own;
    if (!backups.keep(path, true, error)) return false;
    const bool saved = book.saveFile(path.c_str());
    if (!saved) error = book.errorMessage();
    if (caller != nullptr) return saved;
    std::ostringstream told;
    if (own.finish(saved, false, told)) return true;
    error += (error.empty() ? "" : "; ") + told.str();
    while (!error.empty() && error.back() == '\n') error.pop_back();
    return false;
}

}  // namespace

std::optional<Recalculated> makeResultsAnew(const std::string& path, int seconds, Backups* backups,
                                            std::string& error) {
    const FileState before(path);
    const BookPtr book = loadBook(path, error);
    const BookPtr calculated = book ? calculatedCopy(path, seconds, error) : nullptr;
    if (!calculated) return std::nullopt;
    Recalculated outcome;
    if (!replaceAll(*book, *calculated, isPackage(path), outcome)) {
        error = book->errorMessage();
        return std::nullopt;
    }
    if (outcome.changed == 0) return outcome;
    if (!before.isSame(FileState(path))) {
        error = "another program changed the file while its copy was calculated; nothing is saved";
        return std::nullopt;
    }
    if (!saveKept(*book, path, backups, error)) return std::nullopt;
    return outcome;
}

int recalc(const std::string& path, int seconds, std::ostream& out, std::ostream& errors) {
    constexpr int trouble = 2;
    std::string error;
    const std::optional<Recalculated> outcome = makeResultsAnew(path, seconds, nullptr, error);
    if (!outcome) {
        errors << path << ": " << error << '\n';
        return trouble;
    }
    out << path << ": " << outcome->formulas << " formulas, " << outcome->changed << " results changed\n";
    for (const std::string& cell : outcome->notCalculated) out << "not calculated: " << cell << '\n';
    return out.flush() ? 0 : trouble;
}

}  // namespace cli
