// Fonts, as far as no engine has built more.
#pragma once
#include "engine/api/ifont.h"
#include "engine/failure/last_error.h"
#include "engine/failure/messages.h"

namespace vellum {

/// A font of either engine as far as nothing is built: every operation fails with the interface's
/// failure value and "function is not available yet". An engine overrides what it has.
template <class CharT>
class FontBaseT : public IFontT<CharT> {
public:
    int size() override;
    void setSize(int) override;
    bool isItalic() override;
    void setItalic(bool) override;
    bool isStrikeOut() override;
    void setStrikeOut(bool) override;
    int color() override;
    void setColor(int) override;
    bool isBold() override;
    void setBold(bool) override;
    int script() override;
    void setScript(int) override;
    int underline() override;
    void setUnderline(int) override;
    const CharT* name() override;
    bool setName(const CharT*) override;

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

extern template class FontBaseT<char>;
extern template class FontBaseT<wchar_t>;

}  // namespace vellum
