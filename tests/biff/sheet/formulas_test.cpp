// Formula cells: texts of what is loaded, and cells made of texts.
#include <cmath>
#include <limits>

#include "engine/api/iformula_results.h"
#include "tests/biff/sheet/fixture.h"

namespace vellum::test {
namespace {

/// A Formula record of these tokens, with the value 0.
Record formulaRecord(int row, int col, const std::string& rgce) {
    const Bytes tokens = hex(rgce);
    Bytes body(20);
    body[0] = static_cast<std::byte>(row);
    body[2] = static_cast<std::byte>(col);
    body.push_back(static_cast<std::byte>(tokens.size()));
    body.push_back({});
    body.insert(body.end(), tokens.begin(), tokens.end());
    return {6, body};
}

std::string textAt(ISheetT<char>& sheet, IBookT<char>& book, int row, int col) {
    const char* const text = sheet.readFormula(row, col);
    return text != nullptr ? text : std::string("! ") + book.errorMessage();
}

std::string value(const Record& formula) {
    std::string text;
    char digits[4];
    for (std::size_t i = 6; i < 14; ++i) {
        std::snprintf(digits, sizeof digits, "%02X", std::to_integer<unsigned>(formula.body[i]));
        text += digits;
    }
    return text;
}

// B2 and B3 share what stands behind B2; B5 names a cell behind which nothing stands.
const std::vector<Record> sharing{
    formulaRecord(1, 1, "01 0100 0100"),
    {1212, hex("0100 0200 01 01 00 02 0B00 4C FFFF FFC0 4C 0000 0000 03")},
    formulaRecord(2, 1, "01 0100 0100"),
    formulaRecord(4, 1, "01 0900 0900"),
};

TEST(SheetFormulas, OfALoadedSheet) {
    OneSheet loadedSheet(sharing);
    EXPECT_EQ(textAt(*loadedSheet.sheet, *loadedSheet.book, 1, 1), "A1+$A$1");
    EXPECT_EQ(textAt(*loadedSheet.sheet, *loadedSheet.book, 2, 1), "A2+$A$1");
    EXPECT_STREQ(loadedSheet.book->errorMessage(), "ok");
    EXPECT_EQ(textAt(*loadedSheet.sheet, *loadedSheet.book, 4, 1), "?");
    EXPECT_EQ(textAt(*loadedSheet.sheet, *loadedSheet.book, 0, 0), "! cell doesn't contain a formula");
    loadedSheet.book->setUsesR1C1(true);
    EXPECT_EQ(textAt(*loadedSheet.sheet, *loadedSheet.book, 2, 1), "R[2]C[1]+R1C1")
        << "shared tokens count from no cell of the sheet";

    OneSheet broken({formulaRecord(0, 0, "1E 0100 03"), formulaRecord(0, 1, "00"), formulaRecord(0, 2, "44 0000")});
    EXPECT_EQ(textAt(*broken.sheet, *broken.book, 0, 0), "! toInfix error: expected two operands for binary operator");
    EXPECT_EQ(textAt(*broken.sheet, *broken.book, 0, 1), "! can't recognize formula block: unknown ptg");
    EXPECT_EQ(textAt(*broken.sheet, *broken.book, 0, 2), "! ByteStream::popInt16() error");
}

// Another cell gets the shared tokens when the one behind which they stand is written over.
TEST(SheetFormulas, SharedTextOutlivesItsFirstCell) {
    OneSheet loadedSheet(sharing);
    ISheetT<char>& sheet = *loadedSheet.sheet;
    EXPECT_TRUE(sheet.writeFormula(1, 1, "1+1"));
    EXPECT_EQ(textAt(sheet, *loadedSheet.book, 1, 1), "1+1");
    EXPECT_EQ(textAt(sheet, *loadedSheet.book, 2, 1), "A2+$A$1");
    const auto again = loaded(saved(*loadedSheet.book));
    EXPECT_EQ(textAt(*again->getSheet(0), *again, 2, 1), "A2+$A$1");
}

TEST(SheetFormulas, ARowFilterHandsSharedTokensOn) {
    const auto file = workbook({sharing});
    Book book = newBook();
    ASSERT_TRUE(book->loadMemory(file.data(), file.size(), 0, 2, 9)) << book->errorMessage();
    EXPECT_EQ(textAt(*book->getSheet(0), *book, 2, 1), "A2+$A$1");
    const auto records = savedRecords(*book);
    ASSERT_EQ(only(records, 6).size(), 2U);
    EXPECT_EQ(only(records, 1212).size(), 1U);
    EXPECT_EQ(only(records, 6)[0].body[23], std::byte{2}) << "the cell names itself";
    const auto again = loaded(saved(*book));
    EXPECT_EQ(textAt(*again->getSheet(0), *again, 2, 1), "A2+$A$1");
}

TEST(SheetFormulas, WrittenTextsReadTheSameInTheSavedFile) {
    const char* const texts[] = {"A1+1",           "SUM(A1:B2;C3)",  "S!A1&\"x\"\"y\"", "IF(A1>=1;-B1%;(2+3)*4)",
                                 "OFFSET(A1;1;2)", "'T U'!$A$1:B$2", "S:'T U'!A1",      "TODAY()",
                                 "#N/A",           "Total*2"};
    NewSheet fresh;
    fresh.book->addSheet("T U");
    ASSERT_TRUE(fresh.sheet->setNamedRangeByName("Total", 0, 1, 0, 1));
    int row = 0;
    for (const char* text : texts) {
        ASSERT_TRUE(fresh.sheet->writeFormula(row, 3, text)) << text << ": " << fresh.book->errorMessage();
        EXPECT_STREQ(fresh.book->errorMessage(), "ok");
        ++row;
    }
    for (const Record& formula : only(savedRecords(*fresh.book), 6)) {
        EXPECT_EQ(formula.body[14], std::byte{1}) << "readers are to calculate it";
        EXPECT_EQ(formula.body.size(), 22U + std::to_integer<std::size_t>(formula.body[20]));
    }
    const auto again = loaded(saved(*fresh.book));
    row = 0;
    for (const char* text : texts) {
        const std::string expected = std::string(text) == "S:'T U'!A1" ? "'S:T U'!A1" : text;
        EXPECT_EQ(textAt(*fresh.sheet, *fresh.book, row, 3), expected);
        EXPECT_EQ(textAt(*again->getSheet(0), *again, row, 3), expected);
        ++row;
    }
    EXPECT_EQ(fresh.sheet->cellType(8, 3), cellError);
    EXPECT_EQ(fresh.sheet->readError(8, 3), errorNotAvailable);
    EXPECT_EQ(fresh.sheet->cellType(0, 3), cellEmpty);
}

TEST(SheetFormulas, CachedValues) {
    const struct {
        bool (*write)(ISheetT<char>& sheet);
        const char* wire;
    } cases[] = {
        {[](ISheetT<char>& s) { return s.writeFormula(0, 0, "1+1"); }, "030000000000FFFF"},
        {[](ISheetT<char>& s) { return s.writeFormula(0, 0, "#REF!"); }, "020017000000FFFF"},
        {[](ISheetT<char>& s) { return s.writeFormulaNumber(0, 0, "1+1", 2.0); }, "0000000000000040"},
        {[](ISheetT<char>& s) { return s.writeFormulaNumber(0, 0, "1", std::nan("")); }, "020024000000FFFF"},
        {[](ISheetT<char>& s) { return s.writeFormulaText(0, 0, "A2", "x"); }, "000000000000FFFF"},
        {[](ISheetT<char>& s) { return s.writeFormulaText(0, 0, "A2", ""); }, "030000000000FFFF"},
        {[](ISheetT<char>& s) { return s.writeFormulaBoolean(0, 0, "A2", true); }, "010001000000FFFF"},
    };
    for (const auto& c : cases) {
        NewSheet fresh;
        EXPECT_TRUE(c.write(*fresh.sheet)) << fresh.book->errorMessage();
        EXPECT_EQ(value(fresh.cellRecord()), c.wire);
        const auto texts = only(savedRecords(*fresh.book), 519);
        EXPECT_EQ(texts.size(), std::string(c.wire).starts_with("0000000000") && c.wire[15] == 'F' ? 1U : 0U);
    }
    NewSheet fresh;
    EXPECT_TRUE(fresh.sheet->writeFormulaText(0, 0, "A2", "\xE6\x97\xA5"));
    EXPECT_STREQ(fresh.sheet->readString(0, 0), "\xE6\x97\xA5");
}

// The cell, the names and the list of references stay as they were.
TEST(SheetFormulas, WhatFailsChangesNothing) {
    NewSheet fresh;
    ISheetT<char>& sheet = *fresh.sheet;
    ASSERT_TRUE(sheet.writeFormulaNumber(1, 1, "S!A1", 7));
    ASSERT_TRUE(sheet.writeString(2, 2, "x"));
    fresh.book->addSheet("T");
    Book stranger = newBook();
    IFormatT<char>* const foreign = stranger->newFormat();
    const auto before = recordsOf(saved(*fresh.book));
    const std::string large = "T!A1&\"" + std::string(300, 'x') + "\"";
    const std::string tooLong(32768, 'x');
    const struct {
        const char *text, *failure;
    } cases[] = {
        {"", "incorrect token in formula"},
        {"T!A1+", "incorrect token in formula"},
        {"T!A1+Rate", "incorrect token in formula"},
        {"T!A1+Gone!A1", "sheet is not found"},
        {"T!A1+IW1", "Column is out of range"},
        {"T!A1)", "error in formula"},
        {large.c_str(), "ShortXLUnicodeString: string is too long"},
    };
    for (const auto& c : cases) {
        for (const auto& [row, col] : {std::pair(1, 1), std::pair(2, 2), std::pair(5, 5)}) {
            EXPECT_FALSE(sheet.writeFormula(row, col, c.text)) << c.text;
            EXPECT_STREQ(fresh.book->errorMessage(), c.failure);
        }
    }
    EXPECT_FALSE(sheet.writeFormulaText(1, 1, "T!A1", tooLong.c_str()));
    EXPECT_STREQ(fresh.book->errorMessage(), "string is too long");
    EXPECT_FALSE(sheet.writeFormula(1, 1, "T!A1", foreign));
    EXPECT_STREQ(fresh.book->errorMessage(), "specified format not found");
    EXPECT_FALSE(sheet.writeFormula(65536, 1, "T!A1"));
    EXPECT_STREQ(fresh.book->errorMessage(), "row must be in range 0-65535");
    EXPECT_EQ(recordsOf(saved(*fresh.book)), before);
    EXPECT_EQ(sheet.lastRow(), 3);
}

TEST(SheetFormulas, WideTextsAndR1C1) {
    std::unique_ptr<IBookT<wchar_t>, Release<wchar_t>> book(vlCreateBook<wchar_t>());
    ISheetT<wchar_t>* const sheet = book->addSheet(L"S");
    book->setUsesR1C1(true);
    ASSERT_TRUE(sheet->writeFormula(1, 1, L"RC[-1]&\"\u65E5\""));
    EXPECT_STREQ(sheet->readFormula(1, 1), L"RC[-1]&\"\u65E5\"");
    book->setUsesR1C1(false);
    EXPECT_STREQ(sheet->readFormula(1, 1), L"A2&\"\u65E5\"");
}

// A workbook of the older layout: its own tokens read by that one, those of a written cell by the new one.
TEST(SheetFormulas, OfTheOlderLayout) {
    OneSheet old({formulaRecord(0, 1, "24 00C0 00 17 0161 08")}, true);
    EXPECT_EQ(textAt(*old.sheet, *old.book, 0, 1), "A1&\"a\"");
    ASSERT_TRUE(old.sheet->writeFormula(0, 2, "A1&\"b\"")) << old.book->errorMessage();
    EXPECT_EQ(textAt(*old.sheet, *old.book, 0, 2), "A1&\"b\"");
    const auto again = loaded(saved(*old.book));
    EXPECT_EQ(textAt(*again->getSheet(0), *again, 0, 2), "A1&\"b\"");
}

TEST(FormulaResults, AreReplacedAndNothingElse) {
    const struct {
        FormulaResult result;
        const char* value;  // as the record has it
        const char* text;   // of the record behind it; null: none
    } cases[] = {
        {{.number = 1.5, .text = {}}, "000000000000F83F", nullptr},
        {{.number = std::numeric_limits<double>::quiet_NaN(), .text = {}}, "020024000000FFFF", nullptr},
        {{.kind = cellBoolean, .boolean = true, .text = {}}, "010001000000FFFF", nullptr},
        {{.kind = cellError, .error = errorDivisionByZero, .text = {}}, "020007000000FFFF", nullptr},
        {{.kind = cellString, .text = "ab"}, "000000000000FFFF", "0200 01 61006200"},
        {{.kind = cellString, .text = std::string("a\0b", 3)}, "000000000000FFFF", "0300 01 610000006200"},
        {{.kind = cellString, .text = {}}, "030000000000FFFF", nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        NewSheet s;
        ASSERT_TRUE(s.sheet->writeFormulaText(0, 0, "A2&\"x\"", "old")) << s.book->errorMessage();
        Record expected = s.cellRecord();
        auto& results = dynamic_cast<IFormulaResults&>(*s.sheet);
        ASSERT_TRUE(results.setResult(0, 0, c.result)) << s.book->errorMessage();
        EXPECT_TRUE(results.isCalculated(0, 0));
        const Record got = s.cellRecord();
        EXPECT_EQ(value(got), c.value);
        std::copy_n(got.body.begin() + 6, 8, expected.body.begin() + 6);
        expected.body[14] &= std::byte{0xFE};  // nobody has to calculate it
        EXPECT_EQ(got, expected);
        const auto texts = only(savedRecords(*s.book), 519);
        ASSERT_EQ(texts.size(), c.text == nullptr ? 0U : 1U);
        if (c.text == nullptr) continue;
        EXPECT_EQ(texts[0].body, hex(c.text));
    }
    NewSheet s;
    auto& results = dynamic_cast<IFormulaResults&>(*s.sheet);
    ASSERT_TRUE(s.sheet->writeFormula(0, 0, "A2") && s.sheet->writeNumber(0, 1, 5));
    EXPECT_FALSE(results.isCalculated(0, 0));
    EXPECT_FALSE(results.isCalculated(0, 1));
    EXPECT_FALSE(results.setResult(0, 1, {}));
    EXPECT_FALSE(results.setResult(0, 0, {.kind = cellString, .text = std::string(32768, 'x')}));
    EXPECT_FALSE(results.isCalculated(0, 0));
    EXPECT_EQ(s.sheet->readNumber(0, 1), 5);
}

}  // namespace
}  // namespace vellum::test
