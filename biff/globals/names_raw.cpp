#include "biff/globals/names_raw.h"

#include <algorithm>

#include "biff/container/cursor.h"

namespace vellum {

namespace {

constexpr std::size_t itabOffset = 8;  // in a Lbl body; the sheet counted from 1, 0 for the whole workbook

// Where the record tells its sheet; null when it is cut short of that.
std::byte* itabOf(RawRecords& name) {
    const auto body = name.firstBody();
    return body.size() < itabOffset + 2 ? nullptr : &body[itabOffset];
}

}  // namespace

void renumberNames(std::vector<RawRecords>& names, std::span<const int> newIndex) {
    const auto goneAfterRenumbering = [&](RawRecords& name) {
        std::byte* const place = itabOf(name);
        if (place == nullptr) return false;
        const auto itab = loadLe<std::uint16_t>(place);
        if (itab == 0 || itab > newIndex.size()) return false;
        const int moved = newIndex[itab - 1U];
        if (moved >= 0) storeLe(place, static_cast<std::uint16_t>(moved + 1));
        return moved < 0;
    };
    std::erase_if(names, goneAfterRenumbering);
}

}  // namespace vellum
