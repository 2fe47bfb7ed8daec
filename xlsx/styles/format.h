// The cell formats of a package.
#pragma once
#include "engine/api/iformat.h"
#include "engine/text/text_holder.h"
#include "ooxml/generated/dialect.h"
#include "xlsx/package/book_context.h"

namespace vellum {

/// A format as the interface shows it: a handle on its bound `xf` element. Borders and fills may be shared between
/// formats: the first change takes a copy for this one. Setters pass over values that they do not know.
template <class CharT, class Tag>
class XMLFormatImplT final : public IFormatT<CharT>, public IFormatPrivate<CharT> {
public:
    using sml = typename ooxml::dialect<Tag>::sml;
    using c_CT_Xf = typename sml::c_CT_Xf;
    using c_CT_Border = typename sml::c_CT_Border;
    using c_CT_BorderPr = typename sml::c_CT_BorderPr;
    using c_CT_Fill = typename sml::c_CT_Fill;

    XMLFormatImplT(Styles<CharT, Tag>* styles, c_CT_Xf* xf, std::size_t index);

    IFontT<CharT>* font() override;
    bool setFont(IFontT<CharT>* font) override;
    int numFormat() override;
    void setNumFormat(int id) override;
    int alignHorizontal() override;
    void setAlignHorizontal(int align) override;
    int alignVertical() override;
    void setAlignVertical(int align) override;
    bool wrapsText() override;
    void setWrapsText(bool wrap) override;
    int rotation() override;
    bool setRotation(int rotation) override;
    int indent() override;
    void setIndent(int indent) override;
    bool shrinksToFit() override;
    void setShrinksToFit(bool shrink) override;

    // Borders and fills: format_lines.cpp.
    void setBorderAll(int style) override;
    void setBorderColorAll(int color) override;
    int borderLeft() override;
    void setBorderLeft(int style) override;
    int borderRight() override;
    void setBorderRight(int style) override;
    int borderTop() override;
    void setBorderTop(int style) override;
    int borderBottom() override;
    void setBorderBottom(int style) override;
    int borderLeftColor() override;
    void setBorderLeftColor(int color) override;
    int borderRightColor() override;
    void setBorderRightColor(int color) override;
    int borderTopColor() override;
    void setBorderTopColor(int color) override;
    int borderBottomColor() override;
    void setBorderBottomColor(int color) override;
    int borderDiagonal() override;
    void setBorderDiagonal(int diagonals) override;
    int borderDiagonalStyle() override;
    void setBorderDiagonalStyle(int style) override;
    int borderDiagonalColor() override;
    void setBorderDiagonalColor(int color) override;
    int fillPattern() override;
    void setFillPattern(int pattern) override;
    int patternForeColor() override;
    void setPatternForeColor(int color) override;
    int patternBackColor() override;
    void setPatternBackColor(int color) override;

    bool isLocked() override;
    void setLocked(bool locked) override;
    bool isFormulaHidden() override;
    void setFormulaHidden(bool hidden) override;

    bool usesRgbColors() override;
    void setUsesRgbColors(bool rgb) override;
    const CharT* customFormatText() override;

    std::size_t index() const { return _index; }
    /// Takes over all of another format, of any book.
    void copyFrom(IFormatT<CharT>& other);

private:
    using Side = c_CT_BorderPr& (c_CT_Border::*)();
    using FindSide = const c_CT_BorderPr* (c_CT_Border::*)() const;

    typename sml::c_CT_CellAlignment& alignment();
    const c_CT_Border* border() const;
    c_CT_Border& ownBorder();
    const c_CT_Fill* fill() const;
    c_CT_Fill& ownFill();
    int sideStyle(FindSide side, FindSide strictSide = nullptr) const;
    int sideColor(FindSide side, FindSide strictSide = nullptr) const;
    void setSideStyle(Side side, int style);
    void setSideColor(Side side, int color);

    Styles<CharT, Tag>* _styles;
    c_CT_Xf* _xf;
    std::size_t _index;
    c_CT_Border* _ownBorder = nullptr;
    c_CT_Fill* _ownFill = nullptr;
    TextHolder _text;
};

extern template class XMLFormatImplT<char, excelNormal_tag>;
extern template class XMLFormatImplT<char, excelStrict_tag>;
extern template class XMLFormatImplT<wchar_t, excelNormal_tag>;
extern template class XMLFormatImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
