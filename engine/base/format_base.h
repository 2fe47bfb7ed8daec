// Formats, as far as no engine has built more.
#pragma once
#include "engine/api/iformat.h"
#include "engine/failure/last_error.h"
#include "engine/failure/messages.h"

namespace vellum {

/// A format of either engine as far as nothing is built: every operation fails with the interface's
/// failure value and "function is not available yet". An engine overrides what it has.
template <class CharT>
class FormatBaseT : public IFormatT<CharT> {
public:
    IFontT<CharT>* font() override;
    bool setFont(IFontT<CharT>*) override;
    int numFormat() override;
    void setNumFormat(int) override;
    int alignHorizontal() override;
    void setAlignHorizontal(int) override;
    int alignVertical() override;
    void setAlignVertical(int) override;
    bool wrapsText() override;
    void setWrapsText(bool) override;
    int rotation() override;
    bool setRotation(int) override;
    int indent() override;
    void setIndent(int) override;
    bool shrinksToFit() override;
    void setShrinksToFit(bool) override;
    void setBorderAll(int) override;
    void setBorderColorAll(int) override;
    int borderLeft() override;
    void setBorderLeft(int) override;
    int borderRight() override;
    void setBorderRight(int) override;
    int borderTop() override;
    void setBorderTop(int) override;
    int borderBottom() override;
    void setBorderBottom(int) override;
    int borderLeftColor() override;
    void setBorderLeftColor(int) override;
    int borderRightColor() override;
    void setBorderRightColor(int) override;
    int borderTopColor() override;
    void setBorderTopColor(int) override;
    int borderBottomColor() override;
    void setBorderBottomColor(int) override;
    int borderDiagonal() override;
    void setBorderDiagonal(int) override;
    int borderDiagonalStyle() override;
    void setBorderDiagonalStyle(int) override;
    int borderDiagonalColor() override;
    void setBorderDiagonalColor(int) override;
    int fillPattern() override;
    void setFillPattern(int) override;
    int patternForeColor() override;
    void setPatternForeColor(int) override;
    int patternBackColor() override;
    void setPatternBackColor(int) override;
    bool isLocked() override;
    void setLocked(bool) override;
    bool isFormulaHidden() override;
    void setFormulaHidden(bool) override;

protected:
    /// The last error of the book that the object belongs to.
    virtual LastError& lastError() noexcept = 0;

private:
    template <class Result>
    Result notAvailable(Result failure) noexcept {
        lastError().set(msg::notAvailable);
        return failure;
    }
    void notAvailable() noexcept { lastError().set(msg::notAvailable); }
};

extern template class FormatBaseT<char>;
extern template class FormatBaseT<wchar_t>;

}  // namespace vellum
