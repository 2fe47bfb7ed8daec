// The tokens of formulas: one table for cutting, printing, walking and counting operands.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vellum::formula {

/// What a token becomes in text.
enum class TokenWord : std::uint8_t {
    fixed,    // the row's own word
    none,     // nothing
    unknown,  // an error: the token has no text, though its width is published
    string,   // the rest are told by their operands
    attribute,
    extended,
    error,
    boolean,
    integer,
    number,
    function,
    functionVar,
    name,
    cell,
    area,
    cell3d,
    area3d,
};

/// Operand bytes that stand in the token itself (17) or hang on its kind (19).
inline constexpr std::uint8_t variableWidth = 0xFF;
/// Operands that the token's own bytes tell.
inline constexpr std::uint8_t ownCount = 0xFF;

/// A token code. Codes from 20 on have a class in bits 5 and 6 (reference, value, array), told by a mask of the
/// classes that the row is for; of the others the mask is 0.
struct TokenRow {
    std::uint8_t code;  // in the reference class
    std::uint8_t classes;
    const char* name;
    std::uint8_t textBytes;   // operand bytes cut off when text is made
    std::uint8_t biff8Bytes;  // as published; what is patched is walked with these
    std::uint8_t biff5Bytes;
    std::uint8_t takes, gives;  // operands
    TokenWord word;
    std::wstring_view fixed = {};
};

inline constexpr std::uint8_t inReference = 1, inValue = 2, inArray = 4, inAll = 7;

// clang-format off
inline constexpr TokenRow tokenRows[] = {
    {0x01, 0, "PtgExp",          4,  4,  4, 0, 1, TokenWord::fixed, L"?"},
    {0x02, 0, "PtgTbl",          4,  4,  4, 0, 1, TokenWord::fixed, L"?"},
    {0x03, 0, "PtgAdd",          0,  0,  0, 2, 1, TokenWord::fixed, L"+"},
    {0x04, 0, "PtgSub",          0,  0,  0, 2, 1, TokenWord::fixed, L"-"},
    {0x05, 0, "PtgMul",          0,  0,  0, 2, 1, TokenWord::fixed, L"*"},
    {0x06, 0, "PtgDiv",          0,  0,  0, 2, 1, TokenWord::fixed, L"/"},
    {0x07, 0, "PtgPower",        0,  0,  0, 2, 1, TokenWord::fixed, L"^"},
    {0x08, 0, "PtgConcat",       0,  0,  0, 2, 1, TokenWord::fixed, L"&"},
    {0x09, 0, "PtgLt",           0,  0,  0, 2, 1, TokenWord::fixed, L"<"},
    {0x0A, 0, "PtgLe",           0,  0,  0, 2, 1, TokenWord::fixed, L"<="},
    {0x0B, 0, "PtgEq",           0,  0,  0, 2, 1, TokenWord::fixed, L"="},
    {0x0C, 0, "PtgGe",           0,  0,  0, 2, 1, TokenWord::fixed, L">="},
    {0x0D, 0, "PtgGt",           0,  0,  0, 2, 1, TokenWord::fixed, L">"},
    {0x0E, 0, "PtgNe",           0,  0,  0, 2, 1, TokenWord::fixed, L"<>"},
    {0x0F, 0, "PtgIsect",        0,  0,  0, 2, 1, TokenWord::fixed, L"?"},
    {0x10, 0, "PtgUnion",        0,  0,  0, 2, 1, TokenWord::fixed, L"?"},
    {0x11, 0, "PtgRange",        0,  0,  0, 2, 1, TokenWord::fixed, L"ptgRange"},
    {0x12, 0, "PtgUplus",        0,  0,  0, 1, 1, TokenWord::fixed, L"uPlus"},
    {0x13, 0, "PtgUminus",       0,  0,  0, 1, 1, TokenWord::fixed, L"uMinus"},
    {0x14, 0, "PtgPercent",      0,  0,  0, 1, 1, TokenWord::fixed, L"uPercent"},
    {0x15, 0, "PtgParen",        0,  0,  0, 1, 1, TokenWord::fixed, L"("},
    {0x16, 0, "PtgMissArg",      0,  0,  0, 0, 1, TokenWord::fixed, L"MISS"},
    {0x17, 0, "PtgStr",          variableWidth, variableWidth, variableWidth, 0, 1, TokenWord::string},
    {0x18, 0, "PtgExtended",     6,  5,  5, 0, 1, TokenWord::extended},
    {0x19, 0, "PtgAttr",         variableWidth, variableWidth, variableWidth, ownCount, ownCount, TokenWord::attribute},
    {0x1C, 0, "PtgErr",          1,  1,  1, 0, 1, TokenWord::error},
    {0x1D, 0, "PtgBool",         1,  1,  1, 0, 1, TokenWord::boolean},
    {0x1E, 0, "PtgInt",          2,  2,  2, 0, 1, TokenWord::integer},
    {0x1F, 0, "PtgNum",          8,  8,  8, 0, 1, TokenWord::number},
    {0x20, inAll, "PtgArray",    7,  7,  7, 0, 1, TokenWord::fixed, L"?"},
    {0x21, inAll, "PtgFunc",     2,  2,  2, ownCount, 1, TokenWord::function},
    {0x22, inAll, "PtgFuncVar",  3,  3,  3, ownCount, 1, TokenWord::functionVar},
    {0x23, inReference | inValue, "PtgName", 4, 4, 14, 0, 1, TokenWord::name},
    {0x23, inArray, "PtgName",   4,  4, 14, 0, 1, TokenWord::fixed, L"?"},
    {0x24, inAll, "PtgRef",      4,  4,  3, 0, 1, TokenWord::cell},
    {0x25, inAll, "PtgArea",     8,  8,  6, 0, 1, TokenWord::area},
    {0x26, inAll, "PtgMemArea",  6,  6,  6, 0, 0, TokenWord::fixed, L"?"},
    {0x27, inAll, "PtgMemErr",   6,  6,  6, 0, 0, TokenWord::fixed, L"ERR"},
    {0x28, inAll, "PtgMemNoMem", 6,  6,  6, 0, 0, TokenWord::fixed, L"NOMEM"},
    {0x29, inAll, "PtgMemFunc",  2,  2,  2, 0, 0, TokenWord::none},
    {0x2A, inReference, "PtgRefErr", 4, 4, 3, 0, 1, TokenWord::fixed, L"#REF!"},
    {0x2A, inValue | inArray, "PtgRefErr", 4, 4, 3, 0, 1, TokenWord::fixed, L"ERR"},
    {0x2B, inAll, "PtgAreaErr",  8,  8,  6, 0, 1, TokenWord::fixed, L"ERR"},
    {0x2C, inAll, "PtgRefN",     4,  4,  3, 0, 1, TokenWord::cell},
    {0x2D, inAll, "PtgAreaN",    8,  8,  6, 0, 1, TokenWord::area},
    {0x2E, inAll, "PtgMemAreaN", 2,  2,  2, 0, 0, TokenWord::unknown},
    {0x2F, inAll, "PtgMemNoMemN", 2, 2,  2, 0, 0, TokenWord::unknown},
    {0x39, inAll, "PtgNameX",    6,  6, 24, 0, 1, TokenWord::fixed, L"?"},
    {0x3A, inAll, "PtgRef3d",    6,  6, 17, 0, 1, TokenWord::cell3d},
    {0x3B, inAll, "PtgArea3d",  10, 10, 20, 0, 1, TokenWord::area3d},
    {0x3C, inAll, "PtgRefErr3d", 6,  6, 17, 0, 1, TokenWord::fixed, L"ERR"},
    {0x3D, inAll, "PtgAreaErr3d", 10, 10, 20, 0, 1, TokenWord::fixed, L"ERR"},
};
// clang-format on

