#include "cli/formats/format_code.h"

#include <algorithm>
#include <charconv>

namespace cli {
namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool startsWith(std::string_view text, std::string_view lowerWord) {
    if (text.size() < lowerWord.size()) return false;
    return std::equal(lowerWord.begin(), lowerWord.end(), text.begin(), [](char a, char b) { return a == lower(b); });
}

/// Bytes of the character that a UTF-8 text begins with; 0 for an empty one.
std::size_t characterSize(std::string_view text) {
    std::size_t size = text.empty() ? 0 : 1;
    while (size < text.size() && (text[size] & 0xC0) == 0x80) ++size;
    return size;
}

/// Reads one section after the other.
class CodeReader {
public:
    explicit CodeReader(std::string_view code) : _rest(code) {}

    /// Whether a section follows, which may be empty.
    [[nodiscard]] bool hasMore() const { return _separated; }
    FormatSection section() {
        FormatSection found;
        _section = &found;
        _separated = false;
        while (!_rest.empty()) {
            const char c = _rest.front();
            if (c == ';') {
                _rest.remove_prefix(1);
                _separated = true;
                break;
            }
            if (!quoted(c) && !word() && !run(lower(c)) && !sign(c)) literal(characterSize(_rest));
        }
        if (found.isDate()) settleDate(found.pieces);
        return found;
    }

private:
    FormatPiece& add(Part part) { return _section->pieces.emplace_back(FormatPiece{part, {}, 0, 0}); }

    /// The next `size` bytes as they stand.
    void literal(std::size_t size) {
        addText(_rest.substr(0, size));
        _rest.remove_prefix(size);
    }
    void addText(std::string_view text) {
        auto& pieces = _section->pieces;
        if (pieces.empty() || pieces.back().part != Part::literal) add(Part::literal);
        pieces.back().text += text;
    }

    bool quoted(char c) {
        if (c == '"') {
            const std::size_t end = std::min(_rest.find('"', 1), _rest.size());
            addText(_rest.substr(1, end - 1));
            _rest.remove_prefix(std::min(end + 1, _rest.size()));
            return true;
        }
        if (c == '[') return bracket();
        if (c != '\\' && c != '_' && c != '*') return false;
        _rest.remove_prefix(1);
        const std::size_t size = characterSize(_rest);
        if (c == '\\') addText(_rest.substr(0, size));
        if (c == '_') addText(" ");  // a gap as wide as that character
        _rest.remove_prefix(size);   // what fills a cell's width is left out
        return true;
    }

    bool bracket() {
        const std::size_t end = _rest.find(']');
        if (end == std::string_view::npos) return false;
        const std::string_view inside = _rest.substr(1, end - 1);
        _rest.remove_prefix(end + 1);
        if (inside.starts_with('$')) {  // [$EUR-407]: a currency's sign, and a country
            addText(inside.substr(1, inside.find('-') == std::string_view::npos ? inside.npos : inside.find('-') - 1));
        } else if (!inside.empty() && std::string_view("<>=").find(inside.front()) != std::string_view::npos) {
            condition(inside);
        } else if (!inside.empty() && std::string_view("hms").find(lower(inside.front())) != std::string_view::npos &&
                   std::all_of(inside.begin(), inside.end(), [&](char c) { return lower(c) == lower(inside[0]); })) {
            FormatPiece& piece = add(Part::elapsed);
            piece.letter = lower(inside.front());
            piece.count = static_cast<int>(inside.size());
        }  // else a colour
        return true;
    }

    void condition(std::string_view inside) {
        const std::size_t digits = std::min(inside.find_first_not_of("<>="), inside.size());
        FormatCondition found{std::string(inside.substr(0, digits)), 0};
        std::from_chars(inside.data() + digits, inside.data() + inside.size(), found.limit);
        _section->condition = std::move(found);
    }

    bool word() {
        if (startsWith(_rest, "general")) {
            add(Part::general);
            _rest.remove_prefix(7);
            return true;
        }
        const std::size_t size = startsWith(_rest, "am/pm") ? 5 : startsWith(_rest, "a/p") ? 3 : 0;
        if (size == 0) return false;
        add(Part::halfDay).text = _rest.substr(0, size);
        _rest.remove_prefix(size);
        return true;
    }

