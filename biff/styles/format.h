// The format of cells in a binary workbook.
#pragma once
#include <cstdint>
#include <memory>

#include "biff/styles/xf.h"
#include "engine/api/iformat.h"
#include "engine/text/text_holder.h"

namespace vellum {

template <class CharT>
class BookImplT;

/// A format as the interface shows it and as its record stands: each setter changes the record.
/// Owned by its book.
template <class CharT>
class FormatImplT final : public IFormatT<CharT>, public IFormatPrivate<CharT> {
public:
    FormatImplT(BookImplT<CharT>& book, std::uint16_t index, const Xf& xf) : _xf(xf), _book(&book), _index(index) {}

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

    [[nodiscard]] const BookImplT<CharT>& book() const { return *_book; }
    /// Position in the book's list: the `ixfe` of cells.
    [[nodiscard]] std::uint16_t index() const { return _index; }
    [[nodiscard]] const Xf& xf() const { return _xf; }
    [[nodiscard]] std::uint16_t ifmt() const { return _xf.ifmt; }
    Xf& xf() { return _xf; }

private:
    Xf _xf;
    BookImplT<CharT>* _book;
    std::uint16_t _index;
    std::unique_ptr<TextHolder> _text;  // once asked for: books have thousands of formats
};

extern template class FormatImplT<char>;
extern template class FormatImplT<wchar_t>;

}  // namespace vellum
