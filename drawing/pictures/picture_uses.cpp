#include "drawing/pictures/picture_uses.h"

#include "drawing/art/containers.h"
#include "drawing/pictures/drawing_group.h"

namespace vellum::drawing {
namespace {

constexpr std::uint16_t pictureProperties[] = {property::pib, property::fillBlip, property::lineFillBlip};

/// A complex property has its picture in the shape: its value is a length.
template <class Use>
void forEachPicture(const OfficeArtSpContainer& shape, Use&& use) {
    for (const PropertyTable* const table : {&shape.fopt.table, &shape.secondary.table, &shape.tertiary.table,
                                             &shape.secondaryBehind.table, &shape.tertiaryBehind.table}) {
        for (const std::uint16_t id : pictureProperties) {
            const ArtProperty* const used = table->find(id);
            if (used != nullptr && used->value > 0 && (used->opid & ArtProperty::fComplex) == 0) use(used->value - 1);
        }
    }
}

}  // namespace

void addUses(DrawingGroup& group, const OfficeArtSpContainer& shape) {
    forEachPicture(shape, [&group](std::uint32_t id) { group.addUse(id); });
}

void dropUses(DrawingGroup& group, const OfficeArtSpContainer& shape) {
    forEachPicture(shape, [&group](std::uint32_t id) { group.dropUse(id); });
}

}  // namespace vellum::drawing
