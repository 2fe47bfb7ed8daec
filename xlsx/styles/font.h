// The fonts of a package.
#pragma once
#include <memory>

#include "engine/api/ifont.h"
#include "engine/text/text_holder.h"
#include "ooxml/generated/dialect.h"
#include "xlsx/package/book_context.h"

namespace vellum {

/// A size as the interface has it, without its fraction; 0 for one that no file can mean.
constexpr int wholePoints(double points) {
    return points > -2147483648.0 && points < 2147483648.0 ? static_cast<int>(points) : 0;
}

/// A font as the interface shows it: a handle on its bound element, which it reads and changes in place. Owned by the
/// styles part, or, with an element of its own, by a rich string.
template <class CharT, class Tag>
class XMLFontImplT final : public IFontT<CharT>, public IFontPrivate {
public:
    using c_CT_Font = typename ooxml::dialect<Tag>::sml::c_CT_Font;
    using c_CT_RPrElt = typename ooxml::dialect<Tag>::sml::c_CT_RPrElt;

    XMLFontImplT(Styles<CharT, Tag>* styles, c_CT_Font& font);
    /// With an element of its own.
    explicit XMLFontImplT(Styles<CharT, Tag>* styles);
    ~XMLFontImplT() override;

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
    const CharT* name() override;
    bool setName(const CharT* name) override;

    bool hasSize() override;
    bool hasItalic() override;
    bool hasStrikeOut() override;
    bool hasColor() override;
    bool hasBold() override;
    bool hasScript() override;
    bool hasUnderline() override;
    bool hasName() override;
    bool usesRgbColors() override;
    void setUsesRgbColors(bool rgb) override;

    const c_CT_Font& element() const { return *_font; }
    /// Takes over what another font, of any book, states.
    void copyFrom(IFontT<CharT>& other);
    /// The properties of a run, and the other way.
    void readRun(const c_CT_RPrElt& properties);
    void writeRun(c_CT_RPrElt& properties) const;

private:
    std::unique_ptr<c_CT_Font> _owned;
    c_CT_Font* _font;
    Styles<CharT, Tag>* _styles;
    TextHolder _name;
};

extern template class XMLFontImplT<char, excelNormal_tag>;
extern template class XMLFontImplT<char, excelStrict_tag>;
extern template class XMLFontImplT<wchar_t, excelNormal_tag>;
extern template class XMLFontImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
