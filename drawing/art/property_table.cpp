#include "drawing/art/property_table.h"

#include <algorithm>

namespace vellum::drawing {

const ArtProperty* PropertyTable::find(std::uint16_t id) const {
    const auto found = std::ranges::find(entries, id, &ArtProperty::id);
    return found == entries.end() ? nullptr : &*found;
}

void PropertyTable::read(std::span<const std::byte> body, std::size_t count) {
    Cursor in(body);
    entries.resize(std::min(count, body.size() / entrySize));
    for (ArtProperty& entry : entries) {
        entry.opid = in.get<std::uint16_t>();
        entry.value = in.get<std::uint32_t>();
    }
    complex.assign(in.rest().begin(), in.rest().end());
}

void PropertyTable::write(ArtOutput& out) const {
    for (const ArtProperty& entry : entries) {
        out.put(entry.opid);
        out.put(entry.value);
    }
    out.write(complex);
}

}  // namespace vellum::drawing
