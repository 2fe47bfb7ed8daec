// Pictures as the drawing group holds them.
#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "drawing/art/messages.h"
#include "drawing/art/record.h"
#include "drawing/art/type_list.h"
#include "engine/api/enums.h"
#include "engine/facts/digest.h"

namespace vellum {
namespace drawing {

/// MD5 of a picture's data.
using PictureUid = Digest;

/// Before the data of a metafile.
struct MetafileHeader {
    enum Compression : std::uint8_t { deflated = 0, stored = 0xFE };
    static constexpr std::uint8_t noFilter = 0xFE;
    static constexpr std::int32_t emuPerPixel = 9525;  // at 96 dpi

    std::uint32_t cb = 0;                    // bytes of the data, inflated
    std::array<std::int32_t, 4> rcBounds{};  // left, top, right, bottom, in units of the metafile's own
    std::array<std::int32_t, 2> ptSize{};    // width and height, EMU
    std::uint32_t cbSave = 0;                // bytes of the data as they lie in the file; some writers are off
    std::uint8_t compression = deflated;
    std::uint8_t filter = noFilter;
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("cb", r.cb);
        visit("rcBounds", r.rcBounds);
        visit("ptSize", r.ptSize);
        visit("cbSave", r.cbSave);
        visit("compression", r.compression);
        visit("filter", r.filter);
    }
};

/// What all forms of a picture have. Data that were read stay where the group's bytes are, which must outlive the
/// record; data of the book's own lie here.
struct BlipContent {
    PictureUid uid{};
    PictureUid secondUid{};   // of the picture that this one was made from; only with an odd instance
    std::uint8_t tag = 0xFF;  // of bitmaps
    MetafileHeader metafile;  // of metafiles
    std::span<const std::byte> stored;
    std::vector<std::byte> own;
    std::vector<std::byte> inflated;  // once it was asked for

    void read(std::span<const std::byte> body, bool hasSecondUid, bool isMetafile);
    void write(ArtOutput& out, bool hasSecondUid, bool isMetafile) const;
    [[nodiscard]] std::size_t size(bool hasSecondUid, bool isMetafile) const;
    /// The picture as a program wants it. Throws "error in compressed data".
    std::span<const std::byte> data(bool isMetafile);
    [[nodiscard]] std::span<const std::byte> bytes() const { return own.empty() ? stored : std::span(own); }
    /// Data of the book's own, and their identifier.
    void assign(std::span<const std::byte> bytes);

    struct Size {
        std::uint32_t width = 0, height = 0, dpiX = OfficeArtRecordBase::defaultDpi,
                      dpiY = OfficeArtRecordBase::defaultDpi;
    };
    [[nodiscard]] Size metafileSize() const;
    /// Of a bitmap, by its own header. Zeros when that says nothing.
    [[nodiscard]] Size bitmapSize() const;
};

}  // namespace drawing

namespace drawing {

/// A picture of any form, for who does not care which.
class Blip {
public:
    BlipContent content;

    [[nodiscard]] virtual bool isMetafile() const = 0;
    /// The code of the interfaces, a `PictureKind`.
    [[nodiscard]] virtual int pictureKind() const = 0;
    /// Takes over data of the book's own.
    virtual void makeBlip(std::uint16_t recInstance, std::span<const std::byte> bytes) = 0;
    /// The picture as a program wants it.
    std::span<const std::byte> data() { return content.data(isMetafile()); }

protected:
    Blip() = default;
    Blip(const Blip&) = default;
    Blip& operator=(const Blip&) = default;
    ~Blip() = default;
};

}  // namespace drawing

/// The instance is odd when the picture has a second identifier.
template <bool Metafile, unsigned RecType, int Kind>
class OfficeArtBlip final : public OfficeArtRecord<3, 0, 0, RecType, 0>, public drawing::Blip {
public:
    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtBlip>(*this);
    }
    [[nodiscard]] bool isMetafile() const override { return Metafile; }
    [[nodiscard]] int pictureKind() const override { return Kind; }
    void makeBlip(std::uint16_t recInstance, std::span<const std::byte> bytes) override {
        this->make();
        this->header.recInstance = recInstance;
        content.assign(bytes);
    }
    [[nodiscard]] std::uint32_t pictureWidth() const override { return pixels().width; }
    [[nodiscard]] std::uint32_t pictureHeight() const override { return pixels().height; }
    [[nodiscard]] std::uint32_t pictureDpiX() const override { return pixels().dpiX; }
    [[nodiscard]] std::uint32_t pictureDpiY() const override { return pixels().dpiY; }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override {
        content.read(in.take(size), hasSecondUid(), Metafile);
    }
    void writeBody(drawing::ArtOutput& out) const override { content.write(out, hasSecondUid(), Metafile); }
    [[nodiscard]] std::size_t bodySize() const override { return content.size(hasSecondUid(), Metafile); }
    [[nodiscard]] const char* overrun(bool pastStream) const override {
        return pastStream ? drawing::msg::blipNotContinued : drawing::msg::blipCorrupt;
    }

private:
    [[nodiscard]] bool hasSecondUid() const { return (this->header.recInstance & 1) != 0; }
    [[nodiscard]] drawing::BlipContent::Size pixels() const {
        return Metafile ? content.metafileSize() : content.bitmapSize();
    }
};

using OfficeArtBlipEMF = OfficeArtBlip<true, 61466, pictureEmf>;
using OfficeArtBlipWMF = OfficeArtBlip<true, 61467, pictureWmf>;
using OfficeArtBlipPICT = OfficeArtBlip<true, 61468, picturePict>;
using OfficeArtBlipJPEG = OfficeArtBlip<false, 61469, pictureJpeg>;
using OfficeArtBlipPNG = OfficeArtBlip<false, 61470, picturePng>;
using OfficeArtBlipDIB = OfficeArtBlip<false, 61471, pictureBmp>;
using OfficeArtBlipTIFF = OfficeArtBlip<false, 61472, pictureTiff>;
// The published identifier of TIFF, and a second one of JPEG.
using OfficeArtBlipTIFF2 = OfficeArtBlip<false, 61481, pictureTiff>;
using OfficeArtBlipJPEG2 = OfficeArtBlip<false, 61482, pictureJpeg>;

namespace drawing {
using BlipTypes = ArtTypes<OfficeArtBlipEMF, OfficeArtBlipWMF, OfficeArtBlipPICT, OfficeArtBlipJPEG, OfficeArtBlipPNG,
                           OfficeArtBlipDIB, OfficeArtBlipTIFF, OfficeArtBlipTIFF2, OfficeArtBlipJPEG2>;
}

}  // namespace vellum
