#include "cli/explain/stale/formula_references.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "host/text/text_compare.h"

namespace cli::explain {
namespace {

using quillet::isDigit;
using quillet::isLetter;

bool isNamePart(char c) {
    return isLetter(c) || isDigit(c) || c == '_' || c == '.' || c == '$' || c == '\\' || c == '?' ||
           static_cast<unsigned char>(c) >= 0x80;
}

/// A corner: a cell, a whole column (no row) or a whole row (no column).
struct Corner {
    int row = -1, col = -1;
    bool rowMoves = false, colMoves = false;
};

std::optional<Corner> cornerOf(std::string_view text, int lastRow, int lastColumn) {
    Corner corner;
    std::size_t at = 0;
    const auto dollar = [&] { return at < text.size() && text[at] == '$' ? (++at, true) : false; };
    corner.colMoves = !dollar();
    const std::size_t letters = at;
    int col = 0;
    for (; at < text.size() && isLetter(text[at]) && at - letters < 4; ++at) {
        col = col * 26 + (quillet::lowerAscii(text[at]) - 'a' + 1);
    }
    if (at - letters > 3 || col > lastColumn + 1) return std::nullopt;
    if (at > letters) corner.col = col - 1;
    corner.rowMoves = (at > letters || corner.colMoves) && !dollar();  // "$6" has the dollar of its row
    const std::size_t digits = at;
    int row = 0;
    for (; at < text.size() && isDigit(text[at]) && at - digits < 8; ++at) row = row * 10 + (text[at] - '0');
    if (at > digits) {
        if (row < 1 || row > lastRow + 1) return std::nullopt;
        corner.row = row - 1;
    }
    if (at != text.size() || (corner.row < 0 && corner.col < 0)) return std::nullopt;
    return corner;
}

/// One walk over a formula.
class Reader {
public:
    Reader(std::string_view text, int sheet, const FormulaNames& names, References& out)
        : _text(text), _sheet(sheet), _names(names), _out(out) {}

    void run() {
        while (_at < _text.size()) step();
    }

private:
    /// The sheets in front of a reference.
    struct Sheets {
        int first = ownSheet, last = ownSheet;
        bool elsewhere = false;  // in another book
    };

    char peek(std::size_t ahead = 0) const { return _at + ahead < _text.size() ? _text[_at + ahead] : '\0'; }

    void step() {
        const char c = peek();
        if (c == '"') {
            skipQuoted('"');
        } else if (c == '\'') {
            const std::string name = skipQuoted('\'');
            if (peek() == '!') reference(sheetsOf(name));
        } else if (c == '#') {  // an error value, in front of what is left of a reference, too: #REF!$A:$B
            ++_at;
            while (isNamePart(peek()) || peek() == '/' || peek() == '!' || peek() == ':') ++_at;
        } else if (c == '[') {
            bracket();
        } else if (isNamePart(c)) {
            word();
        } else {
            // Corners are taken together with their colon: any other one joins what is calculated, or named.
            _out.cannotTell = _out.cannotTell || c == ':';
            ++_at;
        }
    }

    std::string skipQuoted(char quote) {
        std::string inside;
        for (++_at; _at < _text.size(); ++_at) {
            if (_text[_at] == quote) {
                if (peek(1) != quote) break;
                ++_at;
            }
            inside += _text[_at];
        }
        if (_at < _text.size()) ++_at;
        return inside;
    }

    std::string_view takeWord() {
        const std::size_t first = _at;
        while (isNamePart(peek())) ++_at;
        return _text.substr(first, _at - first);
    }

    /// A number of another book in front of a sheet, or columns of the table that the formula stands in.
    void bracket() {
        skipBrackets();
        if (isNamePart(peek())) {
            takeWord();
            if (peek() == '!') {
                reference({ownSheet, ownSheet, true});
                return;
            }
        } else if (peek() == '!') {
            reference({ownSheet, ownSheet, true});
            return;
        }
        _out.cannotTell = true;
    }

    void skipBrackets() {
        int depth = 0;
        do {
            if (peek() == '[') ++depth;
            if (peek() == ']') --depth;
            ++_at;
        } while (depth > 0 && _at < _text.size());
    }

    std::optional<Corner> corner(std::string_view text) const {
        return cornerOf(text, _names.lastRow(), _names.lastColumn());
    }

