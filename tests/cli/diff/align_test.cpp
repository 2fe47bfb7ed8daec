// Lines that belong together, and formulas whose cells moved.
#include "cli/diff/align.h"

#include <gtest/gtest.h>

#include <random>

#include "cli/diff/json_members.h"
#include "cli/diff/moved_formula.h"

namespace cli {
namespace {

std::vector<int> aligned(const std::vector<std::uint64_t>& a, const std::vector<std::uint64_t>& b) {
    return alignEqual(a, b);
}

TEST(Align, Cases) {
    const struct {
        std::vector<std::uint64_t> a, b;
        std::vector<int> partners;
    } cases[] = {
        {{}, {1}, {}},
        {{1, 2, 3}, {1, 2, 3}, {0, 1, 2}},
        {{1, 2, 3}, {1, 9, 2, 3}, {0, 2, 3}},
        {{1, 2, 3, 4}, {1, 4}, {0, -1, -1, 1}},
        {{1, 2, 3, 4}, {3, 4, 1, 2}, {2, 3, -1, -1}},
        {{0, 0, 5, 0, 0}, {0, 5, 0, 0}, {0, -1, 1, 2, 3}},
        {{7, 7, 7}, {7, 7, 7, 7}, {0, 1, 2}},
        {{1, 2}, {3, 4}, {-1, -1}},
    };
    for (const auto& c : cases) {
        const auto found = aligned(c.a, c.b);
        int pairs = 0, wanted = 0;
        for (const int p : found) pairs += p >= 0;
        for (const int p : c.partners) wanted += p >= 0;
        EXPECT_EQ(pairs, wanted);
        if (c.a != std::vector<std::uint64_t>{1, 2, 3, 4} || c.b.front() != 3) {  // of two equal orders any will do
            EXPECT_EQ(found, c.partners);
        }
    }
}

TEST(Align, WhatIsPairedIsEqualAndAscends) {
    std::mt19937 chance(5);
    for (int round = 0; round < 300; ++round) {
        std::vector<std::uint64_t> a(chance() % 60), b;
        for (auto& value : a) value = chance() % 40;
        for (const auto value : a) {
            if (chance() % 8 == 0) b.push_back(1000 + chance() % 9);
            if (chance() % 8 != 0) b.push_back(value);
        }
        const auto found = aligned(a, b);
        int last = -1;
        for (std::size_t i = 0; i < a.size(); ++i) {
            if (found[i] < 0) continue;
            EXPECT_EQ(a[i], b[static_cast<std::size_t>(found[i])]);
            EXPECT_GT(found[i], last);
            last = found[i];
        }
    }
}

TEST(MovedFormula, ReferencesFollowTheirCells) {
    SheetAlignment own;  // two rows inserted at 4, column B removed
    own.rows = {0, 1, 2, 5, 6};
    own.rowsOfSecond = 7;
    own.columns = {0, -1, 1};
    own.columnsOfSecond = 2;
    const AlignmentOf of = [&](std::string_view sheet) { return sheet == "It's" ? nullptr : &own; };
    const struct {
        const char *before, *after;
    } cases[] = {
        {"A3+A4", "A3+A6"},
        {"$C$5*c9", "$B$7*B11"},
        {"SUM(A1:A5)", "SUM(A1:A7)"},
        {"B4", "B4"},  // its cell is gone
        {"\"A4\"&A4", "\"A4\"&A6"},
        {"LOG10(A4)", "LOG10(A6)"},
        {"Data!A4:A5+'x y'!A4", "Data!A6:A7+'x y'!A6"},
        {"'It''s'!A4", "'It''s'!A6"},
        {"TAXI4+A4_b+_A4", "TAXI4+A4_b+_A4"},
        {"A:A+4:4", "A:A+4:4"},
        {"A1048576", "A1048578"},
    };
    for (const auto& c : cases) EXPECT_EQ(movedFormula(c.before, own, of), c.after) << c.before;
}

TEST(JsonMembers, TopLevelOnly) {
    const auto found = jsonMembers(R"({"features":{"a":[1,{"b":2}],"c":"x,\"}","d":null}})");
    EXPECT_EQ(found.size(), 3u);
    EXPECT_EQ(found.at("a"), R"([1,{"b":2}])");
    EXPECT_EQ(found.at("c"), R"("x,\"}")");
    EXPECT_EQ(found.at("d"), "null");
}

}  // namespace
}  // namespace cli
