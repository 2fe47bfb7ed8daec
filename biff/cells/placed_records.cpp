#include "biff/cells/placed_records.h"

#include <algorithm>
#include <iterator>

#include "biff/container/record_ids.h"

namespace vellum {
namespace {

constexpr bool single = true;

// Sorted by id.
constexpr KeptRule rules[] = {
    {record_id::Pls, Place::printerData},  // one per platform occurs
    {record_id::DCon, Place::consolidation, single},
    {record_id::Sort, Place::sorting, single},
    {record_id::AutoFilterInfo, Place::autoFilter, single},
    {record_id::PhoneticInfo, Place::phonetic, single},
    {record_id::CodeName, Place::codeName, single},
    {record_id::EntExU2, Place::formulaExtension, single},
    {record_id::FeatHdr11, Place::tables},
    {record_id::Feature11, Place::tables},
    {record_id::DropDownObjIds, Place::dropDowns, single},
    {record_id::List12, Place::tables},
    {record_id::Feature12, Place::tables},
    {record_id::AutoFilter12, Place::tables},  // of a table
    {record_id::PLV, Place::pageLayoutView, single},
    {record_id::SortData, Place::tables},
    {record_id::HeaderFooter, Place::headerFooter},  // one per custom view occurs
};
static_assert(std::ranges::is_sorted(rules, {}, &KeptRule::id));

}  // namespace

KeptRule keptRule(std::uint16_t id) {
    const auto* const rule = std::ranges::lower_bound(rules, id, {}, &KeptRule::id);
    if (rule != std::end(rules) && rule->id == id) return *rule;
    return {id, Place::other};
}

void PlacedRecords::add(const KeptRule& rule, std::uint16_t id, std::span<const std::byte> wire) {
    if (rule.single) {
        const auto earlier = std::ranges::find(_singles, id, [this](std::size_t entry) { return _entries[entry].id; });
        if (earlier != _singles.end()) {
            _entries[*earlier].place = Place::none;
            *earlier = _entries.size();
        } else {
            _singles.push_back(_entries.size());
        }
    }
    _entries.push_back({byteCount(), 0, id, rule.place});
    append(wire);
}

void PlacedRecords::append(std::span<const std::byte> wire) {
    _run.append(wire);
    _entries.back().size = byteCount() - _entries.back().at;
}

bool PlacedRecords::has(Place place) const {
    return std::ranges::any_of(_entries, [place](const Entry& entry) { return entry.place == place; });
}

void PlacedRecords::remove(Place place) {
    std::erase_if(_entries, [place](const Entry& entry) { return entry.place == place; });
}

void PlacedRecords::removeRecords(std::uint16_t id) {
    std::erase_if(_entries, [id](const Entry& entry) { return entry.id == id; });
}

std::size_t PlacedRecords::countRecords(std::uint16_t id) const {
    constexpr std::size_t headerSize = 4;
    const auto word = [](std::span<const std::byte> wire, std::size_t at) {
        return static_cast<std::uint16_t>(std::to_integer<unsigned>(wire[at]) | std::to_integer<unsigned>(wire[at + 1])
                                                                                    << 8);
    };
    std::size_t total = 0;
    for (const Entry& entry : _entries) {
        const auto wire = bytesOf(entry);
        for (std::size_t at = 0; at + headerSize <= wire.size(); at += headerSize + word(wire, at + 2)) {
            total += word(wire, at) == id;
        }
    }
    return total;
}

void PlacedRecords::clear() {
    *this = PlacedRecords();
}

void PlacedRecords::sort() {
    std::erase_if(_entries, [](const Entry& entry) { return entry.place == Place::none; });
    std::ranges::stable_sort(_entries, {}, &Entry::place);
    _singles.clear();
    _run.shrink();
    _entries.shrink_to_fit();
}

}  // namespace vellum