    Sheets sheetsOf(std::string_view name) const {
        if (name.find('[') != name.npos) return {ownSheet, ownSheet, true};
        const std::size_t colon = name.find(':');
        const int first = _names.sheetIndex(name.substr(0, colon));
        const int last = colon == name.npos ? first : _names.sheetIndex(name.substr(colon + 1));
        return {std::min(first, last), std::max(first, last), first < 0 || last < 0};
    }

    void word() {
        const std::size_t start = _at;
        const std::string_view name = takeWord();
        if (peek() == '!') return reference(sheetsOf(name));
        if (peek() == ':' && isNamePart(peek(1))) {  // several sheets, or the corners of an area
            const std::size_t colon = _at++;
            takeWord();
            if (peek() == '!') return reference(sheetsOf(_text.substr(start, _at - start)));
            _at = colon;
        }
        _at = start;
        operand({});
    }

    /// At the '!' behind the sheets.
    void reference(Sheets sheets) {
        ++_at;
        if (isNamePart(peek())) operand(sheets);
    }

    /// A cell, an area, a function, or a name.
    void operand(Sheets sheets) {
        const std::string_view text = takeWord();
        if (peek() == '(') return function(text);
        const auto first = corner(text);
        if (peek() == ':' && first) {
            const std::size_t colon = _at++;
            const auto last = corner(takeWord());
            if (last && peek() != '(' && (first->row < 0) == (last->row < 0) && (first->col < 0) == (last->col < 0)) {
                return add(sheets, *first, *last);
            }
            _at = colon;
            _out.cannotTell = true;  // an area whose end is calculated
        }
        if (first && first->row >= 0 && first->col >= 0) return add(sheets, *first, *first);
        if (first && first->col < 0) return;  // a number
        if (!sheets.elsewhere && !isDigit(text.front()) && text.front() != '.' && !isLogical(text)) {
            _names.resolve(text, sheets.first == ownSheet ? _sheet : sheets.first, _out);
        }
        if (peek() == '[') skipBrackets();  // columns of a table
    }

    static bool isLogical(std::string_view text) {
        return quillet::equalIgnoringCase(text, "TRUE") || quillet::equalIgnoringCase(text, "FALSE");
    }

    void function(std::string_view name) {
        const bool moves = quillet::equalIgnoringCase(name, "INDIRECT") || quillet::equalIgnoringCase(name, "OFFSET");
        _out.cannotTell = _out.cannotTell || moves;
    }

    void add(Sheets sheets, Corner a, Corner b) {
        if (sheets.elsewhere) return;
        Reference r;
        r.sheetFirst = sheets.first;
        r.sheetLast = sheets.last;
        if (a.row > b.row) {
            std::swap(a.row, b.row);
            std::swap(a.rowMoves, b.rowMoves);
        }
        r.rowFirst = a.row < 0 ? 0 : a.row;
        r.rowLast = b.row < 0 ? lastSheetRow : b.row;
        r.rowFirstMoves = a.row >= 0 && a.rowMoves;
        r.rowLastMoves = b.row >= 0 && b.rowMoves;
        if (a.col > b.col) std::swap(a.colMoves, b.colMoves);
        r.colFirstMoves = a.col >= 0 && a.colMoves;
        r.colLastMoves = b.col >= 0 && b.colMoves;
        r.colFirst = a.col < 0 ? 0 : std::min(a.col, b.col);
        r.colLast = a.col < 0 ? lastSheetColumn : std::max(a.col, b.col);
        _out.areas.push_back(r);
    }

    std::string_view _text;
    int _sheet;
    const FormulaNames& _names;
    References& _out;
    std::size_t _at = 0;
};

}  // namespace

void moveBy(References& references, int rows, int cols) {
    for (Reference& area : references.areas) {
        if (area.rowFirstMoves) area.rowFirst += rows;
        if (area.rowLastMoves) area.rowLast += rows;
        if (area.colFirstMoves) area.colFirst += cols;
        if (area.colLastMoves) area.colLast += cols;
        if (area.rowFirst > area.rowLast) {
            std::swap(area.rowFirst, area.rowLast);
            std::swap(area.rowFirstMoves, area.rowLastMoves);
        }
        if (area.colFirst > area.colLast) {
            std::swap(area.colFirst, area.colLast);
            std::swap(area.colFirstMoves, area.colLastMoves);
        }
    }
}

void addReferences(std::string_view text, int sheet, const FormulaNames& names, References& out) {
    Reader(text, sheet, names, out).run();
}

}  // namespace cli::explain
