// Tables of shape properties.
#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "drawing/art/record.h"

namespace vellum {
namespace drawing {

/// Properties of a shape, by their published numbers.
namespace property {
inline constexpr std::uint16_t lTxid = 128;
inline constexpr std::uint16_t textBooleans = 191;
inline constexpr std::uint16_t pib = 260;  // place in the picture list, from 1
inline constexpr std::uint16_t pibName = 261;
inline constexpr std::uint16_t connectType = 344;
inline constexpr std::uint16_t fillColor = 385;
inline constexpr std::uint16_t fillBackColor = 387;
inline constexpr std::uint16_t fillBlip = 390;  // a place in the picture list too
inline constexpr std::uint16_t fillBooleans = 447;
inline constexpr std::uint16_t lineColor = 448;
inline constexpr std::uint16_t lineFillBlip = 453;  // and this
inline constexpr std::uint16_t shadowColor = 513;
inline constexpr std::uint16_t shadowBooleans = 575;
inline constexpr std::uint16_t groupBooleans = 959;
}  // namespace property

/// One property: a value, or the length of data behind the table.
struct ArtProperty {
    static constexpr std::uint16_t fBid = 0x4000, fComplex = 0x8000, idMask = 0x3FFF;

    std::uint16_t opid = 0;  // the number and the two flags
    std::uint32_t value = 0;

    [[nodiscard]] std::uint16_t id() const { return opid & idMask; }
};

/// The entries, sorted by number in real files, and the data of those that are complex, in the order of the entries.
/// The data are one run: values of arrays are 6 bytes short of the truth in files of some writers.
struct PropertyTable {
    std::vector<ArtProperty> entries;
    std::vector<std::byte> complex;

    static constexpr std::size_t entrySize = 6;

    /// Null when the table has no such entry.
    [[nodiscard]] const ArtProperty* find(std::uint16_t id) const;
    void add(std::uint16_t opid, std::uint32_t value) { entries.push_back({opid, value}); }

    /// `count` is a claim of the header; as many entries are read as the bytes hold.
    void read(std::span<const std::byte> body, std::size_t count);
    void write(ArtOutput& out) const;
    [[nodiscard]] std::size_t size() const { return entrySize * entries.size() + complex.size(); }
};

}  // namespace drawing

/// The instance of the record is the number of entries.
template <unsigned RecType>
class OfficeArtFOPTBase final : public OfficeArtRecord<3, 3, 0, RecType, 0> {
public:
    drawing::PropertyTable table;

    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtFOPTBase>(*this);
    }
    /// A table of the book's own.
    void makeTable() {
        this->make();
        this->header.recInstance = static_cast<std::uint16_t>(table.entries.size());
    }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override {
        table.read(in.take(size), this->header.recInstance);
    }
    void writeBody(drawing::ArtOutput& out) const override { table.write(out); }
    [[nodiscard]] std::size_t bodySize() const override { return table.size(); }
};

using OfficeArtFOPT = OfficeArtFOPTBase<61451>;
using OfficeArtSecondaryFOPT = OfficeArtFOPTBase<61729>;
using OfficeArtTertiaryFOPT = OfficeArtFOPTBase<61730>;

}  // namespace vellum
