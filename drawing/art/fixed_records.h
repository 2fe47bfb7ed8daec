// Drawing records whose bodies are a list of fields.
#pragma once
#include <cstdint>
#include <memory>

#include "biff/container/record_codec.h"
#include "biff/container/sink.h"
#include "drawing/art/record.h"

namespace vellum {
namespace drawing {

/// The content of a record without a body.
struct NoFields {
    template <class Self, class Visit>
    static constexpr void fields(Self&, Visit&&) {}
};

/// Identifier and state of a shape. The instance of its record is the shape's type.
struct FspFields {
    enum Flags : std::uint32_t { group = 1, patriarch = 4, oleShape = 0x10, hasAnchor = 0x200, hasType = 0x800 };

    std::uint32_t spid = 0;
    std::uint32_t flags = 0;
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("spid", r.spid);
        visit("flags", r.flags);
    }
};

/// A rectangle: that of a group's inside, or a child's place in it.
struct ArtRect {
    std::int32_t xLeft = 0, yTop = 0, xRight = 0, yBottom = 0;
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("xLeft", r.xLeft);
        visit("yTop", r.yTop);
        visit("xRight", r.xRight);
        visit("yBottom", r.yBottom);
    }
};

/// Two cells, and how far into them the corners of a shape lie: dx in 1/1024 of the column's width, dy in 1/256 of
/// the row's height. Files hold values beyond the cell, and right ends before the left one.
struct AnchorFields {
    enum Flags : std::uint16_t { staysWhenCellsMove = 1, keepsSizeWhenCellsDo = 2 };

    std::uint16_t flags = 0;
    std::uint16_t colL = 0, dxL = 0, rwT = 0, dyT = 0;
    std::uint16_t colR = 0, dxR = 0, rwB = 0, dyB = 0;
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("flags", r.flags);
        visit("colL", r.colL);
        visit("dxL", r.dxL);
        visit("rwT", r.rwT);
        visit("dyT", r.dyT);
        visit("colR", r.colR);
        visit("dxR", r.dxR);
        visit("rwB", r.rwB);
        visit("dyB", r.dyB);
    }
};

/// Number of shapes of a drawing, and the last identifier given to one. The instance is the drawing's number.
struct FdgFields {
    std::uint32_t csp = 0, spidCur = 0;
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("csp", r.csp);
        visit("spidCur", r.spidCur);
    }
};

/// A connector and the shapes and points that it joins.
struct ConnectorRule {
    std::uint32_t ruid = 0, spidA = 0, spidB = 0, spidC = 0, cptiA = 0, cptiB = 0;
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("ruid", r.ruid);
        visit("spidA", r.spidA);
        visit("spidB", r.spidB);
        visit("spidC", r.spidC);
        visit("cptiA", r.cptiA);
        visit("cptiB", r.cptiB);
    }
};

/// A rule about one shape.
struct ShapeRule {
    std::uint32_t ruid = 0, spid = 0;
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("ruid", r.ruid);
        visit("spid", r.spid);
    }
};

/// A deleted shape: bits 0 to 29 its identifier.
struct DeletedShape {
    std::uint32_t spid = 0;
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("spid", r.spid);
    }
};

/// Colours that menus offer; the high byte of each says what the rest means.
struct MenuColors {
    std::uint32_t fill = 0, line = 0, shadow = 0, threeD = 0;
    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("fill", r.fill);
        visit("line", r.line);
        visit("shadow", r.shadow);
        visit("threeD", r.threeD);
    }
};

}  // namespace drawing

/// `Self` is the concrete class. The mask of each compares the length.
template <class Self, class Fields, unsigned Mask, unsigned RecVer, unsigned RecInstance, unsigned RecType>
class FixedArtRecord : public OfficeArtRecord<Mask, RecVer, RecInstance, RecType, wireSize<Fields>()>, public Fields {
public:
    static_assert((Mask & checkLen) != 0);
    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<Self>(static_cast<const Self&>(*this));
    }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override {
        Cursor body(in.take(size));
        readFields<Fields>(body, *this);
    }
    void writeBody(drawing::ArtOutput& out) const override {
        Fields::fields(static_cast<const Fields&>(*this), [&](const char*, const auto& field) { out.put(field); });
    }
    [[nodiscard]] std::size_t bodySize() const override { return wireSize<Fields>(); }
};

class OfficeArtFDG final : public FixedArtRecord<OfficeArtFDG, drawing::FdgFields, 11, 0, 0, 61448> {};
class OfficeArtFSPGR final : public FixedArtRecord<OfficeArtFSPGR, drawing::ArtRect, 15, 1, 0, 61449> {};
class OfficeArtFSP final : public FixedArtRecord<OfficeArtFSP, drawing::FspFields, 11, 2, 0, 61450> {};
class OfficeArtClientTextbox final : public FixedArtRecord<OfficeArtClientTextbox, drawing::NoFields, 15, 0, 0, 61453> {
};
class OfficeArtChildAnchor final : public FixedArtRecord<OfficeArtChildAnchor, drawing::ArtRect, 15, 0, 0, 61455> {};
class OfficeArtClientAnchorSheet final
    : public FixedArtRecord<OfficeArtClientAnchorSheet, drawing::AnchorFields, 15, 0, 0, 61456> {};
class OfficeArtClientData final : public FixedArtRecord<OfficeArtClientData, drawing::NoFields, 15, 0, 0, 61457> {};
class OfficeArtFConnectorRule final
    : public FixedArtRecord<OfficeArtFConnectorRule, drawing::ConnectorRule, 15, 1, 0, 61458> {};
class OfficeArtFArcRule final : public FixedArtRecord<OfficeArtFArcRule, drawing::ShapeRule, 15, 0, 0, 61460> {};
class OfficeArtFCalloutRule final : public FixedArtRecord<OfficeArtFCalloutRule, drawing::ShapeRule, 15, 0, 0, 61463> {
};
class OfficeArtFPSPL final : public FixedArtRecord<OfficeArtFPSPL, drawing::DeletedShape, 15, 0, 0, 61725> {};
class OfficeArtSplitMenuColorContainer final
    : public FixedArtRecord<OfficeArtSplitMenuColorContainer, drawing::MenuColors, 15, 0, 4, 61726> {};

}  // namespace vellum
