// Options in front of a file name or a label: their bits, the blocks that take their values, and the parser.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillet {

/// Bits of the option word of a source and of an item. See docs/options.md for what they do.
enum OptionFlag : std::uint32_t {
    optNoIndex = 0x1,
    optGrow = 0x2,
    optSkipHeader = 0x4,
    optWriteHeader = 0x8,  // skiph+
    optPartIndex = 0x10,
    optAllText = 0x20,
    optAutoIndex = 0x40,
    optRangeSize = 0x80,  // a label's prefix, never a file-name option
    optUpdate = 0x100,    // the source is open for update; not an option
    optEmptyIndex = 0x200,
    optSkipErrorCells = 0x400,
    optInfText = 0x800,
    optInfNumber = 0x1000,
    optMinfText = 0x2000,
    optMinfNumber = 0x4000,
    optNanText = 0x8000,
    optNanNumber = 0x10000,
    optDataFrame = 0x20000,

    optSpecialTexts = optInfText | optMinfText | optNanText,
    optSpecialNumbers = optInfNumber | optMinfNumber | optNanNumber,
};

constexpr int defaultBufferSize = 2048;  // bytes

/// First word of an option block: which of the two forms it is.
enum class OptionBlockKind : std::int32_t { specialValues = 0, csv = 1 };

/// Texts and numbers that stand for values which a sheet cannot hold as numbers. 128 bytes.
struct SpecialValues {
    OptionBlockKind kind = OptionBlockKind::specialValues;
    char nanText[32] = {};
    char infText[32] = {};
    char minfText[32] = {};
    double nanNumber = 0;  // at byte 104
    double infNumber = 0;
    double minfNumber = 0;
};
static_assert(sizeof(SpecialValues) == 128);

/// Options of a csv file name.
struct CsvOptions {
    OptionBlockKind kind = OptionBlockKind::csv;
    std::int32_t fieldSep = 0;    // 0: not given
    std::int32_t decimalSep = 0;  // 0: not given
    char trueText[32] = {};       // empty: not given
    char falseText[32] = {};
};

/// Parses options at `*text` on top of `initialFlags` and leaves `*text` at the first character that belongs to no
/// option. `bufferSize` may be null (then `bufsize=` is parsed and dropped). `block` may be null or point to a
/// SpecialValues or CsvOptions. Gives the flags.
std::uint32_t parseOptions(std::uint32_t initialFlags, const char** text, std::int32_t* bufferSize,
                           std::int32_t* autoBase, void* block);

/// The keywords that the parser knows, each with its closing ';' or its '='; empty behind the last one.
std::string_view optionKeyword(std::size_t index);

/// When one of `inf=` and `minf=` was given and the other not, derives the other from it.
void completeSpecialValues(std::uint32_t* flags, SpecialValues* block);

}  // namespace quillet
