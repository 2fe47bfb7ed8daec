// Inserting and removing of rows and columns: cells, formulas that share tokens, arrays, merged blocks, heights.
#include <ctime>

#include "tests/biff/sheet/fixture.h"

namespace vellum::test {
namespace {

using Sheet = ISheetT<char>;

// Values of the cells of a column as "row:value".
std::string column(Sheet& sheet, int col, int rows = 20) {
    std::string text;
    for (int row = 0; row < rows; ++row) {
        if (sheet.cellType(row, col) == cellNumber) {
            text += std::to_string(row) + ":" + std::to_string(static_cast<int>(sheet.readNumber(row, col))) + " ";
        }
    }
    return text;
}

TEST(MovedLines, CellsMoveWithTheirRowsAndColumns) {
    const struct {
        const char* what;
        bool (*move)(Sheet&);
        const char* first;   // of column 0
        const char* second;  // of column 2
    } cases[] = {
        {"two rows inserted", [](Sheet& s) { return s.insertRows(2, 3); }, "0:1 1:2 4:3 7:4 ", "4:30 "},
        {"before all", [](Sheet& s) { return s.insertRows(0, 0); }, "1:1 2:2 3:3 6:4 ", "3:30 "},
        {"behind all", [](Sheet& s) { return s.insertRows(9, 12); }, "0:1 1:2 2:3 5:4 ", "2:30 "},
        {"two rows removed", [](Sheet& s) { return s.removeRows(1, 2); }, "0:1 3:4 ", ""},
        {"all rows removed", [](Sheet& s) { return s.removeRows(0, 65535); }, "", ""},
        {"the last row alone", [](Sheet& s) { return s.removeRows(65535, 65535); }, "0:1 1:2 2:3 5:4 ", "2:30 "},
        {"columns inserted", [](Sheet& s) { return s.insertColumns(1, 2) && s.copyCell(2, 4, 19, 2); },
         "0:1 1:2 2:3 5:4 ", "19:30 "},
        {"a column removed", [](Sheet& s) { return s.removeColumns(0, 1) && s.copyCell(2, 0, 19, 2); }, "2:30 ",
         "19:30 "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        NewSheet s;
        for (const auto& [row, value] : {std::pair{0, 1}, {1, 2}, {2, 3}, {5, 4}}) s.sheet->writeNumber(row, 0, value);
        s.sheet->writeNumber(2, 2, 30);
        EXPECT_TRUE(c.move(*s.sheet)) << s.book->errorMessage();
        EXPECT_EQ(column(*s.sheet, 0), c.first);
        EXPECT_EQ(column(*s.sheet, 2), c.second);
        const Book again = loaded(saved(*s.book));
        EXPECT_EQ(column(*again->getSheet(0), 0), c.first);
        EXPECT_EQ(s.sheet->lastFilledRow(), again->getSheet(0)->lastFilledRow());
    }
}

TEST(MovedLines, WhatIsPushedPastTheEdgeGoes) {
    NewSheet s;
    s.sheet->writeNumber(65535, 255, 1);
    s.sheet->writeNumber(65534, 255, 2);
    EXPECT_TRUE(s.sheet->insertRows(65000, 65000));
    EXPECT_EQ(s.sheet->readNumber(65535, 255), 2);
    EXPECT_EQ(s.sheet->cellType(65534, 255), cellEmpty);
    EXPECT_TRUE(s.sheet->insertColumns(255, 255));
    EXPECT_EQ(s.sheet->lastFilledRow(), 0);
    const struct {
        bool (*move)(Sheet&);
        const char* text;
    } refused[] = {
        {[](Sheet& x) { return x.insertRows(-1, 0); }, "rowFirst must be in range 0-65535"},
        {[](Sheet& x) { return x.removeRows(0, 65536); }, "rowLast must be in range 0-65535"},
        {[](Sheet& x) { return x.insertRows(2, 1); }, "rowLast must be greater than or equal to rowFirst"},
        {[](Sheet& x) { return x.insertColumns(256, 0); }, "colFirst must be in range 0-255"},
        {[](Sheet& x) { return x.removeColumns(0, 256); }, "colLast must be in range 0-255"},
        {[](Sheet& x) { return x.removeColumns(2, 1); }, "colLast must be greater than or equal to colFirst"},
    };
    for (const auto& r : refused) {
        EXPECT_FALSE(r.move(*s.sheet));
        EXPECT_STREQ(s.book->errorMessage(), r.text);
    }
}

TEST(MovedLines, MergedBlocksMoveAndAreCut) {
    using Areas = std::vector<std::vector<int>>;
    const struct {
        const char* what;
        bool (*move)(Sheet&);
        Areas after;  // of rows 2 to 5, columns 1 to 3, and of the cells 8,0 and 9,0
    } cases[] = {
        {"below an insertion", [](Sheet& s) { return s.insertRows(0, 1); }, {{4, 7, 1, 3}, {10, 11, 0, 0}}},
        {"cut by one", [](Sheet& s) { return s.insertRows(4, 4); }, {{2, 3, 1, 3}, {9, 10, 0, 0}, {5, 6, 1, 3}}},
        {"cut into cells", [](Sheet& s) { return s.insertRows(9, 9); }, {{2, 5, 1, 3}}},
        {"pushed past the edge", [](Sheet& s) { return s.insertRows(6, 65533); }, {{2, 5, 1, 3}}},
        {"cut by the edge",
         [](Sheet& s) { return s.insertColumns(2, 254); },
         {{2, 5, 1, 1}, {8, 9, 0, 0}, {2, 5, 255, 255}}},
        {"removed", [](Sheet& s) { return s.removeRows(1, 6); }, {{2, 3, 0, 0}}},
        {"cut at its top", [](Sheet& s) { return s.removeRows(0, 3); }, {{0, 1, 1, 3}, {4, 5, 0, 0}}},
        {"cut at its end", [](Sheet& s) { return s.removeRows(4, 8); }, {{2, 3, 1, 3}}},
        {"cut inside", [](Sheet& s) { return s.removeColumns(2, 2); }, {{2, 5, 1, 2}, {8, 9, 0, 0}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OneSheet one({{229, hex("0200 0200 0500 0100 0300 0800 0900 0000 0000")}});
        EXPECT_TRUE(c.move(*one.sheet)) << one.book->errorMessage();
        Areas areas;
        for (int i = 0; i < one.sheet->mergeTotal(); ++i) {
            std::vector<int> at(4);
            one.sheet->mergeByIndex(i, &at[0], &at[1], &at[2], &at[3]);
            areas.push_back(at);
        }
        EXPECT_EQ(areas, c.after);
    }
}

TEST(MovedLines, HeightsAndStatesGoAlong) {
    NewSheet s;
    s.sheet->setRow(3, 30, nullptr, true);
    s.sheet->setRow(4, 40);
    EXPECT_TRUE(s.sheet->insertRows(3, 4));
    const auto look = [&](int row) {
        return s.sheet->isRowHidden(row) ? -s.sheet->rowHeight(row) : s.sheet->rowHeight(row);
    };
    EXPECT_EQ((std::vector{look(2), look(3), look(4), look(5), look(6), look(7)}),
              (std::vector{12.75, 12.75, 12.75, -30.0, 40.0, 12.75}));
    EXPECT_TRUE(s.sheet->removeRows(4, 5));
    EXPECT_EQ((std::vector{look(3), look(4), look(5)}), (std::vector{12.75, 40.0, 12.75}));

    // A row higher than a caller may make one keeps its height.
    OneSheet high({{520, hex("0100 0000 0100 FF7F 0000 0000 4001 0F00")}});
    EXPECT_TRUE(high.sheet->insertRows(0, 0));
    EXPECT_EQ(high.sheet->rowHeight(2), 0x7FFF / 20.0);
}

// Rows 1 to 4 of column 0 share tokens: the cell to the left of the one above, as an offset.
std::vector<Record> sharedBlock() {
    std::vector<Record> records;
    for (int row = 1; row <= 4; ++row) {
        Bytes body = hex("0000 0100 0F00 000000000000F83F 0800 00000000 0500 01 0100 0100");
        body[0] = static_cast<std::byte>(row);
        records.push_back({6, body});
        if (row == 1) records.push_back({1212, hex("0100 0400 01 01 00 04 0500 4C FFFF FFC0")});
    }
    return records;
}

// The cell that a formula of one reference means, by its own tokens or by those that it shares.
std::string meaning(const std::vector<Record>& records, const Record& formula) {
    const auto name = [](int row, int col) {
        return std::string(1, static_cast<char>('A' + (col & 0xFF))) + std::to_string((row & 0xFFFF) + 1);
    };
    const auto word = [](const Bytes& body, std::size_t at) { return int{loadLe<std::uint16_t>(&body[at])}; };
    if (formula.body[22] == std::byte{0x44}) return name(word(formula.body, 23), word(formula.body, 25));
    for (std::size_t i = 0; i + 1 < records.size(); ++i) {
        if (records[i].id != 6 || records[i + 1].id != 1212) continue;
        if (!std::equal(records[i].body.begin(), records[i].body.begin() + 4, formula.body.begin() + 23)) continue;
        const Bytes& shared = records[i + 1].body;
        return name(word(formula.body, 0) + word(shared, 11), word(formula.body, 2) + word(shared, 13));
    }
    return "?";
}

std::vector<std::string> formulas(IBookT<char>& book) {
    const auto records = savedRecords(book);
    std::vector<std::string> texts;
    for (const Record& record : only(records, 6)) {
        texts.push_back(std::to_string(std::to_integer<int>(record.body[0])) + "," +
                        std::to_string(std::to_integer<int>(record.body[2])) + " " + meaning(records, record));
    }
    return texts;
}

TEST(MovedLines, SharedFormulasMeanTheSameCellsAsBefore) {
    using Texts = std::vector<std::string>;
    const struct {
        const char* what;
        bool (*move)(Sheet&);
        Texts after;
        std::size_t shared;
    } cases[] = {
        {"nothing", [](Sheet&) { return true; }, {"1,1 A1", "2,1 A2", "3,1 A3", "4,1 A4"}, 1},
        {"all move", [](Sheet& s) { return s.insertRows(0, 1); }, {"3,1 A1", "4,1 A2", "5,1 A3", "6,1 A4"}, 0},
        {"the lower ones", [](Sheet& s) { return s.insertRows(3, 3); }, {"1,1 A1", "2,1 A2", "4,1 A3", "5,1 A4"}, 1},
        {"by columns", [](Sheet& s) { return s.insertColumns(1, 1); }, {"1,2 A1", "2,2 A2", "3,2 A3", "4,2 A4"}, 0},
        {"the first goes", [](Sheet& s) { return s.removeRows(1, 1); }, {"1,1 A2", "2,1 A3", "3,1 A4"}, 0},
        {"one between", [](Sheet& s) { return s.removeRows(2, 2); }, {"1,1 A1", "2,1 A3", "3,1 A4"}, 1},
        {"a copy",
         [](Sheet& s) { return s.copyCell(3, 1, 9, 4); },
         {"1,1 A1", "2,1 A2", "3,1 A3", "4,1 A4", "9,4 A3"},
         1},
        {"a copy of the first",
         [](Sheet& s) { return s.copyCell(1, 1, 9, 4) && s.clearRange(1, 4, 1, 1); },
         {"9,4 A1"},
         0},
        {"a copy over the first",
         [](Sheet& s) { return s.copyCell(4, 1, 1, 1); },
         {"1,1 A4", "2,1 A2", "3,1 A3", "4,1 A4"},
         1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OneSheet one(sharedBlock());
        ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
        EXPECT_TRUE(c.move(*one.sheet)) << one.book->errorMessage();
        EXPECT_EQ(formulas(*one.book), c.after);
        const Book again = loaded(saved(*one.book));
        EXPECT_EQ(formulas(*again), c.after);
        EXPECT_EQ(only(savedRecords(*again), 1212).size(), c.shared);
    }
}

TEST(MovedLines, ArraysMoveWholeOrNotAtAll) {
    const Record array{545, hex("0200 0300 01 02 0000 00000000 0300 1E0700")};
    const Record table{566, hex("0200 0300 01 02 0000 0000 0000 0000 0000")};
    const struct {
        const char* what;
        bool (*move)(Sheet&);
        Bytes range;   // afterwards; none: gone
        Bytes anchor;  // that the last formula names
    } cases[] = {
        {"down", [](Sheet& s) { return s.insertRows(2, 4); }, hex("0500 0600 01 02"), hex("0500 0100")},
        {"up", [](Sheet& s) { return s.removeRows(0, 1); }, hex("0000 0100 01 02"), hex("0000 0100")},
        {"right", [](Sheet& s) { return s.insertColumns(0, 0); }, hex("0200 0300 02 03"), hex("0200 0200")},
        {"stays", [](Sheet& s) { return s.insertRows(4, 4); }, hex("0200 0300 01 02"), hex("0200 0100")},
        {"gone", [](Sheet& s) { return s.removeRows(1, 5); }, {}, {}},
        {"cut by an insertion", [](Sheet& s) { return !s.insertRows(3, 3); }, hex("0200 0300 01 02"), hex("0200 0100")},
        {"cut by a removal", [](Sheet& s) { return !s.removeColumns(2, 2); }, hex("0200 0300 01 02"), hex("0200 0100")},
        {"cut by the edge", [](Sheet& s) { return !s.insertRows(0, 65532); }, hex("0200 0300 01 02"), hex("0200 0100")},
    };
    for (const Record& behind : {array, table}) {
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << behind.id << ' ' << c.what);
            std::vector<Record> records;
            for (const int place : {0x0201, 0x0202, 0x0301, 0x0302}) {
                Bytes body = hex("0000 0000 0F00 000000000000F83F 0000 00000000 0500 01 0200 0100");
                body[0] = static_cast<std::byte>(place >> 8);
                body[2] = static_cast<std::byte>(place & 0xFF);
                if (behind.id == table.id) body[22] = std::byte{2};
                records.push_back({6, body});
                if (place == 0x0201) records.push_back(behind);
            }
            OneSheet one(records);
            ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
            EXPECT_TRUE(c.move(*one.sheet)) << one.book->errorMessage();
            const auto out = savedRecords(*one.book);
            const auto found = only(out, behind.id);
            ASSERT_EQ(found.size(), c.range.empty() ? 0U : 1U);
            if (c.range.empty()) continue;
            EXPECT_EQ(Bytes(found[0].body.begin(), found[0].body.begin() + 6), c.range);
            const Bytes last = only(out, 6).at(3).body;
            EXPECT_EQ(Bytes(last.begin() + 23, last.end()), c.anchor);
        }
    }
    OneSheet one({{6, hex("0200 0100 0F00 000000000000F83F 0000 00000000 0500 01 0200 0100")}, array});
    EXPECT_FALSE(one.sheet->removeRows(3, 3));
    EXPECT_STREQ(one.book->errorMessage(), "an array formula or a data table can't be cut");
}

TEST(MovedLines, ManyRowsOneByOne) {
    NewSheet s;
    for (int row = 0; row < 20000; ++row) s.sheet->writeNumber(row, 0, row);
    const std::clock_t start = std::clock();  // of this process, whatever else the machine does
    for (int i = 0; i < 50; ++i) {
        EXPECT_TRUE(s.sheet->insertRows(10, 10));
        EXPECT_TRUE(s.sheet->removeRows(10, 10));
    }
    EXPECT_LT(std::clock() - start, 5 * CLOCKS_PER_SEC);
    EXPECT_EQ(s.sheet->readNumber(19999, 0), 19999);
}

}  // namespace
}  // namespace vellum::test
