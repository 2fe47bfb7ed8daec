#include "cli/formats/cell_text.h"

#include "cli/formats/builtin_codes.h"
#include "engine/api/enums.h"
#include "engine/facts/error_text.h"

namespace cli {
namespace {

Side sideOf(int alignHorizontal, Side usual) {
    switch (alignHorizontal) {
        case vellum::alignLeft:
            return Side::left;
        case vellum::alignCenter:
        case vellum::alignCenterContinuous:
            return Side::center;
        case vellum::alignRight:
            return Side::right;
        default:
            return usual;
    }
}

}  // namespace

std::string_view shownError(int code) {
    const std::string_view text = vellum::errorTextOf(code);
    return text.empty() ? "#UNKNOWN!" : text;
}

const CellTexts::Known& CellTexts::known(int id) {
    const auto found = _known.find(id);
    if (found != _known.end()) return found->second;
    const char* const own = _book.customNumFormatText(id);
    std::string code(own != nullptr ? std::string_view(own) : builtInCode(id));
    if (code.empty()) code = "General";
    NumberFormat format(code);
    return _known.emplace(id, Known{std::move(code), std::move(format)}).first->second;
}

const std::string& CellTexts::code(int id) {
    return known(id).code;
}

ShownCell CellTexts::number(vellum::ISheetT<char>& sheet, int row, int col, const NumberFormat& format) {
    const double value = sheet.readNumber(row, col);
    // Failure looks like 0.0: a formula that was never calculated.
    if (value == 0.0 && std::string_view(_book.errorMessage()) != "ok") return {};
    return {format.show(value, _date1904), Side::right, true};
}

ShownCell CellTexts::at(vellum::ISheetT<char>& sheet, int row, int col) {
    const int kind = sheet.cellType(row, col);
    if (kind == vellum::cellEmpty || kind == vellum::cellBlank) return {};
    auto* const look = sheet.cellFormatAt(row, col);
    const NumberFormat& format = known(look != nullptr ? look->numFormat() : 0).format;
    ShownCell shown;
    switch (kind) {
        case vellum::cellNumber:
            shown = number(sheet, row, col, format);
            break;
        case vellum::cellBoolean:
            shown = {sheet.readBool(row, col) ? "TRUE" : "FALSE", Side::center, false};
            break;
        case vellum::cellError:
            shown = {std::string(shownError(sheet.readError(row, col))), Side::center, false};
            break;
        default: {
            const char* const text = sheet.readString(row, col);
            shown = {text != nullptr ? format.showText(text) : "", Side::left, false};
        }
    }
    if (look != nullptr) shown.side = sideOf(look->alignHorizontal(), shown.side);
    return shown;
}

}  // namespace cli
