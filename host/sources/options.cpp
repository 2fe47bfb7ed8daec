#include "host/sources/options.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <string_view>

#include "host/text/c_locale.h"
#include "host/text/text_compare.h"

namespace quillet {
namespace {

/// Everything a keyword may change.
struct OptionParse {
    const char* at;  // the rest of the text
    std::uint32_t flags;
    std::int32_t* bufferSize;
    std::int32_t* autoBase;
    SpecialValues* special;  // null unless the caller's block is of this kind
    CsvOptions* csv;         // the same
};

/// What a keyword's value came to. A value without its closing ';' ends the parse behind what it consumed.
enum class Taken { noMatch, closed, unclosed };

struct FlagOption {
    std::string_view keyword;  // with its closing ';'
    std::uint32_t sets, clears;
};

struct ValueOption {
    std::string_view keyword;  // with its '='
    Taken (*take)(OptionParse& parse, const char* value);
};

Taken closedOr(OptionParse& parse, const char* behind) {
    const bool closed = *behind == ';';
    parse.at = closed ? behind + 1 : behind;
    return closed ? Taken::closed : Taken::unclosed;
}

/// `bufsize=N;` in units of 1024 bytes; N in any base that strtol knows by its prefix.
Taken takeBufferSize(OptionParse& parse, const char* value) {
    if (!isDigit(*value)) return Taken::noMatch;
    char* end;
    const long kilobytes = std::strtol(value, &end, 0);
    constexpr long largest = std::numeric_limits<std::int32_t>::max() / 1024;
    if (parse.bufferSize) {
        *parse.bufferSize =
            kilobytes < 1 ? defaultBufferSize : static_cast<std::int32_t>(std::min(kilobytes, largest) * 1024);
    }
    return closedOr(parse, end);
}

Taken takeSeparator(OptionParse& parse, const char* value, std::int32_t CsvOptions::*field) {
    if (!parse.csv || *value == '\0') return Taken::noMatch;
    parse.csv->*field = static_cast<unsigned char>(*value);
    return closedOr(parse, value + 1);
}

Taken takeFieldSep(OptionParse& parse, const char* value) {
    return takeSeparator(parse, value, &CsvOptions::fieldSep);
}

Taken takeDecimalSep(OptionParse& parse, const char* value) {
    return takeSeparator(parse, value, &CsvOptions::decimalSep);
}

/// Characters of `value` up to ';' or its end, `longest` at most.
std::size_t textLength(const char* value, std::size_t longest) {
    std::size_t length = 0;
    while (length < longest && value[length] != '\0' && value[length] != ';') ++length;
    return length;
}

/// Copies a value of at most 31 characters. It is stored even when its ';' is missing; then the text goes on right
/// behind the '='.
Taken takeBoolText(OptionParse& parse, const char* value, char (CsvOptions::*field)[32]) {
    if (!parse.csv) return Taken::noMatch;
    char(&text)[32] = parse.csv->*field;
    const std::size_t length = textLength(value, sizeof text - 1);
    std::memset(text, 0, sizeof text);
    std::memcpy(text, value, length);
    if (value[length] == ';') return closedOr(parse, value + length);
    parse.at = value;
    return Taken::unclosed;
}

Taken takeTrueText(OptionParse& parse, const char* value) {
    return takeBoolText(parse, value, &CsvOptions::trueText);
}

Taken takeFalseText(OptionParse& parse, const char* value) {
    return takeBoolText(parse, value, &CsvOptions::falseText);
}

/// `autondx=N;`; anything else leaves the keyword unconsumed, so that it becomes part of the name.
Taken takeAutoIndex(OptionParse& parse, const char* value) {
    if (!isDigit(*value) && *value != '-') return Taken::noMatch;
    char* end;
    const long first = std::strtol(value, &end, 10);
    if (end == value || *end != ';') return Taken::noMatch;
    constexpr long lowest = std::numeric_limits<std::int32_t>::min();
    constexpr long highest = std::numeric_limits<std::int32_t>::max();
    parse.flags = (parse.flags & ~std::uint32_t{optDataFrame}) | optAutoIndex;
    *parse.autoBase = static_cast<std::int32_t>(std::clamp(first, lowest + 1, highest) - 1);
    return closedOr(parse, end);
}

/// One of `inf=`, `minf=`, `nan=`: where its two forms are kept and which bits tell them apart.
struct SpecialOption {
    char (SpecialValues::*text)[32];
    double SpecialValues::*number;
    std::uint32_t textBit, numberBit;
    std::size_t longest;  // characters of the text form
};

Taken takeSpecial(OptionParse& parse, const char* value, const SpecialOption& option) {
    if (!parse.special) return Taken::noMatch;
    if (isDigit(value[0]) || (value[0] == '-' && isDigit(value[1]))) {
        char* end;
        const double number = strtodC(value, &end);
        if (*end == ';') {
            parse.special->*option.number = number;
            parse.flags = (parse.flags & ~option.textBit) | option.numberBit;
            return closedOr(parse, end);
        }
    }
    const std::size_t length = textLength(value, option.longest);
    if (value[length] != ';') {
        parse.at = value;
        return Taken::unclosed;
    }
    char(&text)[32] = parse.special->*option.text;
    std::memset(text, 0, sizeof text);
    std::memcpy(text, value, length);
    parse.flags = (parse.flags & ~option.numberBit) | option.textBit;
    return closedOr(parse, value + length);
}

Taken takeInf(OptionParse& parse, const char* value) {
    return takeSpecial(parse, value,
                       {&SpecialValues::infText, &SpecialValues::infNumber, optInfText, optInfNumber, 30});
}

Taken takeMinf(OptionParse& parse, const char* value) {
    return takeSpecial(parse, value,
                       {&SpecialValues::minfText, &SpecialValues::minfNumber, optMinfText, optMinfNumber, 30});
}

Taken takeNan(OptionParse& parse, const char* value) {
    return takeSpecial(parse, value,
                       {&SpecialValues::nanText, &SpecialValues::nanNumber, optNanText, optNanNumber, 31});
}

Taken takeAutoIndexFlag(OptionParse& parse, const char* behind) {
    parse.flags = (parse.flags & ~std::uint32_t{optDataFrame}) | optAutoIndex;
    *parse.autoBase = 0;
    parse.at = behind;
    return Taken::closed;
}

Taken takeSkipErrorCells(OptionParse& parse, const char* behind) {
    if (!parse.special) return Taken::noMatch;
    parse.flags |= optSkipErrorCells;
    parse.at = behind;
    return Taken::closed;
}

// No keyword is the beginning of another, so the two tables need no common order.
constexpr FlagOption flagOptions[] = {
    {"alltxt;", optAllText, 0},
    {"grow;", optGrow, 0},
    {"noindex;", optNoIndex, 0},
    {"partndx;", optPartIndex, optDataFrame},
    {"partindex;", optPartIndex, optDataFrame},
    {"skiph;", optSkipHeader, 0},
    {"emptyndx;", optEmptyIndex, 0},
    {"skiph+;", optSkipHeader | optWriteHeader, 0},
    {"dataframe;", optDataFrame, optPartIndex | optAutoIndex},
};

constexpr ValueOption valueOptions[] = {
    {"bufsize=", takeBufferSize},
    {"dsep=", takeDecimalSep},
    {"fsep=", takeFieldSep},
    {"true=", takeTrueText},
    {"false=", takeFalseText},
    {"autondx;", takeAutoIndexFlag},
    {"autondx=", takeAutoIndex},
    {"skiperrcell;", takeSkipErrorCells},
    {"inf=", takeInf},
    {"minf=", takeMinf},
    {"nan=", takeNan},
};

bool beginsWith(const char* text, std::string_view keyword) {
    return equalIgnoringCase({text, strnlen(text, keyword.size())}, keyword);
}

Taken takeOne(OptionParse& parse) {
    for (const FlagOption& option : flagOptions) {
        if (!beginsWith(parse.at, option.keyword)) continue;
        parse.flags = (parse.flags & ~option.clears) | option.sets;
        parse.at += option.keyword.size();
        return Taken::closed;
    }
    for (const ValueOption& option : valueOptions) {
        if (beginsWith(parse.at, option.keyword)) return option.take(parse, parse.at + option.keyword.size());
    }
    return Taken::noMatch;
}

/// `to` = `sign` + `from`, cut at 31 characters.
void copyWithSign(char (&to)[32], char sign, const char* from) {
    std::memset(to, 0, sizeof to);
    to[0] = sign;
    std::memcpy(to + 1, from, strnlen(from, sizeof to - 2));
}

void completeMinf(std::uint32_t* flags, SpecialValues* block) {
    if (*flags & optInfNumber) {
        block->minfNumber = -block->infNumber;
        *flags |= optMinfNumber;
        return;
    }
    *flags |= optMinfText;
    const char* const inf = block->infText;
    if (inf[0] == '\0') {
        std::memset(block->minfText, 0, sizeof block->minfText);
    } else {
        copyWithSign(block->minfText, '-', inf[0] == '+' ? inf + 1 : inf);
    }
}

void completeInf(std::uint32_t* flags, SpecialValues* block) {
    if (*flags & optMinfNumber) {
        block->infNumber = -block->minfNumber;
        *flags |= optInfNumber;
        return;
    }
    *flags |= optInfText;
    const char* const minf = block->minfText;
    std::memset(block->infText, 0, sizeof block->infText);
    if (minf[0] == '-') {
        std::memcpy(block->infText, minf + 1, strnlen(minf + 1, sizeof block->infText - 2));
    } else if (minf[0] != '\0') {
        copyWithSign(block->infText, '+', minf);
    }
}

}  // namespace

std::uint32_t parseOptions(std::uint32_t initialFlags, const char** text, std::int32_t* bufferSize,
                           std::int32_t* autoBase, void* block) {
    OptionParse parse{*text, initialFlags, bufferSize, autoBase, nullptr, nullptr};
    if (block) {
        const bool forCsv = *static_cast<const OptionBlockKind*>(block) == OptionBlockKind::csv;
        if (forCsv) {
            parse.csv = static_cast<CsvOptions*>(block);
        } else {
            parse.special = static_cast<SpecialValues*>(block);
        }
    }
    while (takeOne(parse) == Taken::closed) continue;
    *text = parse.at;
    return parse.flags & optDataFrame ? parse.flags | optNoIndex : parse.flags;
}

std::string_view optionKeyword(std::size_t index) {
    if (index < std::size(flagOptions)) return flagOptions[index].keyword;
    index -= std::size(flagOptions);
    return index < std::size(valueOptions) ? valueOptions[index].keyword : std::string_view{};
}

void completeSpecialValues(std::uint32_t* flags, SpecialValues* block) {
    const bool inf = *flags & (optInfText | optInfNumber);
    const bool minf = *flags & (optMinfText | optMinfNumber);
    if (inf && !minf) completeMinf(flags, block);
    if (minf && !inf) completeInf(flags, block);
}

}  // namespace quillet
