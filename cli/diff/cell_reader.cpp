#include "cli/diff/cell_reader.h"

#include <bit>
#include <charconv>
#include <functional>

#include "engine/api/enums.h"

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

std::uint64_t mixed(std::uint64_t hash, std::uint64_t value) {
    hash ^= value + 0x9e3779b97f4a7c15 + (hash << 12) + (hash >> 4);
    hash *= 0xff51afd7ed558ccd;
    return hash ^ (hash >> 32);
}

std::uint64_t textHash(const char* text) {
    return text != nullptr ? std::hash<std::string_view>()(text) : 1;
}

bool isText(int kind) {
    return kind == vellum::cellString || kind == vellum::cellDate;
}

/// Blank cells are empty. A formula without a value has a text without characters: binary workbooks tell one so.
int kindOf(Sheet& sheet, int row, int col, bool formula) {
    const int kind = sheet.cellType(row, col);
    if (kind != vellum::cellEmpty && kind != vellum::cellBlank) return kind;
    return formula ? vellum::cellString : vellum::cellEmpty;
}

}  // namespace

std::uint64_t CellReader::codeHash(int id) {
    const auto found = _codeHashes.find(id);
    if (found != _codeHashes.end()) return found->second;
    return _codeHashes.emplace(id, textHash(_texts.code(id).c_str())).first->second;
}

CellHash CellReader::hash(Sheet& sheet, int row, int col) {
    if (passesOver(row, col)) return {};
    CellHash found = contentHash(sheet, row, col);
    if (!_aspects.looks) return found;
    const Look& look = _looks.of(sheet.cellFormatAt(row, col));
    if (look.isUsual) return found;
    found.exact = mixed(found.exact, look.hash);
    found.loose = mixed(found.loose, look.hash);
    return found;
}

CellHash CellReader::contentHash(Sheet& sheet, int row, int col) {
    const bool formula = sheet.isFormulaCell(row, col);
    const int kind = kindOf(sheet, row, col, formula);
    if (kind == vellum::cellEmpty && !formula) return {};
    vellum::IFormatT<char>* format = nullptr;
    std::uint64_t value = mixed(static_cast<std::uint64_t>(kind), 7);
    switch (kind) {
        case vellum::cellNumber:
            value = mixed(value, std::bit_cast<std::uint64_t>(sheet.readNumber(row, col, &format) + 0.0));
            break;
        case vellum::cellBoolean:
            value = mixed(value, sheet.readBool(row, col, &format));
            break;
        case vellum::cellError:
            value = mixed(value, static_cast<std::uint64_t>(sheet.readError(row, col, &format)));
            break;
        default:
            if (isText(kind)) value = mixed(value, textHash(sheet.readString(row, col, &format)));
    }
    CellHash found{value, value, formula};
    if (formula && _aspects.formulas) {
        found.loose = 99;
        found.exact = mixed(value, textHash(sheet.readFormula(row, col, &format)));
    }
    if (_aspects.formats) {
        const std::uint64_t code = codeHash(formatId(format));
        found.exact = mixed(found.exact, code);
        found.loose = mixed(found.loose, code);
    }
    return found;
}

CellContent CellReader::nothing() {
    CellContent found;
    if (_aspects.looks) found.look = &_looks.of(nullptr);
    return found;
}

CellContent CellReader::content(Sheet& sheet, int row, int col) {
    CellContent found;
    if (passesOver(row, col)) return found;
    found.isFormula = sheet.isFormulaCell(row, col);
    found.kind = kindOf(sheet, row, col, found.isFormula);
    if (_aspects.looks) found.look = &_looks.of(sheet.cellFormatAt(row, col));
    if (found.isEmpty()) return found;
    vellum::IFormatT<char>* format = nullptr;
    switch (found.kind) {
        case vellum::cellNumber:
            found.number = sheet.readNumber(row, col, &format);
            found.hasValue = found.number != 0 || std::string_view(_book.errorMessage()) == "ok";
            break;
        case vellum::cellBoolean:
            found.number = sheet.readBool(row, col, &format);
            break;
        case vellum::cellError:
            found.number = sheet.readError(row, col, &format);
            break;
        default:
            if (!isText(found.kind)) break;
            if (const char* const text = sheet.readString(row, col, &format)) found.text = text;
    }
    if (found.isFormula && _aspects.formulas) {
        if (const char* const text = sheet.readFormula(row, col, &format)) found.formula = text;
    }
    if (_aspects.formats) found.code = _texts.code(formatId(format));
    if (!_aspects.formulas) found.isFormula = false;
    return found;
}

bool CellContent::sameValue(const CellContent& other) const {
    return kind == other.kind && hasValue == other.hasValue && text == other.text &&
           (number == other.number || (number != number && other.number != other.number));
}

std::string CellContent::shown() const {
    switch (kind) {
        case vellum::cellNumber: {
            if (!hasValue) return "no value";
            char digits[40];
            return std::string(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
        }
        case vellum::cellBoolean:
            return number != 0 ? "TRUE" : "FALSE";
        case vellum::cellError:
            return std::string(shownError(static_cast<int>(number)));
        case vellum::cellString:
        case vellum::cellDate:
            return '"' + text + '"';
        default:
            return "nothing";
    }
}

}  // namespace cli
