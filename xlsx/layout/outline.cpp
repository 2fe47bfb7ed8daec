#include "xlsx/layout/outline.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "engine/facts/cell_address.h"
#include "engine/failure/vlerror.h"
#include "xlsx/features/messages.h"
#include "xlsx/layout/columns.h"
#include "xlsx/layout/row_heights.h"

namespace vellum::xlsx {
namespace {

constexpr unsigned deepestLevel = 7;

/// Where the summary of a group stands; nothing when that is off the sheet.
std::optional<std::uint32_t> summaryOf(std::uint32_t first, std::uint32_t last, bool behind, std::uint32_t limit) {
    if (behind) return last + 1 < limit ? std::optional(last + 1) : std::nullopt;
    return first > 0 ? std::optional(first - 1) : std::nullopt;
}

}  // namespace

template <class Tag>
auto Outline<Tag>::ensureRow(RowPlace at, std::uint32_t row) -> RowPlace {
    auto& rows = _sheet.sheetData().row();
    if (at != rows.end() && at->r() == row + 1) return at;
    const RowPlace made = rows.insert(at);
    made->r(row + 1);
    return made;
}

template <class Tag>
void Outline<Tag>::groupRows(std::uint32_t first, std::uint32_t last, bool collapsed) {
    auto& rows = _sheet.sheetData().row();
    RowPlace at = rows.firstFrom(first);
    const auto levelAt = [&](std::uint32_t row) {
        return at != rows.end() && at->r() == row + 1 ? at->outlineLevel() : 0U;
    };
    const unsigned level = levelAt(first);
    if (level >= deepestLevel) throw vlerror(msg::outlineTooDeep);
    raiseRowBar(level + 1);
    for (std::uint32_t row = first; row <= last; ++row, ++at) {
        if (levelAt(row) != level) throw vlerror(msg::groupOverlap);
        at = ensureRow(at, row);
        at->outlineLevel(static_cast<std::uint8_t>(level + 1));
        if (collapsed) at->hidden(true);
    }
    if (!collapsed) return;
    if (const auto summary = summaryOf(first, last, summaryBelow(), sheetRows)) {
        ensureRow(rows.firstFrom(*summary), *summary)->collapsed(true);
    }
}

/// The level that all columns of the range have.
template <class Tag>
unsigned Outline<Tag>::columnLevel(std::uint32_t first, std::uint32_t last) const {
    const Columns<Tag> columns(_sheet);
    std::optional<unsigned> level;
    for (std::uint32_t col = first; col <= last; ++col) {
        const auto* const element = columns.find(col);
        const unsigned found = element ? element->outlineLevel() : 0;
        if (level && *level != found) throw vlerror(msg::groupOverlap);
        level = found;
        if (element && element->max() > col) col = std::min(element->max() - 1, last);
    }
    return *level;
}

template <class Tag>
void Outline<Tag>::groupColumns(std::uint32_t first, std::uint32_t last, bool collapsed) {
    const unsigned level = columnLevel(first, last);
    if (level >= deepestLevel) throw vlerror(msg::outlineTooDeep);
    raiseColumnBar(level + 1);
    Columns<Tag> columns(_sheet);
    const double gapWidth = columns.defaultWidth(_metrics);
    const auto run = columns.cut(first, last, gapWidth);
    for (std::size_t i = run.first; i < run.past; ++i) {
        columns[i].outlineLevel(static_cast<unsigned char>(level + 1));
        if (collapsed) columns[i].hidden(true);
    }
    if (!collapsed) return;
    if (const auto summary = summaryOf(first, last, summaryRight(), sheetColumns)) {
        columns[columns.cut(*summary, *summary, gapWidth).first].collapsed(true);
    }
}

/// Applications draw the bar for as many levels as `sheetFormatPr` says.
template <class Tag>
void Outline<Tag>::raiseRowBar(unsigned level) {
    auto& format = ensureSheetFormat<Tag>(_sheet, _metrics);
    if (!format.isset_outlineLevelRow()) {
        for (const Row& row : _sheet.sheetData().row()) level = std::max<unsigned>(level, row.outlineLevel());
    }
    if (level > format.outlineLevelRow()) format.outlineLevelRow(static_cast<unsigned char>(level));
}

template <class Tag>
void Outline<Tag>::raiseColumnBar(unsigned level) {
    auto& format = ensureSheetFormat<Tag>(_sheet, _metrics);
    if (!format.isset_outlineLevelCol()) {
        for (const auto& cols : _sheet.cols()) {
            for (const auto& col : cols.col()) level = std::max<unsigned>(level, col.outlineLevel());
        }
    }
    if (level > format.outlineLevelCol()) format.outlineLevelCol(static_cast<unsigned char>(level));
}

template <class Tag>
bool Outline<Tag>::summaryBelow() const {
    const auto* const properties = std::as_const(_sheet).find_sheetPr();
    const auto* const outline = properties ? properties->find_outlinePr() : nullptr;
    return !outline || outline->summaryBelow();
}

template <class Tag>
bool Outline<Tag>::summaryRight() const {
    const auto* const properties = std::as_const(_sheet).find_sheetPr();
    const auto* const outline = properties ? properties->find_outlinePr() : nullptr;
    return !outline || outline->summaryRight();
}

template class Outline<ooxml::excelNormal_tag>;
template class Outline<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
