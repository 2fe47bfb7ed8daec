// The interface of fonts.
#pragma once
namespace vellum {

/// A font, owned by the book, or by the rich string whose `addFont` made it.
template <class CharT>
class IFontT {
public:
    /// Points.
    virtual int size() = 0;
    virtual void setSize(int points) = 0;
    virtual bool isItalic() = 0;
    virtual void setItalic(bool italic) = 0;
    virtual bool isStrikeOut() = 0;
    virtual void setStrikeOut(bool strikeOut) = 0;
    virtual int color() = 0;
    virtual void setColor(int color) = 0;
    virtual bool isBold() = 0;
    virtual void setBold(bool bold) = 0;
    /// A `FontScript`.
    virtual int script() = 0;
    virtual void setScript(int script) = 0;
    /// An `Underline`.
    virtual int underline() = 0;
    virtual void setUnderline(int underline) = 0;
    virtual const CharT* name() = 0;
    virtual bool setName(const CharT* name) = 0;

    virtual ~IFontT() = default;
};

/// Which properties a font states itself. A font of the binary format states all.
class IFontPrivate {
public:
    virtual bool hasSize() = 0;
    virtual bool hasItalic() = 0;
    virtual bool hasStrikeOut() = 0;
    virtual bool hasColor() = 0;
    virtual bool hasBold() = 0;
    virtual bool hasScript() = 0;
    virtual bool hasUnderline() = 0;
    virtual bool hasName() = 0;
    virtual bool usesRgbColors() = 0;
    virtual void setUsesRgbColors(bool rgb) = 0;

protected:
    ~IFontPrivate() = default;
};

}  // namespace vellum
