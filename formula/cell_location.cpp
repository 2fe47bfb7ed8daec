#include "formula/cell_location.h"

#include <algorithm>

#include "biff/container/sink.h"
#include "engine/failure/vlerror.h"
#include "formula/digits.h"
#include "formula/function_word.h"

namespace vellum::formula {
namespace {

constexpr std::uint16_t colRelativeBit = 0x4000, rowRelativeBit = 0x8000, fieldMask = 0x3FFF;
constexpr std::uint16_t biff5RowBits = 0x3FFF;  // rows of the older format wrap at 16384
constexpr std::uint32_t colLimit = 256, rowLimit = 65536;

RgceLoc biff5Location(std::uint16_t rowField, std::uint8_t col) {
    return {static_cast<std::uint16_t>(rowField & biff5RowBits), col, (rowField & rowRelativeBit) != 0,
            (rowField & colRelativeBit) != 0};
}

}  // namespace

void RgceLoc::setColField(RgceLoc& loc, std::uint16_t field) {
    loc.col = field & fieldMask;
    loc.colRelative = (field & colRelativeBit) != 0;
    loc.rowRelative = (field & rowRelativeBit) != 0;
}

RgceLoc RgceLoc::read(ByteStream& in, Generation generation) {
    const std::uint16_t row = in.popInt16();
    if (generation == Generation::biff5) return biff5Location(row, in.popInt8());
    RgceLoc loc{.row = row};
    setColField(loc, in.popInt16());
    return loc;
}

RgceArea RgceArea::read(ByteStream& in, Generation generation) {
    const std::uint16_t first = in.popInt16(), last = in.popInt16();
    if (generation == Generation::biff5) {
        const std::uint8_t colFirst = in.popInt8();
        return {biff5Location(first, colFirst), biff5Location(last, in.popInt8())};
    }
    RgceArea area{{.row = first}, {.row = last}};
    RgceLoc::setColField(area.first, in.popInt16());
    RgceLoc::setColField(area.last, in.popInt16());
    return area;
}

std::uint16_t RgceLoc::colField() const {
    if (col >= colLimit) throw vlerror(msg::locationColumn);
    return static_cast<std::uint16_t>(col | (colRelative ? colRelativeBit : 0) | (rowRelative ? rowRelativeBit : 0));
}

void RgceLoc::write(Sink& out) const {
    out.putAll(row, colField());
}

void RgceArea::write(Sink& out) const {
    out.putAll(first.row, last.row, first.colField(), last.colField());
}

void RgceLoc::printColumn(std::wstring& out, LocationBase base) const {
    if (!colRelative) out += L'$';
    const std::uint32_t at = (col + (colRelative ? base.col : 0U)) % colLimit;
    if (at >= 26) out += static_cast<wchar_t>(64 + at / 26);
    out += static_cast<wchar_t>(L'A' + at % 26);
}

void RgceLoc::print(std::wstring& out, LocationBase base) const {
    printColumn(out, base);
    if (!rowRelative) out += L'$';
    appendNumber(out, (row + (rowRelative ? base.row : 0U)) % base.rowLimit + 1);
}

std::optional<CellWord> parseCellWord(std::wstring_view word) {
    const auto isLetter = [](wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z'); };
    std::size_t i = 0;
    const auto dollar = [&] {
        const bool there = i < word.size() && word[i] == L'$';
        i += there ? 1 : 0;
        return there;
    };
    CellWord cell;
    cell.at.colRelative = !dollar();
    const std::size_t letters = i;
    std::uint32_t col = 0, row = 0;
    for (; i < word.size() && isLetter(word[i]); ++i) {
        col = std::min(col * 26 + (static_cast<std::uint32_t>(word[i]) & 0x1F), colLimit + 1);
    }
    const bool hasLetters = i > letters;
    cell.at.rowRelative = !dollar();
    const std::size_t digits = i;
    for (; i < word.size() && isDigit(word[i]); ++i) {
        row = std::min(row * 10 + static_cast<std::uint32_t>(word[i] - L'0'), rowLimit + 1);
    }
    if (!hasLetters || i == digits) return std::nullopt;
    cell.marked = i + 1 == word.size() && word[i] == L'R';
    if (i != word.size() && !cell.marked) return std::nullopt;
    if (col > colLimit) throw vlerror(msg::columnOutOfRange);
    if (row == 0 || row > rowLimit) throw vlerror(msg::rowOutOfRange);
    cell.at.col = static_cast<std::uint16_t>(col - 1);
    cell.at.row = static_cast<std::uint16_t>(row - 1);
    return cell;
}

std::optional<RgceArea> parseAreaWord(std::wstring_view word) {
    const std::size_t colon = word.find(L':');
    if (colon == std::wstring_view::npos || colon == 0 || word[colon - 1] == L'R') return std::nullopt;
    const auto first = parseCellWord(word.substr(0, colon));
    if (!first) return std::nullopt;
    const auto last = parseCellWord(word.substr(colon + 1));
    if (!last) return std::nullopt;
    return RgceArea{first->at, last->at};
}

}  // namespace vellum::formula
