#include "xlsx/pages/page_breaks.h"

#include <algorithm>
#include <utility>

#include "engine/facts/cell_address.h"
#include "engine/failure/vlerror.h"
#include "xlsx/features/messages.h"

namespace vellum::xlsx {

template <class Tag>
auto PageBreaks<Tag>::find() const -> const List* {
    const auto& sheet = std::as_const(_sheet);
    return _kind == BreakKind::above ? sheet.find_rowBreaks() : sheet.find_colBreaks();
}

template <class Tag>
auto PageBreaks<Tag>::make() -> List& {
    return _kind == BreakKind::above ? _sheet.rowBreaks() : _sheet.colBreaks();
}

template <class Tag>
std::size_t PageBreaks<Tag>::total() const {
    const List* const list = find();
    return list ? list->brk().size() : 0;
}

template <class Tag>
std::uint32_t PageBreaks<Tag>::at(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= total()) throw vlerror(msg::indexOutOfRange);
    const auto& element = find()->brk()[static_cast<std::size_t>(index)];
    if (!element.isset_id()) throw vlerror(msg::breakWithoutId);
    return element.id();
}

template <class Tag>
void PageBreaks<Tag>::putInOrder(List& list) {
    if (_inOrder) return;
    list.brk().stableSort([](const auto& a, const auto& b) { return a.id() < b.id(); });
    const auto isManual = [](const auto& element) { return element.man(); };
    _manual = static_cast<unsigned>(std::count_if(list.brk().begin(), list.brk().end(), isManual));
    _inOrder = true;
}

/// Of the first break that does not stand in front of the position.
template <class Tag>
std::size_t PageBreaks<Tag>::placeOf(const List& list, std::uint32_t position) {
    const auto& breaks = list.brk();
    const auto found =
        std::lower_bound(breaks.begin(), breaks.end(), position,
                         [](const auto& element, std::uint32_t wanted) { return element.id() < wanted; });
    return static_cast<std::size_t>(found - breaks.begin());
}

template <class Tag>
void PageBreaks<Tag>::setCounts(List& list) const {
    list.count(static_cast<unsigned>(list.brk().size()));
    list.manualBreakCount(_manual);
}

template <class Tag>
void PageBreaks<Tag>::add(std::uint32_t position) {
    List& list = make();
    putInOrder(list);
    const std::size_t place = placeOf(list, position);
    if (place < list.brk().size() && list.brk()[place].id() == position) throw vlerror(msg::breakExists);
    auto& element = list.brk().insert(place);
    element.id(position);
    element.max((_kind == BreakKind::above ? sheetColumns : sheetRows) - 1);
    element.man(true);
    ++_manual;
    setCounts(list);
}

template <class Tag>
void PageBreaks<Tag>::remove(std::uint32_t position) {
    if (!find()) throw vlerror(msg::breakNotFound);
    List& list = make();
    putInOrder(list);
    const std::size_t place = placeOf(list, position);
    if (place == list.brk().size() || list.brk()[place].id() != position) throw vlerror(msg::breakNotFound);
    if (list.brk()[place].man()) --_manual;
    list.brk().erase(place);
    setCounts(list);
    if (!list.brk().empty()) return;
    if (_kind == BreakKind::above) {
        _sheet.unset_rowBreaks();
    } else {
        _sheet.unset_colBreaks();
    }
}

template class PageBreaks<ooxml::excelNormal_tag>;
template class PageBreaks<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
