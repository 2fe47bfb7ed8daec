#include "host/labels/cell_ref.h"

#include <gtest/gtest.h>

#include "host/sources/table_ops.h"

namespace quillet {
namespace {

TEST(CellRef, RowsColumnsAndWhatFollows) {
    const struct {
        const char* text;
        int row, col;
        const char* rest;
    } cases[] = {
        {"A1", 0, 0, ""},
        {"b7:C9", 6, 1, ":C9"},
        {"Z10]", 9, 25, "]"},
        {"AA3", 2, 26, ""},
        {"XFD1048576", 1048575, 16383, ""},
        {"R3C2", 2, 1, ""},
        {"r12c16384:", 11, 16383, ":"},
        {"R0C1", -1, 0, ""},
        {"R1C0", 0, -1, ""},
        {"R1", 0, 17, ""},    // column R: there is no C with a digit
        {"R1C", 0, 17, "C"},  // the same, and something behind it
        {"RC1", 0, 470, ""},  // column RC
        {"R", notGiven, 17, ""},
        {"A", notGiven, 0, ""},
        {"xfd:", notGiven, 16383, ":"},
        {"17", 16, notGiven, ""},
        {"3:5", 2, notGiven, ":5"},
        {"A0", -1, 0, ""},
        {"A999999999", 999999998, 0, ""},
        {"A1$", 0, 0, "$"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const char* end = nullptr;
        int row = -7, col = -7;
        ASSERT_EQ(parseCellRef(c.text, &end, &row, &col), 0);
        EXPECT_EQ(row, c.row);
        EXPECT_EQ(col, c.col);
        EXPECT_STREQ(end, c.rest);
    }
}

TEST(CellRef, Refused) {
    for (const char* text : {"", "]", "$A$1", "XFE1", "ZZZ", "ABCD1", "R1C16385", "12A", "1R", "-1", " A1",
                             "A1234567890", "1234567890", "R1234567890C1", "R1C1234567890"}) {
        const char* end = nullptr;
        int row = 0, col = 0;
        EXPECT_NE(parseCellRef(text, &end, &row, &col), 0) << text;
    }
}

}  // namespace
}  // namespace quillet
