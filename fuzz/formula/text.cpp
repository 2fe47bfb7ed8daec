// The bytes as the text of a formula: what compiles is an expression, has a text, and this text compiles to the same.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "engine/failure/vlerror.h"
#include "formula/compiling/formula_from_text.h"
#include "formula/messages.h"
#include "formula/printing/formula_to_text.h"
#include "formula/token_cut.h"
#include "tests/formula/fake_book.h"

using namespace vellum;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    test::FakeBook book;
    book.r1c1 = (data[0] & 1) != 0;
    const std::wstring text(data + 1, data + size);
    formula::FormulaTokens maker;
    std::vector<std::byte> rgce;
    try {
        const auto made = maker.tokensOfText(text, book, 0, {.row = 5, .col = 5});
        rgce.assign(made.begin(), made.end());
    } catch (const vlerror&) {
        if (!book.spans.empty()) std::abort();  // what fails leaves no reference behind
        return 0;
    }
    if (!formula::isBalanced(rgce)) std::abort();
    book.r1c1 = false;
    std::wstring shown;
    try {
        shown = formula::FormulaText().formulaToText(rgce, book, formula::Generation::biff8, {}, {});
    } catch (const vlerror& e) {
        if (std::string_view(e.what()) != formula::msg::stringTooLong) std::abort();
        return 0;
    }
    // TRUE at the very end is taken for a function without its parentheses.
    if (shown.ends_with(L"TRUE") || shown.ends_with(L"FALSE")) return 0;
    const auto again = maker.tokensOfText(shown, book, 0, {});
    if (formula::FormulaText().formulaToText(again, book, formula::Generation::biff8, {}, {}) != shown) std::abort();
    return 0;
}
