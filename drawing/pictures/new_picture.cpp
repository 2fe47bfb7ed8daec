#include "drawing/pictures/new_picture.h"

#include <algorithm>
#include <iterator>

#include "drawing/art/messages.h"
#include "engine/facts/image_messages.h"
#include "engine/facts/image_size.h"
#include "engine/failure/vlerror.h"

namespace vellum::drawing {
namespace {

template <class Record>
std::unique_ptr<OfficeArtRecordBase> makeRecord() {
    return std::make_unique<Record>();
}

struct PictureForm {
    ImageFormat format;
    std::unique_ptr<OfficeArtRecordBase> (*makeBlip)();
    std::uint16_t instance;  // of a picture with one identifier
    std::uint8_t kind;       // in the list's entry
    std::size_t fileHeader;  // bytes that come off
};

constexpr PictureForm forms[] = {
    {ImageFormat::png, makeRecord<OfficeArtBlipPNG>, 1760, 6, 0},
    {ImageFormat::jpeg, makeRecord<OfficeArtBlipJPEG>, 1130, 5, 0},
    {ImageFormat::wmf, makeRecord<OfficeArtBlipWMF>, 534, 3, placeableHeaderSize},
    {ImageFormat::bmp, makeRecord<OfficeArtBlipDIB>, 1960, 7, bitmapFileHeaderSize},
    {ImageFormat::dib, makeRecord<OfficeArtBlipDIB>, 1960, 7, 0},
    {ImageFormat::emf, makeRecord<OfficeArtBlipEMF>, 980, 2, 0},
    {ImageFormat::bareWmf, makeRecord<OfficeArtBlipEMF>, 980, 2, 0},  // the first bytes are those of an EMF
};

// Of a metafile whose header does not tell.
constexpr int unknownWidth = 960, unknownHeight = 720;

std::array<std::int32_t, 2> metafileExtent(const ImageHeader& header) {
    const auto emu = [](int pixels) {
        constexpr std::int64_t most = 2147483647;
        return static_cast<std::int32_t>(
            std::min<std::int64_t>(std::int64_t{pixels} * MetafileHeader::emuPerPixel, most));
    };
    const bool known = header.width > 0 && header.height > 0;
    return {emu(known ? header.width : unknownWidth), emu(known ? header.height : unknownHeight)};
}

}  // namespace

std::unique_ptr<OfficeArtFBSE> newPicture(std::span<const std::byte> file) {
    const ImageHeader header = readImageHeader(file);
    const auto* const form = std::ranges::find(forms, header.format, &PictureForm::format);
    if (form == std::end(forms)) throw vlerror(msg::unknownPictureFormat);
    const auto stored = file.subspan(std::min(form->fileHeader, file.size()));
    if (stored.empty()) throw vlerror(msg::blipEmpty);

    auto entry = std::make_unique<OfficeArtFBSE>();
    entry->blip = form->makeBlip();
    Blip& blip = *entry->picture();
    blip.makeBlip(form->instance, stored);
    blip.content.metafile.ptSize = metafileExtent(header);
    static_cast<void>(entry->blip->pictureWidth());  // what has a broken header is not taken
    entry->header.recInstance = entry->entry.btWin32 = entry->entry.btMacOS = form->kind;
    entry->entry.rgbUid = blip.content.uid;
    entry->entry.size = static_cast<std::uint32_t>(entry->blip->size());
    entry->make();
    return entry;
}

}  // namespace vellum::drawing