/// Kinds of PtgAttr. The word of every kind but the sum is nothing.
struct AttributeRow {
    std::uint8_t kind;
    std::uint8_t textBytes;       // behind the kind, cut off when text is made
    std::uint8_t publishedBytes;  // of a choose: without its table
};
inline constexpr std::uint8_t attributeVolatile = 0x01, attributeChoose = 0x04, attributeSum = 0x10;
inline constexpr AttributeRow attributeRows[] = {
    {attributeVolatile, 2, 2},
    {0x02, 2, 2},
    {attributeChoose, 2, 2},
    {0x08, 2, 2},
    {attributeSum, 2, 2},
    {0x20, 3, 2},
    {0x21, 3, 2},
    {0x40, 2, 2},
    {0x41, 3, 2},
};

/// Sub-codes of the extended token that have a text.
inline constexpr std::uint8_t extendedKinds[] = {0x01, 0x02, 0x03, 0x06, 0x07, 0x0A, 0x0B, 0x0D, 0x0F, 0x10, 0x1D};

constexpr std::uint8_t tokenClassMask(std::uint8_t code) {
    return code < 0x20 ? std::uint8_t{0} : static_cast<std::uint8_t>(1U << ((code >> 5) - 1));
}
/// The code in the reference class.
constexpr std::uint8_t tokenBase(std::uint8_t code) {
    return code < 0x20 ? code : static_cast<std::uint8_t>((code & 0x1F) | 0x20);
}

/// The row of a code; null for a code that is no token.
const TokenRow* tokenRow(std::uint8_t code);
const AttributeRow* attributeRow(std::uint8_t kind);

/// Codes that more than the table must know.
namespace ptg {
inline constexpr std::uint8_t exp = 0x01, tbl = 0x02, add = 0x03, sub = 0x04, mul = 0x05, div = 0x06, power = 0x07,
                              concat = 0x08, lt = 0x09, le = 0x0A, eq = 0x0B, ge = 0x0C, gt = 0x0D, ne = 0x0E,
                              range = 0x11, uplus = 0x12, uminus = 0x13, percent = 0x14, paren = 0x15, str = 0x17,
                              attr = 0x19, err = 0x1C, boolean = 0x1D, integer = 0x1E, num = 0x1F, func = 0x21,
                              funcVar = 0x22, name = 0x23, ref = 0x24, area = 0x25, memFunc = 0x29, refN = 0x2C,
                              areaN = 0x2D, nameX = 0x39, ref3d = 0x3A, area3d = 0x3B, refErr3d = 0x3C,
                              areaErr3d = 0x3D;
/// What is added to a code of the reference class.
inline constexpr std::uint8_t valueClass = 0x20, arrayClass = 0x40;
}  // namespace ptg

}  // namespace vellum::formula
