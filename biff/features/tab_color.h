// The colour of a sheet's tab.
#pragma once
#include <array>
#include <cstdint>

#include "biff/container/record_ids.h"

namespace vellum {

class Xls;

/// Extras of a sheet. Records of older writers end behind the first word.
struct SheetExt {
    static constexpr std::uint16_t id = record_id::SheetExt;
    static constexpr const char* name = "SheetExt";

    static constexpr std::uint32_t indexMask = 0x7F;  // of both words; 0x7F: no colour
    enum ColorType : std::uint32_t { automatic = 0, byIndex = 1, rgb = 2, theme = 3 };

    std::uint16_t rt = record_id::SheetExt, grbitFrt = 0;
    std::array<std::uint8_t, 8> frtReserved{};
    std::uint32_t cb = 0;  // bytes of the record
    std::uint32_t flags = 0;
    std::uint32_t flags2 = 0;  // the index again, and whether conditional formats are calculated, the sheet published
    std::uint32_t xclrType = 0;
    std::uint32_t xclrValue = 0;  // an index, or red in the lowest byte
    double numTint = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("rt", r.rt);
        visit("grbitFrt", r.grbitFrt);
        visit("frtReserved", r.frtReserved);
        visit("cb", r.cb);
        visit("flags", r.flags);
        visit("flags2", r.flags2);
        visit("xclrType", r.xclrType);
        visit("xclrValue", r.xclrValue);
        visit("numTint", r.numTint);
    }
};

namespace biff {

class TabColor {
public:
    static constexpr std::size_t shortSize = 20, fullSize = 40;

    /// Takes the record if it is a SheetExt. Throws "SheetExt size is incorrect".
    bool read(RecordHeader header, Xls& in);
    void write(Xls& out) const;

    void setIndex(int index);
    /// With the index of the palette's nearest colour, by which older readers go.
    void setRgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue, int nearest);

private:
    /// At least as large a record.
    void resize(std::size_t size);

    SheetExt _ext;
    std::uint8_t _size = 0;  // of the record, 0: none
};

}  // namespace biff
}  // namespace vellum
