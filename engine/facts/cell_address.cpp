#include "engine/facts/cell_address.h"

#include <utility>

namespace vellum {
namespace {

void appendColumn(std::wstring& text, std::uint32_t col) {
    if (col >= 26 + 26 * 26) text += static_cast<wchar_t>(L'A' + (col - 26 - 26 * 26) / (26 * 26));
    if (col >= 26) text += static_cast<wchar_t>(L'A' + (col - 26) / 26 % 26);
    text += static_cast<wchar_t>(L'A' + col % 26);
}

}  // namespace

std::optional<AddressPart> readAddressPart(std::wstring_view text) {
    AddressPart half;
    std::size_t at = 0;
    const auto fixed = [&] { return at < text.size() && text[at] == L'$' && ++at != 0; };
    bool dollar = fixed();
    std::uint32_t letters = 0;
    for (; at < text.size() && text[at] >= L'A' && text[at] <= L'Z'; ++at) {
        letters = letters * 26 + static_cast<std::uint32_t>(text[at] - L'A' + 1);
        if (letters > sheetColumns) return {};
    }
    if (letters != 0) {
        half.col = letters - 1;
        half.colFixed = dollar;
        dollar = fixed();
    }
    std::uint32_t number = 0;
    for (; at < text.size() && text[at] >= L'0' && text[at] <= L'9'; ++at) {
        number = number * 10 + static_cast<std::uint32_t>(text[at] - L'0');
        if (number == 0 || number > sheetRows) return {};
    }
    if (number != 0) {
        half.row = number - 1;
        half.rowFixed = dollar;
    } else if (dollar) {
        return {};
    }
    if (at != text.size() || (letters == 0 && number == 0)) return {};
    return half;
}

std::optional<CellAddress> readCellAddress(std::wstring_view text) {
    const auto half = readAddressPart(text);
    if (!half || !half->hasRow() || !half->hasCol()) return {};
    return CellAddress{half->row, half->col, half->rowFixed, half->colFixed};
}

void appendAddressPart(std::wstring& text, const AddressPart& part) {
    if (part.colFixed) text += L'$';
    if (part.hasCol()) appendColumn(text, part.col);
    if (part.rowFixed) text += L'$';
    if (part.hasRow()) text += std::to_wstring(part.row + 1);
}

void appendCellAddress(std::wstring& text, const CellAddress& address) {
    appendAddressPart(text, {address.row, address.col, address.rowFixed, address.colFixed});
}

std::string cellAddressText(std::uint32_t row, std::uint32_t col) {
    std::wstring text;
    appendCellAddress(text, {row, col});
    return {text.begin(), text.end()};
}

std::optional<CellRange> readCellRange(std::wstring_view text) {
    const std::size_t colon = text.find(L':');
    const auto first = readAddressPart(text.substr(0, colon));
    const auto last = colon == std::wstring_view::npos ? first : readAddressPart(text.substr(colon + 1));
    if (!first || !last || first->hasRow() != last->hasRow() || first->hasCol() != last->hasCol()) return {};
    if (colon == std::wstring_view::npos && !(first->hasRow() && first->hasCol())) return {};
    CellRange range{0, sheetRows - 1, 0, sheetColumns - 1};
    if (first->hasRow()) range.rowFirst = first->row, range.rowLast = last->row;
    if (first->hasCol()) range.colFirst = first->col, range.colLast = last->col;
    if (range.rowFirst > range.rowLast) std::swap(range.rowFirst, range.rowLast);
    if (range.colFirst > range.colLast) std::swap(range.colFirst, range.colLast);
    return range;
}

std::optional<CellRange> readCellRange(std::string_view text) {
    return readCellRange(std::wstring(text.begin(), text.end()));
}

std::string cellRangeText(const CellRange& range) {
    std::string text = cellAddressText(range.rowFirst, range.colFirst);
    if (range.rowFirst == range.rowLast && range.colFirst == range.colLast) return text;
    return text + ":" + cellAddressText(range.rowLast, range.colLast);
}

}  // namespace vellum