    /// Letters of dates and times, in runs; minutes are told from months later.
    bool run(char c) {
        if (c == 'e' && _rest.size() > 1 && (_rest[1] == '+' || _rest[1] == '-')) {
            FormatPiece& piece = add(Part::exponent);
            piece.letter = _rest[1];
            piece.text = _rest[0];
            _rest.remove_prefix(2);
            return true;
        }
        constexpr std::string_view letters = "ymdhsebg";
        constexpr Part parts[] = {Part::year,   Part::month, Part::day,  Part::hour,
                                  Part::second, Part::year,  Part::year, Part::literal};
        const std::size_t at = letters.find(c);
        if (at == letters.npos) return false;
        std::size_t size = 1;
        while (size < _rest.size() && lower(_rest[size]) == c) ++size;
        FormatPiece& piece = add(parts[at]);
        piece.letter = c;
        piece.count = c == 'e' || c == 'b' ? 4 : static_cast<int>(size);
        _rest.remove_prefix(size);
        return true;
    }

    bool sign(char c) {
        switch (c) {
            case '0':
            case '#':
            case '?':
                add(Part::digit).letter = c;
                break;
            case '.':
                add(Part::point);
                break;
            case ',':
                add(Part::comma);
                break;
            case '%':
                add(Part::percent);
                break;
            case '/':
                add(Part::slash);
                break;
            case '@':
                add(Part::text);
                break;
            default:
                return false;
        }
        _rest.remove_prefix(1);
        return true;
    }

    static bool isTime(Part part) { return part >= Part::year && part <= Part::second; }

    /// Digits behind a point are parts of a second, other signs of numbers stand for themselves, and each "m" gets its
    /// meaning from the unit before and behind it.
    static void settleDate(std::vector<FormatPiece>& pieces) {
        std::vector<FormatPiece> settled;
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            FormatPiece piece = pieces[i];
            if (piece.part == Part::point && i + 1 < pieces.size() && pieces[i + 1].part == Part::digit) {
                piece.part = Part::secondFraction;
                while (i + 1 < pieces.size() && pieces[i + 1].part == Part::digit) ++piece.count, ++i;
            } else if (const char c = asWritten(piece); c != 0) {
                piece.part = Part::literal;
                piece.text = c;
            }
            settled.push_back(std::move(piece));
        }
        pieces = std::move(settled);
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            FormatPiece& piece = pieces[i];
            if (piece.part == Part::month && piece.count <= 2 && meansMinutes(pieces, i)) piece.part = Part::minute;
        }
    }
    static char asWritten(const FormatPiece& piece) {
        switch (piece.part) {
            case Part::point:
                return '.';
            case Part::comma:
                return ',';
            case Part::slash:
                return '/';
            case Part::percent:
                return '%';
            case Part::digit:
                return piece.letter;
            default:
                return 0;
        }
    }
    static bool meansMinutes(const std::vector<FormatPiece>& pieces, std::size_t at) {
        for (std::size_t i = at; i-- > 0;) {
            if (pieces[i].part == Part::hour || (pieces[i].part == Part::elapsed && pieces[i].letter == 'h'))
                return true;
            if (isTime(pieces[i].part)) break;
        }
        for (std::size_t i = at + 1; i < pieces.size(); ++i) {
            if (pieces[i].part == Part::second || (pieces[i].part == Part::elapsed && pieces[i].letter == 's'))
                return true;
            if (isTime(pieces[i].part)) break;
        }
        return false;
    }

    std::string_view _rest;
    FormatSection* _section = nullptr;
    bool _separated = false;
};

}  // namespace

bool FormatCondition::holds(double value) const {
    if (sign == "<") return value < limit;
    if (sign == "<=") return value <= limit;
    if (sign == ">") return value > limit;
    if (sign == ">=") return value >= limit;
    if (sign == "<>") return value != limit;
    return value == limit;
}

bool FormatCondition::onlyNegative() const {
    return (sign == "<" && limit <= 0) || (sign == "<=" && limit < 0) || (sign == "=" && limit < 0);
}

bool FormatSection::has(Part part) const {
    return std::any_of(pieces.begin(), pieces.end(), [part](const FormatPiece& piece) { return piece.part == part; });
}

bool FormatSection::isDate() const {
    return std::any_of(pieces.begin(), pieces.end(), [](const FormatPiece& piece) {
        return (piece.part >= Part::year && piece.part <= Part::second) || piece.part == Part::halfDay ||
               piece.part == Part::elapsed;
    });
}

std::vector<FormatSection> readFormatCode(std::string_view code) {
    std::vector<FormatSection> sections;
    CodeReader reader(code.size() > longestCode ? "General" : code);
    do {
        sections.push_back(reader.section());
    } while (reader.hasMore() && sections.size() < 4);
    return sections;
}

}  // namespace cli
