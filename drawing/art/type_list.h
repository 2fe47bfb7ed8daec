// Lists of drawing record classes.
#pragma once
#include <memory>

#include "drawing/art/record.h"

namespace vellum::drawing {

template <class... Records>
struct ArtTypes {
    /// Calls `visit.template operator()<Record>()` for each.
    template <class Visit>
    static void forEach(Visit&& visit) {
        (visit.template operator()<Records>(), ...);
    }

    /// The next record when it is one of these, else null with nothing taken.
    static std::unique_ptr<OfficeArtRecordBase> readNext(ArtInput& in, std::size_t& remaining) {
        if (remaining < ArtHeader::wireSize) return nullptr;
        const std::size_t mark = in.position();
        const auto type = ArtHeader::read(in.take(ArtHeader::wireSize)).recType;
        in.seek(mark);
        std::unique_ptr<OfficeArtRecordBase> found;
        (void)(((type == Records::kind.recType) && (found = take<Records>(in, remaining)) != nullptr) || ...);
        return found;
    }

private:
    template <class Record>
    static std::unique_ptr<OfficeArtRecordBase> take(ArtInput& in, std::size_t& remaining) {
        auto record = std::make_unique<Record>();
        if (record->read(in, remaining) == 0) return nullptr;
        return record;
    }
};

}  // namespace vellum::drawing
