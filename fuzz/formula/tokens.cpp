// The bytes as a token stream, in both layouts: its text, and its tokens made a cell's own.
#include <cstdint>
#include <cstdlib>

#include "engine/failure/vlerror.h"
#include "formula/expand_shared.h"
#include "formula/printing/formula_to_text.h"
#include "formula/token_cut.h"
#include "tests/formula/fake_book.h"

using namespace vellum;

namespace {

constexpr formula::LocationBase base{.row = 65530, .col = 250};

/// Whether the text is made of the same tokens as those that patching walks over. The widths of a few differ.
bool sameTokens(std::span<const std::byte> rgce) {
    formula::TokenWalk walk(rgce);
    for (formula::ByteStream in(rgce); !in.empty();) {
        if (!walk.next() || walk.offset() != rgce.size() - in.size()) return false;
        formula::cutToken(in, formula::Generation::biff8);
    }
    return !walk.next() && !walk.isBroken();
}

void visit(std::span<const std::byte> rgce, formula::Generation generation) {
    test::FakeBook book;
    using Where = formula::SheetSpan::Where;
    book.spans = {{Where::ownBook, 0, 0}, {Where::ownBook, 1, 3}, {Where::ownBook, -1, -1}, {Where::unknown, 0, 0}};
    for (const bool r1c1 : {false, true}) {
        book.r1c1 = r1c1;
        std::wstring shared;
        try {
            shared = formula::FormulaText().formulaToText(rgce, book, generation, base, {});
        } catch (const vlerror&) {
            continue;
        }
        const auto own = formula::expandShared(rgce, base, generation);
        if (generation == formula::Generation::biff5 || !sameTokens(rgce)) continue;
        if (!own) std::abort();
        try {
            if (formula::FormulaText().formulaToText(*own, book, generation, {}, {}) != shared) std::abort();
        } catch (const vlerror&) {
            std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto rgce = std::as_bytes(std::span(data, size));
    visit(rgce, formula::Generation::biff8);
    visit(rgce, formula::Generation::biff5);
    formula::isBalanced(rgce);
    return 0;
}
