#include "formula/printing/token_word.h"

#include <charconv>

#include "engine/api/enums.h"
#include "formula/digits.h"
#include "formula/error_words.h"
#include "formula/function_table.h"
#include "formula/function_word.h"

namespace vellum::formula {
namespace {

constexpr std::wstring_view unknownWord = L"?";

// Fixed notation with 13 decimals, without the zeros at its end. The largest double has 309 digits before the point.
void appendDouble(std::wstring& out, double value) {
    char digits[330];
    char* end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 13).ptr;
    if (std::string_view(digits, end).find('.') != std::string_view::npos) {
        while (end[-1] == '0') --end;
        if (end[-1] == '.') --end;
    }
    out.append(+digits, end);
}

void appendString(std::wstring& out, ByteStream& in, Generation generation) {
    const std::size_t count = in.popInt8();
    const bool wide = generation == Generation::biff8 && (in.popInt8() & 1) != 0;
    const auto characters = in.popBytes(count * (wide ? 2 : 1));
    out += L'"';
    for (std::size_t i = 0; i < count; ++i) {
        const auto c = wide ? loadLe<std::uint16_t>(&characters[2 * i]) : std::to_integer<std::uint16_t>(characters[i]);
        if (c == L'"') out += L'"';
        out += static_cast<wchar_t>(c);
    }
    out += L'"';
}

void appendAttribute(std::wstring& out, ByteStream& in) {
    const std::uint8_t kind = in.popInt8();
    const AttributeRow* const row = attributeRow(kind);
    in.popBytes(row == nullptr ? 0 : row->publishedBytes);
    if (kind == attributeSum) appendFunctionWord(out, L"SUM", 1);
}

void appendFunction(std::wstring& out, ByteStream& in) {
    std::uint8_t count = 0;
    const std::wstring_view name = functionNameById(in.popInt16(), count);
    appendFunctionWord(out, name, count);
}

// Bit 15 marks a command of the application, which is no function.
void appendFunctionVar(std::wstring& out, ByteStream& in) {
    const std::uint8_t count = in.popInt8();
    const std::uint16_t id = in.popInt16();
    std::uint8_t fixedCount = 0;
    if ((id & 0x8000) != 0) {
        out += unknownWord;
    } else {
        appendFunctionWord(out, functionNameById(id, fixedCount), count);
    }
}

// The index counts from 1. The older layout has 16 bits of it, and unused bytes.
void appendName(std::wstring& out, ByteStream& in, const FormulaContext& book, Generation generation) {
    const std::uint32_t index = generation == Generation::biff8 ? in.popInt32() : in.popInt16();
    if (generation == Generation::biff5) in.popBytes(12);
    const auto text = index == 0 ? std::nullopt : book.nameText(index - 1);
    out += text.value_or(unknownWord);
}

// In the older layout tokens name the sheets themselves: a number that is negative for this workbook, unused bytes,
// and the first and last sheet.
SheetSpan readSpan(ByteStream& in, const FormulaContext& book, Generation generation) {
    if (generation == Generation::biff8) return book.sheetSpan(in.popInt16());
    const bool own = (in.popInt16() & 0x8000) != 0;
    in.popBytes(8);
    const auto first = static_cast<std::int16_t>(in.popInt16()), last = static_cast<std::int16_t>(in.popInt16());
    return own ? SheetSpan{SheetSpan::Where::ownBook, first, last} : SheetSpan{};
}

void appendCell3d(std::wstring& out, ByteStream& in, const FormulaContext& book, Generation generation) {
    appendSheetPrefix(out, readSpan(in, book, generation), book);
    RgceLoc::read(in, generation).print(out);
}

void appendArea(std::wstring& out, const RgceArea& area, LocationBase base) {
    area.first.print(out, base);
    out += L':';
    area.last.print(out, base);
}

void appendArea3d(std::wstring& out, ByteStream& in, const FormulaContext& book, Generation generation) {
    const std::size_t start = out.size();
    appendSheetPrefix(out, readSpan(in, book, generation), book);
    const RgceArea area = RgceArea::read(in, generation);
    if (std::wstring_view(out).substr(start) != errorWord(errorReference)) return appendArea(out, area, {});
    area.first.printColumn(out);
    out += L':';
    area.last.printColumn(out);
}

bool mustBeQuoted(std::wstring_view name) {
    constexpr std::wstring_view special = L" -()\uFF08\uFF09'";
    return name.find_first_of(special) != std::wstring_view::npos;
}

}  // namespace

void appendQuoted(std::wstring& out, std::wstring_view text) {
    out += L'"';
    for (const wchar_t c : text) out.append(c == L'"' ? 2 : 1, c);
    out += L'"';
}

void appendSheetPrefix(std::wstring& out, const SheetSpan& span, const FormulaContext& book) {
    if (span.where == SheetSpan::Where::noBooks) return;
    const auto exists = [&](int sheet) { return sheet >= 0 && static_cast<std::size_t>(sheet) < book.sheetTotal(); };
    if (span.where != SheetSpan::Where::ownBook || !exists(span.first) || !exists(span.last)) {
        out += errorWord(errorReference);
        return;
    }
    std::wstring_view names[] = {book.sheetNameOf(static_cast<std::size_t>(span.first)), {}};
    if (span.first != span.last) names[1] = book.sheetNameOf(static_cast<std::size_t>(span.last));
    const bool quoted = mustBeQuoted(names[0]) || mustBeQuoted(names[1]);
    if (quoted) out += L'\'';
    for (const std::wstring_view& name : names) {
        if (&name != names && span.first != span.last) out += L':';
        for (const wchar_t c : name) out.append(c == L'\'' ? 2 : 1, c);
    }
    if (quoted) out += L'\'';
    out += L'!';
}

void appendTokenWord(std::wstring& out, Token& token, const FormulaContext& book, Generation generation,
                     LocationBase base) {
    ByteStream& in = token.operands;
    switch (token.row->word) {
        case TokenWord::string:
            return appendString(out, in, generation);
        case TokenWord::attribute:
            return appendAttribute(out, in);
        case TokenWord::error:
            out += errorWord(in.popInt8());
            return;
        case TokenWord::boolean:
            out += in.popInt8() != 0 ? L"TRUE" : L"FALSE";
            return;
        case TokenWord::integer:
            return appendNumber(out, in.popInt16());
        case TokenWord::number:
            return appendDouble(out, in.popDouble());
        case TokenWord::function:
            return appendFunction(out, in);
        case TokenWord::functionVar:
            return appendFunctionVar(out, in);
        case TokenWord::name:
            return appendName(out, in, book, generation);
        case TokenWord::cell:
            return RgceLoc::read(in, generation).print(out, base);
        case TokenWord::area:
            return appendArea(out, RgceArea::read(in, generation), base);
        case TokenWord::cell3d:
            return appendCell3d(out, in, book, generation);
        case TokenWord::area3d:
            return appendArea3d(out, in, book, generation);
        default:
            in.popBytes(generation == Generation::biff8 ? token.row->textBytes : token.row->biff5Bytes);
            out += token.row->word == TokenWord::extended ? unknownWord : token.row->fixed;
            return;
    }
}

void appendPostfix(std::wstring& out, std::span<const std::byte> rgce, const FormulaContext& book,
                   Generation generation, LocationBase base) {
    for (ByteStream in(rgce); !in.empty();) {
        Token token = cutToken(in, generation);
        const std::size_t start = out.size();
        appendTokenWord(out, token, book, generation, base);
        if (out.size() > start) out += L' ';
    }
}

}  // namespace vellum::formula
