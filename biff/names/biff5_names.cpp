#include "biff/names/biff5_names.h"

#include "biff/names/biff5_tokens.h"

namespace vellum::biff {

void convertBiff5Names(DefinedNames& names, std::size_t sheetCount) {
    constexpr std::byte brokenReference[] = {std::byte{0x1C}, std::byte{0x17}};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const Lbl& name = names.at(i);
        if (!name.isSound() || name.tokens().empty()) continue;
        const auto made = expressionFromBiff5(name.tokens(), name.tokensExtra(), names.links, sheetCount);
        const bool fits = made && made->tokens.size() + made->extra.size() < maxRecordBody / 2;
        if (fits) {
            names.change(i).setTokens(made->tokens, made->extra);
        } else {
            names.change(i).setTokens(brokenReference);
        }
    }
}

}  // namespace vellum::biff
