#include "xlsx/layout/merges.h"

#include <string_view>
#include <utility>
#include <vector>

#include "engine/failure/vlerror.h"
#include "xlsx/features/messages.h"

namespace vellum::xlsx {
namespace {

template <class MergeCell>
std::optional<CellRange> rangeOf(const MergeCell& element) {
    return readCellRange(std::string_view(element.ref()));
}

bool isOneCell(const CellRange& range) {
    return range.rowFirst == range.rowLast && range.colFirst == range.colLast;
}

}  // namespace

template <class Tag>
std::size_t Merges<Tag>::total() const {
    const auto* const merges = std::as_const(_sheet).find_mergeCells();
    return merges ? merges->mergeCell().size() : 0;
}

template <class Tag>
std::size_t Merges<Tag>::checked(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= total()) throw vlerror(msg::indexOutOfRange);
    return static_cast<std::size_t>(index);
}

template <class Tag>
CellRange Merges<Tag>::at(int index) const {
    const std::size_t place = checked(index);
    const auto range = rangeOf(std::as_const(_sheet).find_mergeCells()->mergeCell()[place]);
    if (!range) throw vlerror(msg::refUnrecognized);
    return *range;
}

template <class Tag>
const RangeIndex& Merges<Tag>::index() {
    if (_index) return *_index;
    std::vector<RangeIndex::Entry> entries;
    entries.reserve(total());
    if (const auto* const merges = std::as_const(_sheet).find_mergeCells()) {
        std::uint32_t place = 0;
        _indexed.clear();
        _indexed.reserve(total());
        for (const auto& element : merges->mergeCell()) {
            if (const auto range = rangeOf(element)) entries.push_back({*range, place});
            _indexed.push_back(&element);
            ++place;
        }
    }
    return _index.emplace(std::move(entries));
}

template <class Tag>
std::optional<CellRange> Merges<Tag>::find(int row, int col) {
    const auto* const found = index().firstAt(static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(col));
    return found ? std::optional(found->range) : std::nullopt;
}

template <class Tag>
void Merges<Tag>::add(const CellRange& range) {
    _sheet.mergeCells().mergeCell().append().ref(cellRangeText(range));
    changed();
}

template <class Tag>
bool Merges<Tag>::removeAt(int row, int col) {
    index();
    bool removed = false;
    while (const auto* const found =
               _index->firstAt(static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(col))) {
        auto& list = _sheet.mergeCells().mergeCell();
        auto element = list.begin();
        while (&*element != _indexed[found->place]) ++element;
        list.erase(static_cast<std::size_t>(element - list.begin()));
        _index->drop(*found);
        removed = true;
    }
    if (removed) setCount();
    return removed;
}

template <class Tag>
void Merges<Tag>::remove(int index) {
    const std::size_t at = checked(index);
    _sheet.mergeCells().mergeCell().erase(at);
    changed();
}

template <class Tag>
void Merges<Tag>::move(const CellMove& move) {
    removeIf([&](auto& element) {
        const auto old = rangeOf(element);
        if (!old) return false;
        const auto range = movedRange(*old, move);
        if (!range) return true;
        if (*range == *old) return false;
        element.ref(cellRangeText(*range));
        return isOneCell(*range) && !isOneCell(*old);
    });
}

template <class Tag>
template <class IsGone>
bool Merges<Tag>::removeIf(IsGone&& isGone) {
    if (!_sheet.isset_mergeCells()) return false;
    auto& list = _sheet.mergeCells().mergeCell();
    const std::size_t before = list.size();
    list.eraseIf(isGone);
    const bool removed = list.size() != before;
    changed();
    return removed;
}

template <class Tag>
void Merges<Tag>::changed() {
    _index.reset();
    setCount();
}

template <class Tag>
void Merges<Tag>::setCount() {
    if (total() == 0) {
        _sheet.unset_mergeCells();
    } else {
        _sheet.mergeCells().count(static_cast<unsigned>(total()));
    }
}

template class Merges<ooxml::excelNormal_tag>;
template class Merges<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
