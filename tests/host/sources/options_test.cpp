#include "host/sources/options.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace quillet {
namespace {

constexpr std::int32_t untouched = -77;

struct Parsed {
    std::uint32_t flags;
    std::string rest;
    std::int32_t bufferSize = untouched;
    std::int32_t autoBase = untouched;
};

Parsed parse(const std::string& text, void* block, std::uint32_t initial = 0) {
    Parsed parsed;
    const char* at = text.c_str();
    parsed.flags = parseOptions(initial, &at, &parsed.bufferSize, &parsed.autoBase, block);
    parsed.rest = at;
    return parsed;
}

TEST(Options, FlagsAndRestForWorkbooks) {
    const struct {
        const char* text;
        std::uint32_t flags;
        const char* rest;
    } cases[] = {
        {"grow;skiph;data.xlsx", optGrow | optSkipHeader, "data.xlsx"},
        {"GROW;data.xlsx", optGrow, "data.xlsx"},
        {"grow", 0, "grow"},
        {"", 0, ""},
        {"grow;fsep=,;data.xls", optGrow, "fsep=,;data.xls"},
        {"true=T;f", 0, "true=T;f"},
        {"dataframe;partndx;f", optPartIndex, "f"},
        {"partindex;dataframe;f", optDataFrame | optNoIndex, "f"},
        {"autondx;dataframe;f", optDataFrame | optNoIndex, "f"},
        {"dataframe;autondx;f", optAutoIndex, "f"},
        {"noindex;partndx;f", optNoIndex | optPartIndex, "f"},
        {"skiph+;emptyndx;skiperrcell;alltxt;f",
         optSkipHeader | optWriteHeader | optEmptyIndex | optSkipErrorCells | optAllText, "f"},
        {"skiph +;f", 0, "skiph +;f"},
        {" grow;f", 0, " grow;f"},
        {"rangesize;f", 0, "rangesize;f"},
        {"inf=1e30;minf=-1;f", optInfNumber | optMinfNumber, "f"},
        {"inf=1e30x;f", optInfText, "f"},
        {"inf=5;inf=x;f", optInfText, "f"},
        {"nan=x;nan=-5;f", optNanNumber, "f"},
        {"nan=NA", 0, "NA"},
        {"nan=;f", optNanText, "f"},
        {"inf=a123456789012345678901234567890;f", 0, "a123456789012345678901234567890;f"},  // 31 characters
        {"nan=a123456789012345678901234567890;f", optNanText, "f"},                         // 31 characters
        {"autondx=;f", 0, "autondx=;f"},
        {"autondx=3x;f", 0, "autondx=3x;f"},
        {"autondx=-;f", 0, "autondx=-;f"},
        {"bufsize=x;f", 0, "bufsize=x;f"},
        {"bufsize=3f", 0, "f"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        SpecialValues block;
        const Parsed parsed = parse(c.text, &block);
        EXPECT_EQ(parsed.flags, c.flags);
        EXPECT_EQ(parsed.rest, c.rest);
    }
}

TEST(Options, NumbersOfBufferSizeAndAutoIndex) {
    const struct {
        const char* text;
        std::int32_t bufferSize, autoBase;
    } cases[] = {
        {"bufsize=0;x.csv", 2048, untouched},
        {"bufsize=4;x.csv", 4096, untouched},
        {"bufsize=0x10;x.csv", 16384, untouched},
        {"bufsize=010;x.csv", 8192, untouched},
        {"bufsize=99999999999999999999;x", 2097151 * 1024, untouched},
        {"autondx;x", untouched, 0},
        {"autondx=5;x", untouched, 4},
        {"autondx=-2;x", untouched, -3},
        {"autondx=5;autondx;x", untouched, 0},
        {"autondx=-99999999999;x", untouched, std::numeric_limits<std::int32_t>::min()},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const Parsed parsed = parse(c.text, nullptr);
        EXPECT_EQ(parsed.bufferSize, c.bufferSize);
        EXPECT_EQ(parsed.autoBase, c.autoBase);
    }
}

TEST(Options, ItemAddsToItsSource) {
    EXPECT_EQ(parse("partndx;x", nullptr, optDataFrame | optNoIndex | optUpdate).flags,
              optPartIndex | optNoIndex | optUpdate);
    EXPECT_EQ(parse("[A1]", nullptr, optDataFrame).flags, optDataFrame | optNoIndex);
}

TEST(Options, CsvTextsAndSeparators) {
    const struct {
        const char *text, *rest;
        char fieldSep, decimalSep;
        const char *trueText, *falseText;
    } cases[] = {
        {"fsep=;;dsep=,;f", "f", ';', ',', "", ""},
        {"fsep=,f", "f", ',', 0, "", ""},
        {"fsep=", "fsep=", 0, 0, "", ""},
        {"TRUE=yes;false=no;f", "f", 0, 0, "yes", "no"},
        {"true=yes", "yes", 0, 0, "yes", ""},
        {"true=0123456789012345678901234567890;f", "f", 0, 0, "0123456789012345678901234567890", ""},
        {"true=01234567890123456789012345678901;f", "01234567890123456789012345678901;f", 0, 0,
         "0123456789012345678901234567890", ""},
        {"inf=5;f", "inf=5;f", 0, 0, "", ""},
        {"skiperrcell;f", "skiperrcell;f", 0, 0, "", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        CsvOptions block;
        EXPECT_EQ(parse(c.text, &block).rest, c.rest);
        EXPECT_EQ(block.fieldSep, c.fieldSep);
        EXPECT_EQ(block.decimalSep, c.decimalSep);
        EXPECT_STREQ(block.trueText, c.trueText);
        EXPECT_STREQ(block.falseText, c.falseText);
    }
}

TEST(Options, CompletionOfInfinities) {
    const struct {
        const char *text, *inf, *minf;
    } cases[] = {
        {"inf=+INF;f", "+INF", "-INF"},
        {"inf=INF;f", "INF", "-INF"},
        {"inf=;f", "", ""},
        {"minf=-INF;f", "INF", "-INF"},
        {"minf=NEG;f", "+NEG", "NEG"},
        {"inf=a;minf=b;f", "a", "b"},
        {"inf=a12345678901234567890123456789;f", "a12345678901234567890123456789", "-a12345678901234567890123456789"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        SpecialValues block;
        std::uint32_t flags = parse(c.text, &block).flags;
        completeSpecialValues(&flags, &block);
        EXPECT_EQ(flags, optInfText | optMinfText);
        EXPECT_STREQ(block.infText, c.inf);
        EXPECT_STREQ(block.minfText, c.minf);
    }
    SpecialValues block;
    std::uint32_t flags = parse("minf=-7;f", &block).flags;
    completeSpecialValues(&flags, &block);
    EXPECT_EQ(flags, optInfNumber | optMinfNumber);
    EXPECT_EQ(block.infNumber, 7);
}

}  // namespace
}  // namespace quillet
