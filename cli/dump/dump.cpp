#include "cli/dump/dump.h"

#include <string>
#include <string_view>

#include "cli/dump/dump_features.h"
#include "cli/dump/dump_names.h"
#include "cli/dump/dump_objects.h"
#include "cli/workbook/book_file.h"
#include "cli/workbook/cell_name.h"
#include "cli/workbook/json_lines.h"
#include "engine/api/enums.h"
#include "engine/api/isheet.h"
#include "engine/facts/error_text.h"

namespace cli {
namespace {

std::string_view errorText(int code) {
    const std::string_view text = vellum::errorTextOf(code);
    return text.empty() ? "#UNKNOWN!" : text;
}

class SheetDump {
public:
    SheetDump(vellum::IBookT<char>& book, vellum::ISheetT<char>& sheet, bool formulas, JsonLines& out,
              std::ostream& errors)
        : _book(book), _sheet(sheet), _formulas(formulas), _out(out), _errors(errors) {}

    void run() {
        auto* const cells = dynamic_cast<vellum::ISheetCells*>(&_sheet);
        if (!cells) return;
        for (int row = 0, col = 0; cells->cellFrom(&row, &col); ++col) cell(row, col);
    }

private:
    void cell(int row, int col) {
        _out.raw(R"({"r":)").integer(row).raw(R"(,"c":)").integer(col);
        switch (_sheet.cellType(row, col)) {
            case vellum::cellNumber:
                number(row, col);
                break;
            case vellum::cellString:
                text(row, col, R"(,"k":"s","v":)");
                break;
            case vellum::cellDate:
                text(row, col, R"(,"k":"d","v":)");
                break;
            case vellum::cellBoolean:
                _out.raw(_sheet.readBool(row, col) ? R"(,"k":"b","v":true)" : R"(,"k":"b","v":false)");
                break;
            case vellum::cellError:
                _out.raw(R"(,"k":"e","v":)").text(errorText(_sheet.readError(row, col)));
                break;
            default:
                _out.raw(R"(,"k":"z")");
                break;
        }
        if (_sheet.isFormulaCell(row, col)) formula(row, col);
        _out.raw("}").endLine();
    }

    void formula(int row, int col) {
        _out.raw(R"(,"f":true)");
        if (!_formulas) return;
        const char* const text = _sheet.readFormula(row, col);
        _out.raw(R"(,"t":)");
        if (text) {
            _out.text(text);
            return;
        }
        _out.raw(R"(null,"e":)").text(_book.errorMessage());
        tellFailure(row, col);
    }

    void number(int row, int col) {
        const double value = _sheet.readNumber(row, col);
        _out.raw(R"(,"k":"n","v":)");
        // Failure looks like 0.0: the formula has no cached value, or what stands there is no number.
        if (value == 0.0 && failed()) {
            _out.raw("null");
        } else {
            _out.number(value);
        }
    }

    void text(int row, int col, std::string_view before) {
        const char* const value = _sheet.readString(row, col);
        _out.raw(before);
        if (value) {
            _out.text(value);
            return;
        }
        _out.raw("null");
        if (failed()) tellFailure(row, col);
    }

    // The sheet's name sets the last error, so the text is taken first.
    void tellFailure(int row, int col) {
        const std::string text = _book.errorMessage();
        _errors << _sheet.sheetName() << '!' << cellName(row, col) << ": " << text << '\n';
    }

    bool failed() { return std::string_view(_book.errorMessage()) != "ok"; }

    vellum::IBookT<char>& _book;
    vellum::ISheetT<char>& _sheet;
    bool _formulas;
    JsonLines& _out;
    std::ostream& _errors;
};

}  // namespace

void dumpBook(vellum::IBookT<char>& book, const DumpOptions& options, std::ostream& out, std::ostream& errors) {
    JsonLines lines(out);
    // One notation for all: in R1C1 the text of shared tokens counts from no cell, and says less.
    if (options.formulas) book.setUsesR1C1(false);
    if (options.names) dumpNames(book, lines);
    if (options.objects) dumpImages(book, lines);
    const int count = book.sheetCount();
    for (int index = 0; index < count; ++index) {
        const char* const name = book.sheetNameAt(index);
        lines.raw(R"({"sheet":{"index":)").integer(index).raw(R"(,"name":)").text(name ? name : "");
        const int kind = book.sheetKindAt(index);
        if (kind == vellum::sheetChart) lines.raw(R"(,"kind":"chart")");
        if (kind == vellum::sheetOther) lines.raw(R"(,"kind":"other")");
        lines.raw("}}").endLine();
        if (kind != vellum::sheetWorksheet) continue;
        auto* const sheet = book.getSheet(index);
        if (sheet == nullptr) continue;
        if (options.cells) SheetDump(book, *sheet, options.formulas, lines, errors).run();
        if (options.features) dumpFeatures(book, *sheet, lines);
        if (options.objects) dumpObjects(*sheet, lines);
    }
}

int dump(const std::string& path, const DumpOptions& options, std::ostream& out, std::ostream& errors) {
    std::string error;
    const BookPtr book = loadBook(path, error);
    if (!book) {
        errors << path << ": " << error << '\n';
        return 1;
    }
    dumpBook(*book, options, out, errors);
    if (out.flush()) return 0;
    errors << "can't write the dump\n";
    return 1;
}

}  // namespace cli
