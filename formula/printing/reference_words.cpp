#include "formula/printing/reference_words.h"

#include "formula/function_table.h"
#include "formula/printing/token_word.h"
#include "formula/token_cut.h"
#include "formula/token_table.h"

namespace vellum::formula {
namespace {

/// A function's number stands behind the count of its arguments where that varies.
void appendFunctionName(std::wstring& out, std::span<const std::byte> operands) {
    constexpr std::uint16_t command = 0x8000;
    const auto id = loadLe<std::uint16_t>(operands.last(2).data());
    std::uint8_t count = 0;
    if ((id & command) == 0) out.append(functionNameById(id, count)).append(L"() ");
}

void appendReference(std::wstring& out, const TokenWalk& walk, const FormulaContext& book, Generation generation,
                     LocationBase base) {
    switch (walk.base()) {
        case ptg::func:
        case ptg::funcVar:
            return appendFunctionName(out, walk.operands());
        case ptg::range:
            out += L": ";
            return;
        case ptg::name:
        case ptg::ref:
        case ptg::area:
        case ptg::refN:
        case ptg::areaN:
        case ptg::ref3d:
        case ptg::area3d: {
            // The row of the reference class: names have no text in the array class.
            Token token{walk.code(), tokenRow(walk.base()), ByteStream(walk.operands())};
            appendTokenWord(out, token, book, generation, base);
            out += L' ';
            return;
        }
        default:
            return;
    }
}

}  // namespace

std::wstring referenceWords(std::span<const std::byte> rgce, const FormulaContext& book, Generation generation,
                            LocationBase base) {
    if (generation == Generation::biff5) base.rowLimit = 16384;
    std::wstring out;
    TokenWalk walk(rgce, generation);
    while (walk.next()) appendReference(out, walk, book, generation, base);
    if (walk.isBroken()) out += L'?';
    return out;
}

}  // namespace vellum::formula
