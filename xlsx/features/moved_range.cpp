#include "xlsx/features/moved_range.h"

#include <algorithm>

namespace vellum::xlsx {
namespace {

std::optional<Span> afterInsertion(Span span, const CellMove& move) {
    const std::uint32_t end = move.limit() - 1;
    const auto moved = [&](std::uint32_t bound) {
        return bound < move.first ? std::uint64_t{bound} : std::uint64_t{bound} + move.count();
    };
    if (moved(span.first) > end) return {};
    return Span{static_cast<std::uint32_t>(moved(span.first)),
                static_cast<std::uint32_t>(std::min<std::uint64_t>(moved(span.last), end))};
}

std::optional<Span> afterRemoval(Span span, const CellMove& move) {
    if (span.first >= move.first && span.last <= move.last) return {};
    if (span.first > move.last) {
        span.first -= move.count();
    } else if (span.first >= move.first) {
        span.first = move.first;
    }
    if (span.last > move.last) {
        span.last -= move.count();
    } else if (span.last >= move.first) {
        span.last = move.first - 1;  // not before the sheet: the span begins in front of the removed part
    }
    return span;
}

}  // namespace

std::optional<Span> movedSpan(Span span, const CellMove& move) {
    return move.isInsert ? afterInsertion(span, move) : afterRemoval(span, move);
}

std::optional<CellRange> movedRange(const CellRange& range, const CellMove& move) {
    CellRange result = range;
    auto& first = move.isRow ? result.rowFirst : result.colFirst;
    auto& last = move.isRow ? result.rowLast : result.colLast;
    const auto span = movedSpan({first, last}, move);
    if (!span) return {};
    first = span->first;
    last = span->last;
    return result;
}

std::optional<std::string> movedRef(std::string_view ref, const CellMove& move) {
    const auto range = readCellRange(ref);
    if (!range) return std::string(ref);
    const auto moved = movedRange(*range, move);
    if (!moved) return {};
    return *moved == *range ? std::string(ref) : cellRangeText(*moved);
}

}  // namespace vellum::xlsx
