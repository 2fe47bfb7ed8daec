#include "cli/diff/moved_formula.h"

#include <algorithm>

#include "cli/workbook/cell_name.h"

namespace cli {
namespace {

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.' ||
           c == '$' || c == '\\' || (c & 0x80) != 0;
}

/// "$B$3" taken apart; false for any other word.
bool readReference(std::string_view word, int& row, int& col, bool& rowFixed, bool& colFixed) {
    std::size_t i = 0;
    colFixed = word.starts_with('$');
    i += colFixed;
    std::size_t letters = 0;
    for (col = 0; i < word.size() && letters < 4; ++i, ++letters) {
        const char c = static_cast<char>(word[i] & ~0x20);
        if (c < 'A' || c > 'Z') break;
        col = col * 26 + (c - 'A' + 1);
    }
    rowFixed = i < word.size() && word[i] == '$';
    i += rowFixed;
    if (letters == 0 || letters > 3 || i == word.size() || word.size() - i > 7 || word[i] == '0') return false;
    for (row = 0; i < word.size(); ++i) {
        if (word[i] < '0' || word[i] > '9') return false;
        row = row * 10 + (word[i] - '0');
    }
    --row;
    --col;
    return true;
}

class FormulaMover {
public:
    FormulaMover(std::string_view text, const SheetAlignment& own, const AlignmentOf& alignmentOf)
        : _text(text), _own(own), _alignmentOf(alignmentOf) {}

    std::string run() {
        while (_at < _text.size()) {
            const char c = _text[_at];
            if (c == '"') {
                _out += quoted('"');
                _behindSheet = _behindReference = false;
            } else if (c == '\'') {
                sheet(quoted('\''));
            } else if (isWordCharacter(c)) {
                const std::size_t first = _at;
                while (_at < _text.size() && isWordCharacter(_text[_at])) ++_at;
                const std::string word(_text.substr(first, _at - first));
                _at < _text.size() && _text[_at] == '!' ? sheet(word) : reference(word);
            } else {
                // The second corner of an area lies on the sheet of the first.
                if (c != ':' || !_behindReference) _sheet = nullptr, _behindSheet = false;
                _behindReference = false;
                _out += c;
                ++_at;
            }
        }
        return std::move(_out);
    }

private:
    /// From a quote to its end, where a doubled one stands for itself.
    std::string quoted(char quote) {
        const std::size_t first = _at++;
        while (_at < _text.size() && (_text[_at] != quote || (_at + 1 < _text.size() && _text[_at + 1] == quote))) {
            _at += _text[_at] == quote ? 2 : 1;
        }
        _at = std::min(_at + 1, _text.size());
        return std::string(_text.substr(first, _at - first));
    }
    void sheet(const std::string& name) {
        _out += name;
        if (_at >= _text.size() || _text[_at] != '!') return;
        _out += _text[_at++];
        std::string plain = name;
        if (plain.size() > 1 && plain.front() == '\'') plain = plain.substr(1, plain.size() - 2);
        _sheet = _alignmentOf(plain);
        _behindSheet = true;
    }
    void reference(const std::string& word) {
        int row = 0, col = 0;
        bool rowFixed = false, colFixed = false;
        const bool call = _at < _text.size() && _text[_at] == '(';
        const SheetAlignment* const moves = _behindSheet ? _sheet : &_own;
        _behindReference = !call && readReference(word, row, col, rowFixed, colFixed);
        const int newRow = _behindReference && moves != nullptr ? moves->rowOf(row) : -1;
        const int newCol = _behindReference && moves != nullptr ? moves->columnOf(col) : -1;
        if (newRow < 0 || newCol < 0) {
            _out += word;
            return;
        }
        const std::string name = cellName(newRow, newCol);
        const std::size_t letters = name.find_first_of("0123456789");
        if (colFixed) _out += '$';
        _out.append(name, 0, letters);
        if (rowFixed) _out += '$';
        _out.append(name, letters);
    }

    std::string_view _text;
    const SheetAlignment& _own;
    const AlignmentOf& _alignmentOf;
    std::size_t _at = 0;
    std::string _out;
    const SheetAlignment* _sheet = nullptr;
    bool _behindSheet = false, _behindReference = false;
};

}  // namespace

std::string movedFormula(std::string_view text, const SheetAlignment& own, const AlignmentOf& alignmentOf) {
    return FormulaMover(text, own, alignmentOf).run();
}

}  // namespace cli
