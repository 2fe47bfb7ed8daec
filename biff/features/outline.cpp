#include "biff/features/outline.h"

#include <algorithm>
#include <optional>

#include "biff/cells/column_table.h"
#include "biff/cells/row_table.h"
#include "biff/cells/sheet_records.h"
#include "biff/features/feature_messages.h"
#include "engine/failure/vlerror.h"

namespace vellum::biff {
namespace {

constexpr int lastRow = 65535, lastColumn = 255;
constexpr int columnLevelShift = 8;

void setFlag(std::uint16_t& flags, std::uint16_t mask, bool on) {
    flags = static_cast<std::uint16_t>(on ? flags | mask : flags & ~mask);
}

int levelOf(const Row* row) {
    return row == nullptr ? 0 : row->flags & Row::levelMask;
}

int levelOf(const ColInfo* column) {
    return column == nullptr ? 0 : (column->flags & ColInfo::levelMask) >> columnLevelShift;
}

/// The row or column beside a group that stands for it; none at the edge of the sheet.
std::optional<std::uint16_t> summaryOf(int first, int last, bool before, int lastOfSheet) {
    const int at = before ? first - 1 : last + 1;
    if (at < 0 || at > lastOfSheet) return std::nullopt;
    return static_cast<std::uint16_t>(at);
}

/// Guts has the deepest level plus one, or nothing.
template <class Lines>
std::uint16_t levelCount(const Lines& lines) {
    int deepest = 0;
    for (const auto& line : lines) deepest = std::max(deepest, levelOf(&line));
    return static_cast<std::uint16_t>(deepest == 0 ? 0 : deepest + 1);
}

ColInfo infoOf(const ColumnTable& columns, std::uint16_t col, std::uint16_t coldx) {
    ColInfo info;
    info.coldx = coldx;
    if (const ColInfo* const known = columns.find(col)) info = *known;
    info.colFirst = info.colLast = col;
    return info;
}

}  // namespace

void groupRows(RowTable& rows, Guts& guts, std::uint16_t first, std::uint16_t last, bool collapsed, bool summaryBefore,
               std::uint16_t defaultHeight) {
    const int level = levelOf(std::as_const(rows).find(first));
    for (int rw = first; rw <= last; ++rw) {
        if (levelOf(std::as_const(rows).find(static_cast<std::uint16_t>(rw))) != level) {
            throw vlerror(msg::outlineOverlap);
        }
    }
    if (level >= maxOutlineLevel) throw vlerror(msg::outlineTooDeep);
    for (int rw = first; rw <= last; ++rw) {
        Row& row = rows.ensure(static_cast<std::uint16_t>(rw), defaultHeight);
        row.flags = static_cast<std::uint16_t>((row.flags & ~Row::levelMask) | (level + 1));
        setFlag(row.flags, Row::hidden, collapsed);
    }
    if (const auto at = summaryOf(first, last, summaryBefore, lastRow)) {
        if (collapsed || rows.find(*at) != nullptr)
            setFlag(rows.ensure(*at, defaultHeight).flags, Row::collapsed, collapsed);
    }
    guts.iLevelRwMac = levelCount(rows.rows());
}

void groupColumns(ColumnTable& columns, Guts& guts, std::uint16_t first, std::uint16_t last, bool collapsed,
                  bool summaryBefore, std::uint16_t coldx) {
    for (int col = first; col <= last; ++col) {
        if (levelOf(columns.find(static_cast<std::uint32_t>(col))) >= maxOutlineLevel) {
            throw vlerror(msg::outlineTooDeep);
        }
    }
    const auto deeper = [&](int col) {
        ColInfo info = infoOf(columns, static_cast<std::uint16_t>(col), coldx);
        const int level = levelOf(&info) + 1;
        info.flags = static_cast<std::uint16_t>((info.flags & ~ColInfo::levelMask) | level << columnLevelShift);
        setFlag(info.flags, ColInfo::hidden, collapsed);
        return info;
    };
    // Neighbours that are alike share a record.
    for (int col = first; col <= last;) {
        ColInfo info = deeper(col);
        for (++col; col <= last; ++col) {
            ColInfo next = deeper(col);
            next.colFirst = info.colFirst, next.colLast = info.colLast;
            if (next != info) break;
            info.colLast = static_cast<std::uint16_t>(col);
        }
        columns.assign(info);
    }
    if (const auto at = summaryOf(first, last, summaryBefore, lastColumn)) {
        ColInfo info = infoOf(columns, *at, coldx);
        if (collapsed || (info.flags & ColInfo::collapsed) != 0) {
            setFlag(info.flags, ColInfo::collapsed, collapsed);
            columns.assign(info);
        }
    }
    guts.iLevelColMac = levelCount(columns.records());
}

}  // namespace vellum::biff
