// Columns of a sheet, and the fitting of their widths.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

#include "biff/container/messages.h"
#include "biff/sheet/sheet.h"
#include "biff/strings/str_map.h"
#include "biff/styles/font.h"
#include "biff/styles/format.h"
#include "engine/facts/text_width.h"

namespace vellum {
namespace {

constexpr int colUnits = 256;  // of a ColInfo width, per character
constexpr std::uint16_t noDxGCol = 65535;

int pixelsOf(std::uint16_t coldx) {
    return static_cast<int>(std::floor(static_cast<double>(coldx) * digitPixels / colUnits + 0.5));
}

std::uint16_t coldxOf(int pixels) {
    const double coldx = std::floor(static_cast<double>(pixels) * colUnits / digitPixels + 0.5);
    return static_cast<std::uint16_t>(std::clamp(coldx, 0.0, 65535.0));
}

// A record holds widths below 256.
std::uint16_t coldxOf(double chars) {
    return coldxOf(columnPixels(std::min(chars, double{colUnits})));
}

template <class CharT>
MeasuredFont measuredFont(const BookContext<CharT>& book, const FormatImplT<CharT>* format) {
    const int position = format != nullptr ? fontListPosition(format->xf().ifnt) : -1;
    if (position < 0) return {};
    const FontImplT<CharT>* const font = book.fontAtPosition(static_cast<std::size_t>(position));
    if (font == nullptr) return {};
    constexpr int twipsPerPoint = 20, boldWeight = 700;
    const Font& record = font->record();
    return {record.fontName.view(), record.dyHeight / twipsPerPoint, record.bls >= boldWeight};
}

}  // namespace

// Whether hidden or not.
template <class CharT>
int SheetImplT<CharT>::widthPixels(std::uint16_t col) const {
    if (const ColInfo* const info = parts().columns.find(col)) return pixelsOf(info->coldx);
    const SheetSettings& settings = parts().settings;
    if (settings.dxGCol.value_or(noDxGCol) < noDxGCol) return pixelsOf(*settings.dxGCol);
    return defaultColumnPixels(settings.defColWidth);
}

template <class CharT>
double SheetImplT<CharT>::columnWidth(int col) {
    return guard(-1.0, [&] { return columnChars(widthPixels(checkedCol(col))); });
}

template <class CharT>
int SheetImplT<CharT>::shownColumnPixels(std::uint16_t col) const {
    const ColInfo* const info = parts().columns.find(col);
    return info != nullptr && (info->flags & ColInfo::hidden) != 0 ? 0 : widthPixels(col);
}

template <class CharT>
int SheetImplT<CharT>::columnWidthPixels(int col) {
    return guard(-1, [&] { return shownColumnPixels(checkedCol(col)); });
}

template <class CharT>
bool SheetImplT<CharT>::isColumnHidden(int col) {
    return guard(false, [&] {
        const ColInfo* const info = parts().columns.find(checkedCol(col));
        return info != nullptr && (info->flags & ColInfo::hidden) != 0;
    });
}

template <class CharT>
std::uint16_t SheetImplT<CharT>::widthUnits(std::uint16_t col) const {
    const ColInfo* const info = parts().columns.find(col);
    return info != nullptr ? info->coldx : defaultWidthUnits();
}

template <class CharT>
std::uint16_t SheetImplT<CharT>::defaultWidthUnits() const {
    const SheetSettings& settings = parts().settings;
    if (settings.dxGCol.value_or(noDxGCol) < noDxGCol) return *settings.dxGCol;
    return coldxOf(defaultColumnPixels(settings.defColWidth));
}

// Outline levels stay, so columns of different levels get records of their own.
template <class CharT>
void SheetImplT<CharT>::setColumns(std::uint16_t first, std::uint16_t last, std::uint16_t coldx, const Format* format,
                                   bool hidden) {
    constexpr auto staying = static_cast<std::uint16_t>(ColInfo::levelMask | ColInfo::collapsed);
    const auto infoFor = [&](std::uint16_t col) {
        const ColInfo* const old = parts().columns.find(col);
        ColInfo info;
        info.coldx = coldx;
        info.ixfe = format != nullptr ? _book.ixfeOf(format) : old != nullptr ? old->ixfe : defaultCellXf;
        info.flags = static_cast<std::uint16_t>((old != nullptr ? old->flags & staying : 0) | ColInfo::widthByHand |
                                                (hidden ? ColInfo::hidden : 0));
        return info;
    };
    for (std::uint32_t col = first; col <= last;) {
        ColInfo info = infoFor(static_cast<std::uint16_t>(col));
        info.colFirst = static_cast<std::uint16_t>(col);
        for (++col; col <= last; ++col) {
            const ColInfo next = infoFor(static_cast<std::uint16_t>(col));
            if (next.ixfe != info.ixfe || next.flags != info.flags) break;
        }
        info.colLast = static_cast<std::uint16_t>(col - 1);
        edit().columns.assign(info);
    }
}

template <class CharT>
bool SheetImplT<CharT>::setColumn(int colFirst, int colLast, double width, Format* format, bool hidden) {
    return guard(false, [&] {
        constexpr int limit = SheetIndex::colLimit;
        if (colFirst < 0 || colFirst >= limit || colLast < 0 || colLast >= limit) return false;
        if (colFirst > colLast) throw vlerror(biff::msg::colOrder);
        const auto first = static_cast<std::uint16_t>(colFirst), last = static_cast<std::uint16_t>(colLast);
        if (width >= 0.0) {
            setColumns(first, last, coldxOf(width), format, hidden);
            return true;
        }
        const AreaBounds used = parts().usedBounds();
        for (std::uint16_t col = first; col <= last; ++col) {
            const double fitting = fittingWidth(col, used.rowFirst, used.rowEnd);
            setColumns(col, col, fitting < 0.0 ? widthUnits(col) : coldxOf(fitting), format, hidden);
        }
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setColumnHidden(int col, bool hidden) {
    return guard(false, [&] {
        const std::uint16_t checked = checkedCol(col);
        setColumns(checked, checked, widthUnits(checked), nullptr, hidden);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::autoFitColumns(int colFirst, int rowFirst, int colLast, int rowLast) {
    return guard(false, [&] {
        const CellPlace first = place(rowFirst, colFirst), last = place(rowLast, colLast);
        if (first.row > last.row) throw vlerror(biff::msg::rowOrder);
        if (first.col > last.col) throw vlerror(biff::msg::colOrder);
        for (std::uint16_t col = first.col; col <= last.col; ++col) {
            const double fitting = fittingWidth(col, first.row, last.row + 1U);
            if (fitting < 0.0) continue;
            const ColInfo* const info = parts().columns.find(col);
            setColumns(col, col, coldxOf(fitting), nullptr, info != nullptr && (info->flags & ColInfo::hidden) != 0);
        }
        return true;
    });
}

template <class CharT>
double SheetImplT<CharT>::fittingWidth(std::uint16_t col, std::uint32_t rowFirst, std::uint32_t rowEnd) {
    const SheetIndex& index = parts().cells.index();
    std::vector<biff::CellRange> merges;
    std::ranges::copy_if(parts().merges, std::back_inserter(merges),
                         [col](const biff::CellRange& range) { return range.colFirst <= col && col <= range.colLast; });
    std::ranges::sort(merges, {}, &biff::CellRange::rowFirst);
    // Asked with ascending rows: `mergedEnd` is the row behind all blocks that have begun.
    auto isMerged = [&, next = merges.begin(), mergedEnd = std::uint32_t{0}](std::uint32_t row) mutable {
        for (; next != merges.end() && next->rowFirst <= row; ++next)
            mergedEnd = std::max(mergedEnd, next->rowLast + 1U);
        return row < mergedEnd;
    };
    double widest = -1.0;
    for (auto row = index.nextRow(rowFirst); row < rowEnd; row = index.nextRow(row + 1)) {
        const CellSlot slot = index.at(static_cast<std::uint16_t>(row), col);
        if (!slot.occupied() || isMerged(row)) continue;
        const FormatImplT<CharT>* const format = _book.xf(parts().cells.ixfe(slot));
        std::wstring text;
        if (const auto value = numberOf(slot)) {
            const std::string narrow = widestNumberText(*value, format != nullptr ? format->ifmt() : 0);
            text.assign(narrow.begin(), narrow.end());
        } else if (const auto* shared = cellAs<LabelSstCell>(slot)) {
            text = _book.strings().at(shared->isst).view();
        } else if (const auto* label = cellAs<LabelCell>(slot)) {
            text = label->text.view();
        } else if (const auto* formula = cellAs<FormulaCell>(slot); formula != nullptr && formula->hasText) {
            text = formula->text.view();
        }
        widest = std::max(widest, textWidthChars(text, measuredFont(_book, format)));
    }
    return widest;
}

}  // namespace vellum
