#include "formula/token_cut.h"

#include <algorithm>
#include <optional>

#include "engine/failure/vlerror.h"
#include "formula/function_table.h"

namespace vellum::formula {
namespace {

constexpr std::size_t whole = ~std::size_t{0};

std::size_t at(std::span<const std::byte> bytes, std::size_t i) {
    return std::to_integer<std::size_t>(bytes[i]);
}

/// Operand bytes of a text; `whole` when not even its length is there.
std::size_t stringBytes(std::span<const std::byte> in, Generation generation) {
    const std::size_t head = generation == Generation::biff8 ? 2 : 1;
    if (in.size() < head) return whole;
    const bool wide = head == 2 && (at(in, 1) & 1) != 0;
    return head + at(in, 0) * (wide ? 2 : 1);
}

/// Operand bytes of an attribute, `table` bytes for each entry of a choose; nothing for a kind that is none.
std::optional<std::size_t> attributeBytes(std::span<const std::byte> in, bool published) {
    if (in.empty()) return whole;
    const AttributeRow* const row = attributeRow(std::to_integer<std::uint8_t>(in[0]));
    if (row == nullptr) return std::nullopt;
    const std::size_t fixed = 1 + (published ? row->publishedBytes : row->textBytes);
    if (row->kind != attributeChoose) return fixed;
    if (in.size() < fixed) return whole;
    const std::size_t values = at(in, 1) + at(in, 2) * 256;
    return fixed + (values + 1) * (published ? 2 : 1);  // the text takes the entries of the table for bytes
}

std::size_t textBytes(const TokenRow& row, std::span<const std::byte> in, Generation generation) {
    const bool biff5 = generation == Generation::biff5;
    switch (row.word) {
        case TokenWord::string:
            return stringBytes(in, generation);
        case TokenWord::attribute: {
            const auto bytes = attributeBytes(in, biff5);
            if (!bytes) throw vlerror(msg::unknownAttribute);
            return *bytes;
        }
        case TokenWord::extended:
            if (!in.empty() &&
                std::ranges::find(extendedKinds, std::to_integer<std::uint8_t>(in[0])) == std::end(extendedKinds)) {
                throw vlerror(msg::unknownExtended);
            }
            break;
        default:
            break;
    }
    return biff5 ? row.biff5Bytes : row.textBytes;
}

}  // namespace

Token cutToken(ByteStream& in, Generation generation) {
    Token token;
    token.code = in.popInt8();
    token.row = tokenRow(token.code);
    if (token.row == nullptr || token.row->word == TokenWord::unknown) throw vlerror(msg::unknownToken);
    const std::size_t bytes = textBytes(*token.row, in.bytes(), generation);
    token.operands = ByteStream(in.popBytes(std::min(bytes, in.size())));
    return token;
}

bool TokenWalk::next() {
    _at = _end;
    _row = nullptr;
    if (_at >= _rgce.size()) return false;
    const TokenRow* const row = tokenRow(std::to_integer<std::uint8_t>(_rgce[_at]));
    if (row == nullptr) return false;
    const auto rest = _rgce.subspan(_at + 1);
    std::size_t bytes = _generation == Generation::biff8 ? row->biff8Bytes : row->biff5Bytes;
    if (row->word == TokenWord::string) bytes = stringBytes(rest, _generation);
    if (row->word == TokenWord::attribute) bytes = attributeBytes(rest, true).value_or(whole);
    if (bytes > rest.size()) return false;
    _row = row;
    _end = _at + 1 + bytes;
    return true;
}

namespace {

struct Arity {
    std::size_t takes, gives;
};

/// Operands of the token that the walk stands on.
Arity arityOf(const TokenWalk& walk) {
    const auto operands = walk.operands();
    switch (walk.row().word) {
        case TokenWord::attribute: {
            const std::size_t n = std::to_integer<std::uint8_t>(operands[0]) == attributeSum ? 1 : 0;
            return {n, n};
        }
        case TokenWord::function: {
            const Function* const function = functionById(loadLe<std::uint16_t>(operands.data()));
            return {function == nullptr ? 0 : std::size_t{function->count}, 1};
        }
        case TokenWord::functionVar:
            return {at(operands, 0) & 0x7F, 1};
        default:
            return {walk.row().takes, walk.row().gives};
    }
}

}  // namespace

bool isBalanced(std::span<const std::byte> rgce) {
    std::size_t values = 0;
    TokenWalk walk(rgce);
    while (walk.next()) {
        const Arity arity = arityOf(walk);
        if (arity.takes > values) return false;
        values = values - arity.takes + arity.gives;
    }
    return values == 1 && !walk.isBroken();
}

}  // namespace vellum::formula
