// Drawing records that are a count and a list of numbers.
#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "drawing/art/record.h"

namespace vellum {

/// Identifier clusters of all drawings of a book: cluster k, counted from 1, gives the shape identifiers 1024 k to
/// 1024 k + 1023 to one drawing.
class OfficeArtFDGGBlock final : public OfficeArtRecord<7, 0, 0, 61446, 0> {
public:
    static constexpr std::uint32_t clusterSize = 1024;

    struct Cluster {
        std::uint32_t dgid = 0;      // 0 for one that was given back
        std::uint32_t cspidCur = 0;  // identifiers used, counted from its start; `clusterSize` when full
    };

    std::uint32_t spidMax = 0;   // above every identifier in use
    std::uint32_t cspSaved = 0;  // shapes of all drawings
    std::uint32_t cdgSaved = 0;  // drawings
    std::vector<Cluster> clusters;
    std::vector<std::byte> rest;

    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtFDGGBlock>(*this);
    }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override;
    void writeBody(drawing::ArtOutput& out) const override;
    [[nodiscard]] std::size_t bodySize() const override;
};

/// Pairs of group identifiers, new and old. The instance is their number.
class OfficeArtFRITContainer final : public OfficeArtRecord<3, 0, 0, 61720, 0> {
public:
    struct Pair {
        std::uint16_t frit = 0, fritOld = 0;
    };
    std::vector<Pair> pairs;
    std::vector<std::byte> rest;

    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtFRITContainer>(*this);
    }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override;
    void writeBody(drawing::ArtOutput& out) const override;
    [[nodiscard]] std::size_t bodySize() const override;
};

namespace drawing {

/// 32-bit numbers as many as the body holds.
struct NumberList {
    std::vector<std::uint32_t> numbers;
    std::vector<std::byte> rest;

    void read(std::span<const std::byte> body);
    void write(ArtOutput& out) const;
    [[nodiscard]] std::size_t size() const { return numbers.size() * sizeof(std::uint32_t) + rest.size(); }
};

}  // namespace drawing

template <class Self, unsigned Mask, unsigned RecType>
class NumberListRecord : public OfficeArtRecord<Mask, 0, 0, RecType, 0> {
public:
    drawing::NumberList list;

    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<Self>(static_cast<const Self&>(*this));
    }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override { list.read(in.take(size)); }
    void writeBody(drawing::ArtOutput& out) const override { list.write(out); }
    [[nodiscard]] std::size_t bodySize() const override { return list.size(); }
};

/// Colours used last. The instance is their number.
class OfficeArtColorMRUContainer final : public NumberListRecord<OfficeArtColorMRUContainer, 3, 61722> {};
/// The selection: number of shapes, 0, the shape in focus, then the shapes.
class OfficeArtFDGSL final : public NumberListRecord<OfficeArtFDGSL, 7, 61721> {};

}  // namespace vellum
