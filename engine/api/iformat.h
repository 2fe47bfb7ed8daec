// The interface of cell formats.
#pragma once
namespace vellum {

template <class CharT>
class IFontT;

/// The format of cells, owned by the book. Colours are palette indexes, or 24-bit numbers in the rgb
/// mode of Open XML. A setter cuts a value that its field cannot hold.
template <class CharT>
class IFormatT {
public:
    virtual IFontT<CharT>* font() = 0;
    /// False for a font of another book.
    virtual bool setFont(IFontT<CharT>* font) = 0;
    /// Built-in ids are 0 to 49; from 164 on the text stands in the book.
    virtual int numFormat() = 0;
    virtual void setNumFormat(int id) = 0;
    virtual int alignHorizontal() = 0;
    virtual void setAlignHorizontal(int align) = 0;
    virtual int alignVertical() = 0;
    virtual void setAlignVertical(int align) = 0;
    virtual bool wrapsText() = 0;
    virtual void setWrapsText(bool wrap) = 0;
    /// 0 to 90 degrees up, 91 to 180 for 1 to 90 degrees down, 255 for letters one below the other.
    virtual int rotation() = 0;
    virtual bool setRotation(int rotation) = 0;
    virtual int indent() = 0;
    virtual void setIndent(int indent) = 0;
    virtual bool shrinksToFit() = 0;
    virtual void setShrinksToFit(bool shrink) = 0;

    virtual void setBorderAll(int style) = 0;
    virtual void setBorderColorAll(int color) = 0;
    virtual int borderLeft() = 0;
    virtual void setBorderLeft(int style) = 0;
    virtual int borderRight() = 0;
    virtual void setBorderRight(int style) = 0;
    virtual int borderTop() = 0;
    virtual void setBorderTop(int style) = 0;
    virtual int borderBottom() = 0;
    virtual void setBorderBottom(int style) = 0;
    virtual int borderLeftColor() = 0;
    virtual void setBorderLeftColor(int color) = 0;
    virtual int borderRightColor() = 0;
    virtual void setBorderRightColor(int color) = 0;
    virtual int borderTopColor() = 0;
    virtual void setBorderTopColor(int color) = 0;
    virtual int borderBottomColor() = 0;
    virtual void setBorderBottomColor(int color) = 0;
    /// Bit 0 is the diagonal down, bit 1 the diagonal up.
    virtual int borderDiagonal() = 0;
    virtual void setBorderDiagonal(int diagonals) = 0;
    virtual int borderDiagonalStyle() = 0;
    virtual void setBorderDiagonalStyle(int style) = 0;
    virtual int borderDiagonalColor() = 0;
    virtual void setBorderDiagonalColor(int color) = 0;

    virtual int fillPattern() = 0;
    virtual void setFillPattern(int pattern) = 0;
    virtual int patternForeColor() = 0;
    virtual void setPatternForeColor(int color) = 0;
    virtual int patternBackColor() = 0;
    virtual void setPatternBackColor(int color) = 0;
    virtual bool isLocked() = 0;
    virtual void setLocked(bool locked) = 0;
    virtual bool isFormulaHidden() = 0;
    virtual void setFormulaHidden(bool hidden) = 0;

    virtual ~IFormatT() = default;
};

/// What one format asks of another, of any book, when it copies it.
template <class CharT>
class IFormatPrivate {
public:
    virtual bool usesRgbColors() = 0;
    virtual void setUsesRgbColors(bool rgb) = 0;
    /// The text of a number format with an id of 164 or more, else null.
    virtual const CharT* customFormatText() = 0;

protected:
    ~IFormatPrivate() = default;
};

}  // namespace vellum
