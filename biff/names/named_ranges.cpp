#include "biff/names/named_ranges.h"

#include "biff/container/messages.h"
#include "biff/names/name_messages.h"
#include "engine/failure/vlerror.h"
#include "engine/text/string_pool.h"

namespace vellum::biff {

namespace {

constexpr int rowLimit = 65536, colLimit = 256;

void checkCell(int row, int col) {
    if (row < 0 || row >= rowLimit) throw vlerror(msg::rowRange);
    if (col < 0 || col >= colLimit) throw vlerror(msg::colRange);
}

void checkText(std::wstring_view text) {
    if (text.empty()) throw vlerror(msg::nameEmpty);
    if (text.find(L' ') != std::wstring_view::npos) throw vlerror(msg::nameWithSpace);
    if (text.size() > Lbl::maxText) throw vlerror(msg::stringTooLong);
}

// The very text before one of other case, which the format does not allow beside it.
std::optional<std::size_t> findToSet(const DefinedNames& names, std::wstring_view text, Scope scope) {
    std::optional<std::size_t> found, similar;
    names.forEachCalled(text, [&](std::size_t i) {
        if (!scope.fits(names.at(i))) return;
        auto& place = names.at(i).text() == text ? found : similar;
        if (!place) place = i;
    });
    return found ? found : similar;
}

void changeRange(Lbl& name, const DefinedNames& names, PlainRange range, int sheet) {
    const auto old = PlainRange::of(name.tokens());
    const bool isArea = name.tokens().size() == PlainRange::areaSize;
    if (!old || !(isArea || range.area.isCell())) {
        name.setTokens(range.tokens());
        return;
    }
    if (names.links.ownSheets(old->xti) == SheetSpan{sheet, sheet}) range.xti = old->xti;
    range.patch(name.patchTokens());
}

}  // namespace

void checkArea(const NameArea& area) {
    checkCell(area.rowFirst, area.colFirst);
    checkCell(area.rowLast, area.colLast);
    if (area.rowFirst > area.rowLast) throw vlerror(msg::rowOrder);
    if (area.colFirst > area.colLast) throw vlerror(msg::colOrder);
}

FoundRange findNamedRange(const DefinedNames& names, std::wstring_view text, Scope scope) {
    const auto found = names.find(text, scope);
    const auto range = found ? PlainRange::of(names.at(*found).tokens()) : std::nullopt;
    const auto sheets = range ? names.links.ownSheets(range->xti) : std::nullopt;
    if (!sheets || sheets->first < 0 || sheets->last < 0) throw vlerror(msg::nameNotFound);
    return {range->area, names.at(*found).isHidden()};
}

void setNamedRange(DefinedNames& names, StringPool& pool, int sheet, int sheetCount, const NamedRange& range) {
    checkArea(range.area);
    checkText(range.text);
    if (range.scope.value < Lbl::noScope || range.scope.value >= sheetCount) throw vlerror(msg::indexOutOfRange);
    const auto found = findToSet(names, range.text, range.scope);
    const int scope = range.scope.value == Lbl::noScope ? sheet : range.scope.value;
    const auto gone = found ? std::nullopt : names.findGone(range.text, scope);
    if (!found && !gone) names.requireRoom();

    PlainRange expression{.area = range.area};
    expression.xti = names.links.indexOf({sheet, sheet});
    if (found) {
        Lbl& name = names.change(*found);
        changeRange(name, names, expression, sheet);
        name.setHidden(range.isHidden);
    } else if (gone) {
        Lbl& name = names.change(*gone);
        name.revive(expression.tokens());
        name.setHidden(range.isHidden);
    } else {
        const std::uint16_t flags = range.isHidden ? Lbl::hidden : 0;
        const std::wstring_view text(pool.copy(range.text), range.text.size());
        names.add(Lbl::make(flags, scope, text, expression.tokens()));
    }
}

void removeNamedRange(DefinedNames& names, int sheet, std::wstring_view text, Scope scope) {
    std::optional<std::size_t> found;
    if (scope.value == Lbl::noScope) {
        names.forEachCalled(text, [&](std::size_t i) {
            const auto sheets = names.reach(names.at(i));
            if (!found && sheets && sheets->holds(sheet)) found = i;
        });
    } else {
        found = names.find(text, scope);
    }
    if (!found) throw vlerror(msg::nameNotFound);
    names.remove(*found);
}

}  // namespace vellum::biff
