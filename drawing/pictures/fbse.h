// Entries of the picture list.
#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "drawing/pictures/blip.h"

namespace vellum {
namespace drawing {

struct FbseFields {
    std::uint8_t btWin32 = 0, btMacOS = 0;
    PictureUid rgbUid{};
    std::uint16_t tag = 0xFF;
    std::uint32_t size = 0;  // of the picture with its header
    std::uint32_t cRef = 0;  // shapes that show it
    std::uint32_t foDelay = 0;
    std::uint8_t usage = 0;
    std::uint8_t cbName = 0;
    std::uint8_t unused2 = 0, unused3 = 0;
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("btWin32", r.btWin32);
        visit("btMacOS", r.btMacOS);
        visit("rgbUid", r.rgbUid);
        visit("tag", r.tag);
        visit("size", r.size);
        visit("cRef", r.cRef);
        visit("foDelay", r.foDelay);
        visit("usage", r.usage);
        visit("cbName", r.cbName);
        visit("unused2", r.unused2);
        visit("unused3", r.unused3);
    }
};

}  // namespace drawing

/// A picture of the book: how it is used, and the picture itself. Where a picture was deleted an entry without one is
/// left, since shapes name pictures by their place in the list. The instance is the form of the picture.
class OfficeArtFBSE final : public OfficeArtRecord<3, 2, 0, 61447, 0> {
public:
    drawing::FbseFields entry;
    std::vector<std::byte> name;                // UTF-16 with a null
    std::unique_ptr<OfficeArtRecordBase> blip;  // null when there is none that is known
    std::vector<std::byte> rest;

    OfficeArtFBSE() = default;
    OfficeArtFBSE(const OfficeArtFBSE& other);
    OfficeArtFBSE(OfficeArtFBSE&&) = default;
    OfficeArtFBSE& operator=(OfficeArtFBSE&&) = default;
    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtFBSE>(*this);
    }
    /// Null when the entry has none.
    [[nodiscard]] drawing::Blip* picture() const { return dynamic_cast<drawing::Blip*>(blip.get()); }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override;
    void writeBody(drawing::ArtOutput& out) const override;
    [[nodiscard]] std::size_t bodySize() const override;
    [[nodiscard]] const char* overrun(bool) const override;
    [[nodiscard]] bool readsAsFarAsItGoes() const override { return true; }
};

}  // namespace vellum
