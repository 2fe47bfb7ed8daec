// Rich strings, as far as no engine has built more.
#pragma once
#include "engine/api/irichstring.h"
#include "engine/failure/last_error.h"
#include "engine/failure/messages.h"

namespace vellum {

/// A rich string of either engine as far as nothing is built: every operation fails with the interface's
/// failure value and "function is not available yet". An engine overrides what it has.
template <class CharT>
class RichStringBaseT : public IRichStringT<CharT> {
public:
    IFontT<CharT>* addFont(IFontT<CharT>*) override;
    bool addRun(const CharT*, IFontT<CharT>*) override;
    const CharT* runAt(int, IFontT<CharT>**) override;
    int runTotal() override;

protected:
    /// The last error of the book that the object belongs to.
    virtual LastError& lastError() noexcept = 0;

private:
    template <class Result>
    Result notAvailable(Result failure) noexcept {
        lastError().set(msg::notAvailable);
        return failure;
    }
};

extern template class RichStringBaseT<char>;
extern template class RichStringBaseT<wchar_t>;

}  // namespace vellum
