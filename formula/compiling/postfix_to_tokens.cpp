#include "formula/compiling/postfix_to_tokens.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>

#include "engine/failure/vlerror.h"
#include "formula/error_words.h"
#include "formula/function_table.h"
#include "formula/messages.h"
#include "formula/operators.h"
#include "formula/postfix_words.h"
#include "formula/text_words.h"
#include "formula/token_cut.h"

namespace vellum::formula {

using namespace std::string_view_literals;
namespace {

constexpr std::size_t maxTokenBytes = 8202;  // of a Formula record that is not continued
constexpr std::uint32_t maxArguments = 30;
constexpr std::size_t maxStringLength = 255;
constexpr std::uint16_t todayId = 221, offsetId = 78, sumProductId = 228;
constexpr std::uint8_t inValueClass(std::uint8_t code) {
    return code + ptg::valueClass;
}

/// Digits and points as a number, up to the second point; nothing for points alone.
std::optional<double> decimalOf(std::wstring_view word) {
    const std::string narrow(word.begin(), word.end());
    double value = 0;
    const auto [end, failure] =
        std::from_chars(narrow.data(), narrow.data() + narrow.size(), value, std::chars_format::fixed);
    if (failure == std::errc::result_out_of_range || (failure == std::errc{} && !std::isfinite(value))) {
        throw vlerror(msg::incorrectToken);
    }
    return failure == std::errc{} ? std::optional(value) : std::nullopt;
}

/// A cell with its sheets: what stands before the first `!`, and what stands behind it.
struct Prefixed {
    std::wstring_view spec, cell;
};
std::optional<Prefixed> splitPrefix(std::wstring_view word) {
    const std::size_t mark = findOutsideQuotes(word, L'!');
    if (mark == std::wstring_view::npos) return std::nullopt;
    return Prefixed{word.substr(0, mark), word.substr(mark + 1)};
}

}  // namespace

bool TokenMaker::operatorWord(std::wstring_view word) {
    if (word == L"uMinus"sv) {
        code(ptg::uminus);
    } else if (word == L"uPlus"sv) {
        code(ptg::uplus);
    } else if (word == L"%"sv || word == L"uPercent"sv) {
        code(ptg::percent);
    } else if (const BinaryOperator* const op = binaryOperator(word)) {
        code(op->code);
    } else if (word == L"("sv) {
        code(ptg::paren);
    } else if (word == L"SUM1"sv) {
        _out.putAll(ptg::attr, attributeSum, std::uint16_t{0});
    } else {
        return false;
    }
    return true;
}

bool TokenMaker::numberWord(std::wstring_view word) {
    if (!std::ranges::all_of(word, [](wchar_t c) { return isDigit(c) || c == L'.'; })) return false;
    if (word.size() <= 5 && std::ranges::all_of(word, isDigit)) {
        std::uint32_t value = 0;
        for (const wchar_t c : word) value = value * 10 + static_cast<std::uint32_t>(c - L'0');
        if (value <= 0xFFFF) {
            _out.putAll(ptg::integer, static_cast<std::uint16_t>(value));
            return true;
        }
    }
    const auto value = decimalOf(word);
    if (value) _out.putAll(ptg::num, *value);
    return value.has_value();
}

// Areas given to a function that works element by element become arrays when they are more than plain arguments, which
// is told by the bytes written so far.
void TokenMaker::areasToArrayClass() {
    for (const std::size_t place : _areas) _out.patch(place, static_cast<std::uint8_t>(ptg::area + ptg::arrayClass));
}

void TokenMaker::functionCall(const FunctionWord& call) {
    const std::uint16_t id = functionIdByName(call.name);
    if (call.count > maxArguments) throw vlerror(msg::incorrectToken);
    if (id == userDefinedId) _unknownCall = true;
    if (id == todayId) {
        _out.putAll(ptg::attr, attributeVolatile, std::uint16_t{0});
        _out.putAll(inValueClass(ptg::func), id);
    } else {
        if (id == sumProductId && 9 * call.count < _out.size()) areasToArrayClass();
        _out.putAll(id == offsetId ? ptg::funcVar : inValueClass(ptg::funcVar), static_cast<std::uint8_t>(call.count),
                    id);
    }
    _areas.clear();
}

void TokenMaker::sheetIndex(const SheetPair& sheets) {
    _uses.push_back({_out.size(), sheets});
    _out.put(std::uint16_t{0});
}

// `Sheet1!A1:Sheet2!B2`, from behind the first `!`.
bool TokenMaker::sheetRangeWord(const SheetPair& first, std::wstring_view rest) {
    const std::size_t colon = rest.find(L':');
    if (colon == std::wstring_view::npos) return false;
    const auto other = splitPrefix(rest.substr(colon + 1));
    if (!other) return false;
    const auto from = parseCellWord(rest.substr(0, colon));
    const auto to = from ? parseCellWord(other->cell) : std::nullopt;
    if (!to) return false;
    constexpr std::uint16_t size = 15;  // of the two cells and the range operator
    const SheetPair last = sheetsOfSpec(other->spec, *_book);
    _out.putAll(ptg::memFunc, size, ptg::ref3d);
    sheetIndex(first);
    from->at.write(_out);
    code(ptg::ref3d);
    sheetIndex(last);
    to->at.write(_out);
    code(ptg::range);
    return true;
}

bool TokenMaker::sheetWord(std::wstring_view word, std::size_t mark) {
    const std::wstring_view spec = word.substr(0, mark), rest = word.substr(mark + 1);
    if (const auto cell = parseCellWord(rest)) {
        const SheetPair sheets = sheetsOfSpec(spec, *_book);
        code(cell->marked ? ptg::ref3d : inValueClass(ptg::ref3d));
        sheetIndex(sheets);
        cell->at.write(_out);
        return true;
    }
    if (const auto area = parseAreaWord(rest)) {
        const SheetPair sheets = sheetsOfSpec(spec, *_book);
        code(ptg::area3d);
        sheetIndex(sheets);
        area->write(_out);
        return true;
    }
    return rest.find(L'!') != std::wstring_view::npos && sheetRangeWord(sheetsOfSpec(spec, *_book), rest);
}

bool TokenMaker::locationWord(std::wstring_view word) {
    if (const auto cell = parseCellWord(word)) {
        code(cell->marked ? ptg::ref : inValueClass(ptg::ref));
        cell->at.write(_out);
        return true;
    }
    const std::size_t mark = findOutsideQuotes(word, L'!');
    if (mark != std::wstring_view::npos) return sheetWord(word, mark);
    const auto area = parseAreaWord(word);
    if (!area) return false;
    _areas.push_back(_out.size());
    code(ptg::area);
    area->write(_out);
    return true;
}

void TokenMaker::stringWord(std::wstring_view word) {
    word = word.substr(1, word.size() - 2);
    const std::size_t start = _out.size();
    _out.putAll(ptg::str, std::uint8_t{0}, std::uint8_t{1});  // two bytes a character
    std::size_t length = 0;
    for (std::size_t i = 0; i < word.size(); ++i, ++length) {
        if (word[i] == L'"' && i + 1 < word.size() && word[i + 1] == L'"') ++i;
        _out.put(static_cast<std::uint16_t>(word[i]));
    }
    if (length > maxStringLength) throw vlerror(msg::shortStringTooLong);
    _out.patch(start + 1, static_cast<std::uint8_t>(length));
}

void TokenMaker::nameWord(std::wstring_view word) {
    const auto index = _book->nameIndex(word, _sheet);
    if (!index) throw vlerror(msg::incorrectToken);
    _out.putAll(inValueClass(ptg::name), *index + 1);
}

void TokenMaker::word(std::wstring_view word) {
    if (operatorWord(word) || numberWord(word)) return;
    if (word == L"TRUE"sv || word == L"FALSE"sv) {
        _out.putAll(ptg::boolean, static_cast<std::uint8_t>(word == L"TRUE"sv));
    } else if (const auto call = parseFunctionWord(word)) {
        functionCall(*call);
    } else if (locationWord(word)) {
    } else if (word.size() >= 2 && word.starts_with(L'"') && word.ends_with(L'"')) {
        stringWord(word);
    } else if (const auto error = errorCodeOf(word)) {
        _out.putAll(ptg::err, *error);
    } else {
        nameWord(word);
    }
}

std::span<const std::byte> TokenMaker::compileFormula(std::wstring_view postfix, FormulaContext& book, int sheet) {
    _book = &book;
    _sheet = sheet;
    _out.clear();
    _areas.clear();
    _uses.clear();
    _unknownCall = false;
    for (auto next = takeWord(postfix); !next.empty(); next = takeWord(postfix)) word(next);
    if (_unknownCall || !isBalanced(_out.bytes())) throw vlerror(msg::incorrectToken);
    if (_out.size() > maxTokenBytes) throw vlerror(msg::stringTooLong);
    for (const SheetUse& use : _uses) _out.patch(use.place, book.xtiOfSheets(use.sheets.first, use.sheets.last));
    return _out.bytes();
}

}  // namespace vellum::formula
