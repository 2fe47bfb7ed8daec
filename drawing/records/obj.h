// The object behind a shape.
#pragma once
#include <cstdint>
#include <memory>

#include "drawing/records/obj_base.h"

namespace vellum {

/// An Obj record: what kind of object a shape is, its number on the sheet, and a run of sub-records that depend on the
/// kind, of which only the frame is looked at.
class Obj final : public ObjBase {
public:
    static constexpr std::uint16_t id = record_id::Obj;

    enum Type : std::uint16_t {
        group = 0,
        line = 1,
        rectangle = 2,
        oval = 3,
        chart = 5,
        text = 6,
        button = 7,
        picture = 8,
        polygon = 9,
        checkBox = 11,
        optionButton = 12,
        dropDown = 20,
        note = 25,
        officeArt = 30,
    };

    std::size_t read(Xls& in, std::size_t recordSize) override;
    [[nodiscard]] std::unique_ptr<ObjBase> clone() const override { return std::make_unique<Obj>(*this); }

    [[nodiscard]] std::uint16_t ot() const { return _ot; }
    [[nodiscard]] std::uint16_t objectId() const { return _objectId; }
    /// Its data lie in storages of the file beside the workbook stream.
    [[nodiscard]] bool hasStorage() const { return _hasStorage; }
    /// Runs a macro, or is linked to cells.
    [[nodiscard]] bool hasFormula() const { return _hasFormula; }
    /// A button, a box to tick, a list or their like.
    [[nodiscard]] bool isControl() const;
    /// The published name of the type: "chart", "check box"; "object" for others.
    [[nodiscard]] const char* typeName() const;

    static std::unique_ptr<Obj> makePicture(std::uint16_t objectId);
    static std::unique_ptr<Obj> makeNote(std::uint16_t objectId);

private:
    void readSubRecords(std::span<const std::byte> body);

    std::uint16_t _ot = 0, _objectId = 0;
    bool _hasStorage = false, _hasFormula = false;
};

}  // namespace vellum
