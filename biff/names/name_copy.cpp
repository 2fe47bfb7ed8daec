#include "biff/names/name_copy.h"

#include "biff/container/cursor.h"
#include "engine/facts/sheet_names.h"
#include "engine/failure/vlerror.h"
#include "engine/text/string_pool.h"
#include "formula/compiling/formula_from_text.h"
#include "formula/messages.h"
#include "formula/printing/formula_to_text.h"
#include "formula/token_cut.h"

namespace vellum::biff {

namespace {

using formula::TokenWalk;

constexpr std::uint8_t ref3d = 0x3A, areaErr3d = 0x3D;

bool namesSheets(const TokenWalk& token) {
    return token.base() >= ref3d && token.base() <= areaErr3d;
}

std::uint16_t referenceOf(const TokenWalk& token) {
    return loadLe<std::uint16_t>(token.operands().data());
}

std::vector<std::size_t> namesOf(const DefinedNames& names, int sheet) {
    std::vector<std::size_t> own;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names.at(i).isAlive() && names.at(i).scope() == sheet) own.push_back(i);
    }
    return own;
}

std::wstring textOf(std::span<const std::byte> tokens, const formula::FormulaContext& book) {
    formula::FormulaText text;
    return text.formulaToText(tokens, book, formula::Generation::biff8, {}, {});
}

// Whether the text says all that the tokens do: no word stands for something else, and no reference counts from the
// cell that uses the name.
bool isTold(const DefinedNames& names, std::span<const std::byte> tokens) {
    using formula::TokenWord;
    TokenWalk walk(tokens);
    while (walk.next()) {
        const auto& row = walk.row();
        const bool isStandIn = row.word == TokenWord::fixed && row.fixed.find_first_of(L"?#EN") == 0;
        const bool isOffset = walk.base() == formula::ptg::refN || walk.base() == formula::ptg::areaN;
        if (isStandIn || isOffset || row.word == TokenWord::extended || row.word == TokenWord::unknown) return false;
        if (!namesSheets(walk)) continue;
        const auto sheets = names.links.ownSheets(referenceOf(walk));
        if (!sheets || sheets->first < 0 || sheets->first != sheets->last) return false;
    }
    return !tokens.empty() && !walk.isBroken();
}

// References to the source alone become references to the copy.
std::vector<std::byte> patched(DefinedNames& names, std::span<const std::byte> tokens, int source, int target) {
    std::vector<std::byte> made(tokens.begin(), tokens.end());
    TokenWalk walk(tokens);
    while (walk.next()) {
        if (!namesSheets(walk) || names.links.ownSheets(referenceOf(walk)) != SheetSpan{source, source}) continue;
        storeLe(&made[walk.offset() + 1], names.links.indexOf({target, target}));
    }
    return made;
}

void throughText(DefinedNames& names, std::size_t copy, std::span<const std::byte> original, int source, int target,
                 formula::FormulaContext& book) {
    const auto nameOf = [&](int sheet) { return book.sheetNameOf(static_cast<std::size_t>(sheet)); };
    try {
        std::wstring text = withSheetRenamed(textOf(original, book), nameOf(source), nameOf(target));
        formula::FormulaTokens compiler;
        const auto tokens = compiler.tokensOfText(text, book, target, {});
        names.change(copy).setTokens(tokens);
    } catch (const vlerror&) {
        // The patched tokens stay.
    }
}

}  // namespace

void checkCopy(const DefinedNames& names, int source, const formula::FormulaContext& book) {
    const auto own = namesOf(names, source);
    for (const std::size_t i : own) {
        TokenWalk walk(names.at(i).tokens());
        while (walk.next()) {
        }
        if (!walk.isBroken()) continue;
        textOf(names.at(i).tokens(), book);
        throw vlerror(formula::msg::unknownToken);
    }
    names.requireRoom(own.size());
}

void copyNames(DefinedNames& names, int source, int target, formula::FormulaContext& book) {
    struct Copy {
        std::size_t from, to;
    };
    std::vector<Copy> copies;
    for (const std::size_t i : namesOf(names, source)) {
        Lbl copy = names.at(i);
        copy.setScope(target);
        copy.setTokens(patched(names, copy.tokens(), source, target), names.at(i).tokensExtra());
        copies.push_back({i, names.add(std::move(copy))});
    }
    // Now that all are there, their formulas find each other by text.
    for (const auto& [from, to] : copies) {
        const auto code = names.at(from).builtin();
        const bool isPrinting = code == BuiltinName::printArea || code == BuiltinName::printTitles;
        const std::vector<std::byte> tokens(names.at(from).tokens().begin(), names.at(from).tokens().end());
        if (!isPrinting && isTold(names, tokens)) throughText(names, to, tokens, source, target, book);
    }
}

void adoptNames(DefinedNames& names, StringPool& pool, int target, const DefinedNames& from, int source) {
    for (const std::size_t i : namesOf(from, source)) {
        const Lbl& name = from.at(i);
        auto range = PlainRange::of(name.tokens());
        if (!range || from.links.ownSheets(range->xti) != SheetSpan{source, source}) continue;
        range->xti = names.links.indexOf({target, target});
        const bool isArea = name.tokens().size() == PlainRange::areaSize;
        std::vector<std::byte> tokens;
        if (isArea) range->writeArea(tokens);
        const std::wstring_view text = name.recordText();
        names.add(
            Lbl::make(name.head().grbit, target, {pool.copy(text), text.size()}, isArea ? tokens : range->tokens()));
    }
}

}  // namespace vellum::biff
