#include "xlsx/layout/columns.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <utility>
#include <vector>

#include "engine/facts/cell_address.h"
#include "xlsx/layout/column_width.h"

namespace vellum::xlsx {

template <class Tag>
auto Columns<Tag>::findList() const -> const List* {
    const auto& lists = std::as_const(_sheet).cols();
    return lists.empty() ? nullptr : &lists[0].col();
}

template <class Tag>
bool Columns<Tag>::inOrder() const {
    if (_sheet.cols().size() > 1) return false;
    const List* const list = findList();
    if (!list) return true;
    std::uint32_t before = 0;
    return std::all_of(list->begin(), list->end(), [&](const Col& col) {
        const bool fits = col.min() > before && col.min() <= col.max();
        before = col.max();
        return fits;
    });
}

template <class Tag>
void Columns<Tag>::putInOrder() {
    if (inOrder()) return;
    std::vector<const Col*> elements;
    for (const auto& cols : _sheet.cols()) {
        for (const Col& col : cols.col()) elements.push_back(&col);
    }
    // Each column goes to the last element that covers it. `free` leads to the next column that has none yet.
    std::vector<const Col*> owners(sheetColumns, nullptr);
    std::vector<std::uint32_t> free(sheetColumns + 1);
    std::iota(free.begin(), free.end(), 0U);
    const auto nextFree = [&](std::uint32_t col) {
        while (free[col] != col) col = free[col] = free[free[col]];
        return col;
    };
    for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
        const std::uint32_t first = std::max((*element)->min(), 1U) - 1,
                            end = std::min((*element)->max(), sheetColumns);
        for (std::uint32_t col = nextFree(std::min(first, sheetColumns)); col < end; col = nextFree(col)) {
            owners[col] = *element;
            free[col] = col + 1;
        }
    }
    List sorted;
    for (std::uint32_t col = 0; col < sheetColumns; ++col) {
        if (!owners[col]) continue;
        if (col == 0 || owners[col - 1] != owners[col]) sorted.push_back(*owners[col]).min(col + 1);
        sorted.back().max(col + 1);
    }
    _sheet.unset_cols();
    if (!sorted.empty()) _sheet.cols().append().col() = sorted;
}

template <class Tag>
auto Columns<Tag>::find(std::uint32_t col) const -> const Col* {
    const List* const list = findList();
    if (!list) return nullptr;
    const auto found =
        std::lower_bound(list->begin(), list->end(), col + 1,
                         [](const Col& element, std::uint32_t wanted) { return element.max() < wanted; });
    return found != list->end() && found->min() <= col + 1 ? &*found : nullptr;
}

template <class Tag>
bool Columns<Tag>::isHidden(std::uint32_t col) const {
    const Col* const element = find(col);
    return element && element->hidden();
}

template <class Tag>
int Columns<Tag>::pixels(std::uint32_t col, const FontMetrics& metrics) const {
    const Col* const element = find(col);
    if (element && element->isset_width()) return pixelsOfStoredWidth(element->width(), metrics);
    const auto* const format = std::as_const(_sheet).find_sheetFormatPr();
    if (format && format->isset_defaultColWidth()) return pixelsOfStoredWidth(format->defaultColWidth(), metrics);
    return pixelsOfBaseWidth(format ? format->baseColWidth() : 8, metrics);
}

template <class Tag>
double Columns<Tag>::defaultWidth(const FontMetrics& metrics) const {
    const auto* const format = std::as_const(_sheet).find_sheetFormatPr();
    if (format && format->isset_defaultColWidth()) return format->defaultColWidth();
    const double pixels = pixelsOfBaseWidth(format ? format->baseColWidth() : 8, metrics);
    return std::floor(pixels / metrics.maxDigitWidth * 256) / 256;
}

/// The columns of element `at` from `min` (counted from 1) on get an element of their own.
template <class Tag>
void Columns<Tag>::split(List& list, std::size_t at, std::uint32_t min) {
    auto behind = std::make_unique<Col>(list[at]);
    behind->min(min);
    list[at].max(min - 1);
    list.insertNode(at + 1, behind.release());
}

template <class Tag>
auto Columns<Tag>::cut(std::uint32_t first, std::uint32_t last, std::optional<double> gapWidth) -> Run {
    if (_sheet.cols().empty()) {
        if (!gapWidth) return {0, 0};
        _sheet.cols().append();
    }
    List& list = _sheet.cols()[0].col();
    const std::uint32_t max = last + 1;
    std::uint32_t next = first + 1;
    const auto found = std::lower_bound(list.begin(), list.end(), next, [](const Col& element, std::uint32_t wanted) {
        return element.max() < wanted;
    });
    auto at = static_cast<std::size_t>(found - list.begin());
    if (at < list.size() && list[at].min() < next) split(list, at++, next);
    const std::size_t from = at;
    while (next <= max) {
        const bool covered = at < list.size() && list[at].min() == next;
        if (covered) {
            if (list[at].max() > max) split(list, at, max + 1);
            next = list[at++].max() + 1;
            continue;
        }
        const std::uint32_t end = at < list.size() ? std::min(max, list[at].min() - 1) : max;
        if (gapWidth) {
            Col& made = list.insert(at++);
            made.min(next);
            made.max(end);
            made.width(*gapWidth);
        }
        next = end + 1;
    }
    return {from, at};
}

template <class Tag>
void Columns<Tag>::setHidden(std::uint32_t first, std::uint32_t last, bool hidden, const FontMetrics& metrics) {
    const Run run = cut(first, last, hidden ? std::optional(defaultWidth(metrics)) : std::nullopt);
    for (std::size_t i = run.first; i < run.past; ++i) {
        if (hidden) {
            (*this)[i].hidden(true);
        } else {
            (*this)[i].unset_hidden();
        }
    }
}

/// Inserted columns have no element, whatever stands around them.
template <class Tag>
void Columns<Tag>::move(const CellMove& move) {
    if (_sheet.cols().empty()) return;
    List& list = _sheet.cols()[0].col();
    if (move.isInsert) {
        cut(move.first, sheetColumns - 1, {});  // what stands around the place is parted there
    } else {
        const Run gone = cut(move.first, move.last, {});
        list.erase(gone.first, gone.past);
    }
    list.eraseIf([&](Col& col) {
        if (col.min() <= move.first) return false;
        const auto span = movedSpan({col.min() - 1, col.max() - 1}, move);
        if (!span) return true;
        col.min(span->first + 1);
        col.max(span->last + 1);
        return false;
    });
    if (list.empty()) _sheet.unset_cols();
}

template class Columns<ooxml::excelNormal_tag>;
template class Columns<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
