#include "biff/cells/moved_lines.h"

#include "engine/failure/vlerror.h"

namespace vellum::biff {
namespace {

/// First and last line of a block.
struct Span {
    std::uint32_t first, last;
};

Span spanOf(const MovedLines& moved, const CellRange& range) {
    if (moved.axis == MovedLines::Axis::rows) return {range.rowFirst, range.rowLast};
    return {range.colFirst, range.colLast};
}

CellRange withSpan(const MovedLines& moved, CellRange range, Span span) {
    const auto first = static_cast<std::uint16_t>(span.first), last = static_cast<std::uint16_t>(span.last);
    if (moved.axis == MovedLines::Axis::rows) {
        range.rowFirst = first;
        range.rowLast = last;
    } else {
        range.colFirst = first;
        range.colLast = last;
    }
    return range;
}

// A block of one cell is no block.
std::optional<CellRange> unlessOneCell(const CellRange& range) {
    if (range.rowFirst == range.rowLast && range.colFirst == range.colLast) return std::nullopt;
    return range;
}

std::optional<CellRange> pushed(const MovedLines& moved, const CellRange& range, Span span) {
    if (span.first + moved.count() >= moved.limit()) return std::nullopt;
    return withSpan(moved, range, {span.first + moved.count(), std::min(span.last + moved.count(), moved.limit() - 1)});
}

MovedRange afterInsertion(const MovedLines& moved, const CellRange& range, Span span) {
    if (span.first >= moved.first) {
        const auto whole = pushed(moved, range, span);
        return {whole ? unlessOneCell(*whole) : whole, {}};
    }
    const auto lower = pushed(moved, range, {moved.first, span.last});
    return {unlessOneCell(withSpan(moved, range, {span.first, moved.first - 1})),
            lower ? unlessOneCell(*lower) : lower};
}

MovedRange afterRemoval(const MovedLines& moved, const CellRange& range, Span span) {
    if (span.first >= moved.first && span.last <= moved.last) return {};
    const auto newFirst = span.first < moved.first  ? span.first
                          : span.first > moved.last ? span.first - moved.count()
                                                    : moved.first;
    const auto newLast = span.last > moved.last ? span.last - moved.count() : moved.first - 1;
    return {unlessOneCell(withSpan(moved, range, {newFirst, newLast})), {}};
}

}  // namespace

std::optional<std::uint32_t> MovedLines::placeOf(std::uint32_t line) const {
    if (line < first) return line;
    if (isInsertion()) {
        if (line + count() >= limit()) return std::nullopt;
        return line + count();
    }
    if (line <= last) return std::nullopt;
    return line - count();
}

std::optional<CellRange> movedWhole(const MovedLines& moved, const CellRange& range, const char* cut) {
    const Span span = spanOf(moved, range);
    const auto first = moved.placeOf(span.first), last = moved.placeOf(span.last);
    if (first.has_value() != last.has_value()) throw vlerror(cut);
    if (!first) {
        if (!moved.isInsertion() && (span.first < moved.first || span.last > moved.last)) throw vlerror(cut);
        return std::nullopt;
    }
    if (*last - *first != span.last - span.first) throw vlerror(cut);
    return withSpan(moved, range, {*first, *last});
}

MovedRange movedInParts(const MovedLines& moved, const CellRange& range) {
    const Span span = spanOf(moved, range);
    if (span.last < moved.first || span.last < span.first) return {range, {}};
    return moved.isInsertion() ? afterInsertion(moved, range, span) : afterRemoval(moved, range, span);
}

}  // namespace vellum::biff
