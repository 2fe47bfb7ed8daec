// The fonts of a binary workbook.
#pragma once
#include <cstdint>

#include "biff/container/record_ids.h"
#include "biff/records/unicode_string.h"
#include "engine/api/ifont.h"
#include "engine/text/text_holder.h"

namespace vellum {

class Xls;
template <class CharT>
class BookImplT;

/// In records a font has its list position as index, except that index 4 is left out: fonts from position 4 on have
/// one more.
[[nodiscard]] constexpr std::uint16_t fontWireIndex(std::size_t position) {
    return static_cast<std::uint16_t>(position < 4 ? position : position + 1);
}
/// The list position of a record's font index, -1 for index 4.
[[nodiscard]] constexpr int fontListPosition(std::uint16_t wireIndex) {
    if (wireIndex == 4) return -1;
    return wireIndex < 4 ? wireIndex : wireIndex - 1;
}

struct Font {
    static constexpr std::uint16_t id = record_id::Font;
    static constexpr const char* name = "Font";
    enum Style : std::uint16_t { italic = 2, strikeOut = 8 };

    std::uint16_t dyHeight = 200;  // twips
    std::uint16_t grbit = 0;
    std::uint16_t icv = 0x7FFF;  // automatic
    std::uint16_t bls = 400;     // weight: 400 regular, 700 bold
    std::uint16_t sss = 0;       // 1 superscript, 2 subscript
    std::uint8_t uls = 0;
    std::uint8_t bFamily = 0, bCharSet = 0, reserved = 0;
    ShortXLUnicodeString fontName;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("dyHeight", r.dyHeight);
        visit("grbit", r.grbit);
        visit("icv", r.icv);
        visit("bls", r.bls);
        visit("sss", r.sss);
        visit("uls", r.uls);
        visit("bFamily", r.bFamily);
        visit("bCharSet", r.bCharSet);
        visit("reserved", r.reserved);
    }

    Font();
    /// From behind the header on; `noFlags` for files before BIFF8. Bytes behind the name are skipped.
    static Font read(Xls& in, std::uint16_t size, bool noFlags, StringPool& pool);
    void write(Xls& out) const;
};

/// A font as the interface shows it and as its record stands: each setter changes the record. Owned by its book.
template <class CharT>
class FontImplT final : public IFontT<CharT>, public IFontPrivate {
public:
    FontImplT(BookImplT<CharT>& book, const Font& record) : _record(record), _book(&book) {}

    int size() override;
    void setSize(int points) override;
    bool isItalic() override;
    void setItalic(bool italic) override;
    bool isStrikeOut() override;
    void setStrikeOut(bool strikeOut) override;
    int color() override;
    void setColor(int color) override;
    bool isBold() override;
    void setBold(bool bold) override;
    int script() override;
    void setScript(int script) override;
    int underline() override;
    void setUnderline(int underline) override;
    /// Characters that the caller's coding lacks leave a warning.
    const CharT* name() override;
    bool setName(const CharT* name) override;

    bool hasSize() override { return true; }
    bool hasItalic() override { return true; }
    bool hasStrikeOut() override { return true; }
    bool hasColor() override { return true; }
    bool hasBold() override { return true; }
    bool hasScript() override { return true; }
    bool hasUnderline() override { return true; }
    bool hasName() override { return true; }
    bool usesRgbColors() override;
    void setUsesRgbColors(bool rgb) override;

    [[nodiscard]] const Font& record() const { return _record; }
    Font& record() { return _record; }

    // As their operations, but throwing.
    const CharT* nameText();
    void assignName(const CharT* name);

private:
    void setGrbit(Font::Style bit, bool on);

    Font _record;
    BookImplT<CharT>* _book;
    TextHolder _conversion;
};

extern template class FontImplT<char>;
extern template class FontImplT<wchar_t>;

}  // namespace vellum
