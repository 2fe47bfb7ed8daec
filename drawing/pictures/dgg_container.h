// The drawing group: what the drawings of all sheets share.
#pragma once
#include <memory>
#include <vector>

#include "drawing/art/fixed_records.h"
#include "drawing/art/list_records.h"
#include "drawing/art/property_table.h"
#include "drawing/pictures/fbse.h"

namespace vellum {
namespace drawing {

/// The pictures of a book. A picture may stand in it without an entry of its own; then it has no number.
class OfficeArtBStoreContainer final : public OfficeArtRecord<2, 15, 0, 61441, 0> {
public:
    std::vector<std::unique_ptr<OfficeArtRecordBase>> records;
    std::vector<OfficeArtFBSE*> entries;  // those of the records that are entries, in their order
    std::vector<std::byte> rest;

    OfficeArtBStoreContainer() = default;
    OfficeArtBStoreContainer(const OfficeArtBStoreContainer& other);
    OfficeArtBStoreContainer(OfficeArtBStoreContainer&&) = default;
    OfficeArtBStoreContainer& operator=(OfficeArtBStoreContainer&&) = default;
    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtBStoreContainer>(*this);
    }
    void add(std::unique_ptr<OfficeArtRecordBase> record);

protected:
    void readBody(ArtInput& in, std::size_t size) override;
    void writeBody(ArtOutput& out) const override;
    [[nodiscard]] std::size_t bodySize() const override;
    [[nodiscard]] const char* overrun(bool) const override;
    [[nodiscard]] bool readsAsFarAsItGoes() const override { return true; }
};

}  // namespace drawing

class OfficeArtDggContainer final : public OfficeArtRecord<7, 15, 0, 61440, 0> {
public:
    OfficeArtFDGGBlock fdgg;
    drawing::OfficeArtBStoreContainer pictures;
    OfficeArtFOPT fopt;
    OfficeArtTertiaryFOPT tertiary;
    OfficeArtColorMRUContainer colorMru;
    OfficeArtSplitMenuColorContainer splitMenuColors;
    std::vector<std::byte> tail;  // whatever stands behind

    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtDggContainer>(*this);
    }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override;
    void writeBody(drawing::ArtOutput& out) const override;
    [[nodiscard]] std::size_t bodySize() const override;
    [[nodiscard]] bool readsAsFarAsItGoes() const override { return true; }

private:
    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit);
};

}  // namespace vellum
