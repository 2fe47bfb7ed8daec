// Drawing records that hold others: a shape, a group of shapes, the rules, and a sheet's whole drawing.
#pragma once
#include <memory>
#include <vector>

#include "drawing/art/fixed_records.h"
#include "drawing/art/list_records.h"
#include "drawing/art/property_table.h"
#include "drawing/art/record.h"
#include "drawing/art/type_list.h"

namespace vellum {

namespace drawing {
/// Groups nest to this depth; what lies deeper is kept as bytes. Real files reach 4.
inline constexpr int maxGroupDepth = 64;

using RuleTypes = ArtTypes<OfficeArtFConnectorRule, OfficeArtFArcRule, OfficeArtFCalloutRule>;
}  // namespace drawing

/// A shape. The members stand in the order in which they are read and written.
class OfficeArtSpContainer final : public OfficeArtRecord<7, 15, 0, 61444, 0> {
public:
    OfficeArtFSPGR fspgr;  // of a group only
    OfficeArtFSP fsp;
    OfficeArtFPSPL fpspl;
    OfficeArtFOPT fopt;
    OfficeArtSecondaryFOPT secondary;
    OfficeArtTertiaryFOPT tertiary;
    OfficeArtChildAnchor childAnchor;
    OfficeArtClientAnchorSheet anchor;
    OfficeArtClientData clientData;
    OfficeArtClientTextbox textbox;
    OfficeArtSecondaryFOPT secondaryBehind;
    OfficeArtTertiaryFOPT tertiaryBehind;
    std::vector<std::byte> rest;

    std::size_t position = 0;  // of its header in the drawing's bytes as read

    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtSpContainer>(*this);
    }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override;
    void writeBody(drawing::ArtOutput& out) const override;
    [[nodiscard]] std::size_t bodySize() const override;
    [[nodiscard]] const char* overrun(bool) const override;

private:
    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit);
};

/// A group: the shape that stands for the group itself, then shapes and groups.
class OfficeArtSpgrContainer final : public OfficeArtRecord<7, 15, 0, 61443, 0> {
public:
    OfficeArtSpContainer shape;
    std::vector<std::unique_ptr<OfficeArtRecordBase>> children;
    std::vector<std::byte> rest;

    std::size_t position = 0;
    int depth = 0;  // of groups around it

    OfficeArtSpgrContainer() = default;
    OfficeArtSpgrContainer(const OfficeArtSpgrContainer& other);
    OfficeArtSpgrContainer(OfficeArtSpgrContainer&&) = default;
    OfficeArtSpgrContainer& operator=(OfficeArtSpgrContainer&&) = default;
    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtSpgrContainer>(*this);
    }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override;
    void writeBody(drawing::ArtOutput& out) const override;
    [[nodiscard]] std::size_t bodySize() const override;
    [[nodiscard]] const char* overrun(bool) const override;

private:
    std::unique_ptr<OfficeArtRecordBase> readChild(drawing::ArtInput& in, std::size_t& remaining) const;
};

namespace drawing {
/// The shape of the group itself, and all in it, in file order.
template <class Visit>
void forEachShape(const OfficeArtSpgrContainer& group, Visit&& visit) {
    visit(group.shape);
    for (const auto& child : group.children) {
        if (const auto* const inner = dynamic_cast<const OfficeArtSpgrContainer*>(child.get())) {
            forEachShape(*inner, visit);
        } else {
            visit(static_cast<const OfficeArtSpContainer&>(*child));
        }
    }
}
}  // namespace drawing

/// Rules about connectors, arcs and callouts. The instance is their number.
class OfficeArtSolverContainer final : public OfficeArtRecord<3, 15, 0, 61445, 0> {
public:
    std::vector<std::unique_ptr<OfficeArtRecordBase>> rules;
    std::vector<std::byte> rest;

    std::size_t position = 0;

    OfficeArtSolverContainer() = default;
    OfficeArtSolverContainer(const OfficeArtSolverContainer& other);
    OfficeArtSolverContainer(OfficeArtSolverContainer&&) = default;
    OfficeArtSolverContainer& operator=(OfficeArtSolverContainer&&) = default;
    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtSolverContainer>(*this);
    }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override;
    void writeBody(drawing::ArtOutput& out) const override;
    [[nodiscard]] std::size_t bodySize() const override;
};

/// The drawing of a sheet. One writer gives it the version 0, which is not compared.
class OfficeArtDgContainer final : public OfficeArtRecord<6, 15, 0, 61442, 0> {
public:
    OfficeArtFDG fdg;
    OfficeArtFRITContainer frit;
    OfficeArtSpgrContainer group;
    OfficeArtSpContainer background;
    OfficeArtSolverContainer solver;
    std::vector<std::byte> rest;

    [[nodiscard]] std::unique_ptr<OfficeArtRecordBase> clone() const override {
        return std::make_unique<OfficeArtDgContainer>(*this);
    }

protected:
    void readBody(drawing::ArtInput& in, std::size_t size) override;
    void writeBody(drawing::ArtOutput& out) const override;
    [[nodiscard]] std::size_t bodySize() const override;
    [[nodiscard]] const char* overrun(bool) const override;

private:
    template <class Self, class Visit>
    static void members(Self& self, Visit&& visit);
};

}  // namespace vellum
