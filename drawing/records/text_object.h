// The text of a shape.
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "drawing/records/obj_base.h"

namespace vellum {

/// A TxO record. Its text and the table of formatting runs stand in CONTINUE records of their own, counted off by the
/// lengths that the record tells: a CONTINUE behind those belongs to the drawing.
class TextObject final : public ObjBase {
public:
    static constexpr std::uint16_t id = record_id::TxO;

    std::size_t read(Xls& in, std::size_t recordSize) override;
    [[nodiscard]] std::unique_ptr<ObjBase> clone() const override { return std::make_unique<TextObject>(*this); }

    /// Decoded when asked for.
    [[nodiscard]] std::wstring text() const;

    /// The text of a comment; `ifnt` is its font. Throws "string is too long".
    static std::unique_ptr<TextObject> makeNote(std::wstring_view text, std::uint16_t ifnt);

    static constexpr std::size_t maxText = 32767;

private:
    std::uint16_t _cchText = 0;
    std::size_t _textAt = 0;  // offset in the bytes of the first record of the text
};

}  // namespace vellum
