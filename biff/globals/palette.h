// The 56 colours of a binary workbook that its cells and fonts name by index.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>

#include "biff/container/record_ids.h"

namespace vellum {

class Xls;

struct PaletteColor {
    std::uint8_t red = 0, green = 0, blue = 0, reserved = 0;

    bool operator==(const PaletteColor&) const = default;
};

/// Colour indices 8 to 63. Indices 0 to 7 are fixed (black, white, red, green, blue, yellow, magenta,
/// cyan) and stand in no record.
class Palette {
public:
    static constexpr std::uint16_t id = record_id::Palette;
    static constexpr const char* name = "Palette";
    static constexpr int firstIndex = 8, size = 56;

    /// The standard colours, none used, and no record to be written.
    Palette();

    /// The index of a colour, 8 to 63: an entry of that colour, else the next entry that no earlier
    /// call asked for, which then gets this colour. Throws when all are taken.
    int pack(int red, int green, int blue);
    /// The index of the entry nearest to a colour; changes nothing.
    [[nodiscard]] int nearest(int red, int green, int blue) const;
    /// The colour of an index from 0 to 63. Throws "index is out of range".
    [[nodiscard]] PaletteColor at(int index) const;

    /// A file carries the record only when somebody changed a colour.
    [[nodiscard]] bool present() const { return _present; }

    /// The body of a record. A file may list fewer or more colours than 56.
    void read(Xls& in, std::uint16_t bodySize);
    /// Header and body.
    void write(Xls& out) const;

private:
    std::array<PaletteColor, size> _colors;
    std::array<bool, size> _used{};
    bool _present = false;
};

}  // namespace vellum
