// Cells of every kind, read and written.
#include <gtest/gtest.h>
#include <clocale>

#include <cmath>
#include <limits>

#include "engine/api/iformat.h"
#include "engine/api/irichstring.h"
#include "tests/xlsx/sheet/sheet_fixture.h"
#include "xlsx/strings/rich_string.h"
#include "xlsx/styles/format.h"

namespace vellum::test {
namespace {

struct ReadCase {
    const char* cell;  // the element at A1, without its reference
    int kind;
    const char* string;  // a result, or "! " and the failure
    const char* number;
    bool blank = false;
};

std::string numberText(TestSheet<>& sheet) {
    const double value = sheet->readNumber(0, 0, nullptr);
    if (sheet.error() != "ok") return std::string("! ").append(sheet.error());
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

constexpr const char* noString = "! this cell doesn't contain a string";
constexpr const char* noNumber = "! this cell doesn't contain a number";

TEST(SheetCells, KindsReadAsTheirTypesSay) {
    const ReadCase cases[] = {
        {"<c r='A1'><v>1.5</v></c>", 1, "1.5", "1.5"},
        {"<c r='A1'><v>0.1</v></c>", 1, "0.1", "0.10000000000000001"},
        {"<c r='A1' t='n'><v> 2 </v></c>", 1, noString, "2"},
        {"<c r='A1'><v>1e999</v></c>", 1, "inf", "inf"},
        {"<c r='A1' t='str'><v>12</v></c>", 2, "12", "12"},
        {"<c r='A1' t='str'><v>12a</v></c>", 2, "12a", noNumber},
        {"<c r='A1' t='str'><v>\xC3\xA9</v></c>", 2, "\xC3\xA9", noNumber},
        {"<c r='A1' t='s'><v>0</v></c>", 2, "! sharedStrings not found", noNumber},
        {"<c r='A1' t='inlineStr'><is><t>ab</t></is></c>", 2, "ab", noNumber, true},
        {"<c r='A1' t='inlineStr'><is><r><t>a</t></r><r><t>b</t></r></is></c>", 2, "ab", noNumber, true},
        {"<c r='A1' t='b'><v>1</v></c>", 3, noString, noNumber},
        {"<c r='A1' t='e'><v>#N/A</v></c>", 5, noString, noNumber},
        {"<c r='A1' s='0'/>", 4, noString, noNumber, true},
        {"<c r='A1'/>", 0, noString, noNumber, true},
        {"<c r='A1'><f>A2</f></c>", 1, noString, noNumber, true},
        {"", 0, "! cell is not found", "! cell is not found"},
    };
    for (const ReadCase& c : cases) {
        SCOPED_TRACE(c.cell);
        TestSheet sheet(std::string("<row r='1'>") + c.cell + "</row>");
        EXPECT_EQ(sheet->cellType(0, 0), c.kind);
        EXPECT_EQ(sheet.string(0, 0), c.string);
        EXPECT_EQ(numberText(sheet), c.number);
        std::uint8_t kind = 99;
        double number = 0.0;
        sheet->rowCells(0, 0, 1, &kind, &number);
        EXPECT_EQ(kind, c.kind);
        EXPECT_EQ(number, c.kind == cellNumber ? sheet->readNumber(0, 0, nullptr) : 0.0);
        EXPECT_EQ(sheet->readBlank(0, 0, nullptr), c.blank);
    }
}

TEST(SheetCells, StrictDatesReadAsDayNumbers) {
    const struct {
        const char* text;
        double value;
        const char* error;
    } cases[] = {
        {"2020-01-31T12:00:00", 43861.5, "ok"},
        {"2020-01-31", 43861, "ok"},
        {"12:30:00", 12.5 / 24, "ok"},
        {"1900-01-01", 1, "ok"},
        {"2020-01-31T00:00:00.5Z", 43861 + 0.5 / 86400, "ok"},
        {"x", 0, "can't read date/time from the cell"},
        {"1800-01-01", 0, "can't read date/time from the cell"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        TestSheet<excelStrict_tag> sheet(std::string("<row r='1'><c r='A1' t='d'><v>") + c.text + "</v></c></row>");
        EXPECT_EQ(sheet->cellType(0, 0), 6);
        EXPECT_NEAR(sheet->readNumber(0, 0, nullptr), c.value, 1e-9);
        EXPECT_EQ(sheet.error(), c.error);
        EXPECT_EQ(sheet.string(0, 0), c.text);
    }
}

TEST(SheetCells, NumbersAreWrittenInSeventeenDigits) {
    const struct {
        double value;
        const char* cell;
    } cases[] = {
        {0.1, "<c r=\"A1\"><v>0.10000000000000001</v></c>"},
        {1e300, "<c r=\"A1\"><v>1.0000000000000001e+300</v></c>"},
        {-0.0, "<c r=\"A1\"><v>-0</v></c>"},
        {1e16, "<c r=\"A1\"><v>10000000000000000</v></c>"},
        {1e17, "<c r=\"A1\"><v>1e+17</v></c>"},
        {-45000, "<c r=\"A1\"><v>-45000</v></c>"},
        {INFINITY, "<c r=\"A1\" t=\"e\"><v>#NUM!</v></c>"},
        {NAN, "<c r=\"A1\" t=\"e\"><v>#NUM!</v></c>"},
    };
    for (const auto& c : cases) {
        TestSheet sheet("");
        EXPECT_TRUE(sheet->writeNumber(0, 0, c.value, nullptr));
        EXPECT_EQ(sheet.savedRows(), std::string("<row r=\"1\">") + c.cell + "</row>");
        if (std::isfinite(c.value)) {
            EXPECT_EQ(sheet->readNumber(0, 0, nullptr), c.value);
        }
    }
}

TEST(SheetCells, ErrorsGoByTheirCodes) {
    TestSheet sheet("<row r='1'><c r='B1' t='e'><v>#FOO!</v></c></row>");
    for (const int code : {0, 7, 15, 23, 29, 36, 42}) {
        EXPECT_TRUE(sheet->writeError(0, 0, code, nullptr));
        EXPECT_EQ(sheet->readError(0, 0, nullptr), code);
        EXPECT_EQ(sheet->cellType(0, 0), 5);
    }
    EXPECT_EQ(sheet->readError(0, 1, nullptr), 255);
    EXPECT_EQ(sheet.error(), "unknown error value");
    EXPECT_FALSE(sheet->writeError(0, 0, 99, nullptr));
    EXPECT_EQ(sheet->readError(0, 0, nullptr), 255);
    EXPECT_EQ(sheet.error(), "this cell doesn't contain an error");
    EXPECT_TRUE(sheet->writeBool(0, 0, true, nullptr, 255));
    EXPECT_TRUE(sheet->readBool(0, 0, nullptr));
}

TEST(SheetCells, StringsAreSharedAndEachOverwriteClearsWhatWasThere) {
    TestSheet sheet(
        "<row r='1'><c r='A1' s='0' cm='1' ph='1' x='1' t='inlineStr'><f>B1</f><is><t>old</t></is>"
        "<extLst><ext uri='u'/></extLst></c></row>");
    EXPECT_TRUE(sheet->writeString(0, 0, "new", nullptr, 2));
    EXPECT_TRUE(sheet->writeString(4, 3, "new", nullptr, 2));
    EXPECT_TRUE(sheet->writeString(4, 1, "1e2", nullptr, 0));
    EXPECT_EQ(sheet.savedRows(),
              "<row r=\"1\"><c r=\"A1\" s=\"0\" t=\"s\"><v>0</v></c></row>"
              "<row r=\"5\"><c r=\"B5\"><v>1e2</v></c><c r=\"D5\" t=\"s\"><v>0</v></c></row>");
    EXPECT_EQ(sheet.string(4, 3), "new");
    EXPECT_EQ(sheet->readNumber(4, 1, nullptr), 100);
    EXPECT_FALSE(sheet->writeRichText(0, 0, nullptr, nullptr));
    EXPECT_EQ(sheet.error(), "richString is NULL");
    auto* const rich = sheet.book.ensureSharedStrings().newRichString(sheet.book);
    rich->addRun("ru", nullptr);
    rich->addRun("ns", nullptr);
    EXPECT_TRUE(sheet->writeRichText(0, 0, rich, nullptr));
    EXPECT_TRUE(sheet->isRichTextCell(0, 0));
    EXPECT_FALSE(sheet->isRichTextCell(4, 3));
    EXPECT_EQ(sheet.string(0, 0), "runs");
    EXPECT_NE(sheet->readRichText(0, 0, nullptr), nullptr);
}

TEST(SheetCells, PlacesOutsideFail) {
    TestSheet sheet("");
    EXPECT_FALSE(sheet->writeNumber(1048576, 0, 1, nullptr));
    EXPECT_EQ(sheet.error(), "row must be in range 0-1048575");
    EXPECT_FALSE(sheet->writeNumber(-1, 16384, 1, nullptr));
    EXPECT_EQ(sheet.error(), "col must be in range 0-16383");
    EXPECT_TRUE(sheet->writeNumber(1048575, 16383, 1, nullptr));
    EXPECT_EQ(sheet.savedRows(), "<row r=\"1048576\"><c r=\"XFD1048576\"><v>1</v></c></row>");
}

TEST(SheetCells, FormatsComeFromCellRowOrColumn) {
    TestSheet sheet("<row r='2' s='1'><c r='A2' s='2'/></row>", -1, -1,
                    "<cols><col min='3' max='4' style='3'/></cols>");
    auto& styles = sheet.book.ensureStyles();
    for (int i = 0; i < 3; ++i) styles.newFormat(nullptr);
    const auto at = [&](std::size_t i) { return static_cast<IFormatT<char>*>(styles.formatAt(i)); };
    EXPECT_EQ(sheet->cellFormatAt(1, 0), at(2));
    EXPECT_EQ(sheet->cellFormatAt(1, 2), at(1));
    EXPECT_EQ(sheet->cellFormatAt(0, 3), at(3));
    EXPECT_EQ(sheet->cellFormatAt(0, 4), nullptr);
    EXPECT_EQ(sheet.error(), "formats are not found");
    EXPECT_TRUE(sheet->writeNumber(0, 2, 1, nullptr));  // takes the column's
    EXPECT_TRUE(sheet->writeNumber(1, 0, 1, at(1)));
    IFormatT<char>* format = nullptr;
    sheet->readNumber(0, 2, &format);
    EXPECT_EQ(format, at(3));
    sheet->readNumber(1, 0, &format);
    EXPECT_EQ(format, at(1));
    at(1)->setNumFormat(14);
    EXPECT_TRUE(sheet->isDate(1, 0));
    EXPECT_FALSE(sheet->isDate(0, 2));
    EXPECT_FALSE(sheet->setCellFormatAt(1, 0, nullptr));
    EXPECT_EQ(sheet->cellFormatAt(1, 0), at(1));
}

// Without UTF-8 a text has the bytes of the C locale, which may lack its characters.
TEST(SheetCells, CharactersThatTheCallerCannotHaveAreReported) {
    const std::string previous = std::setlocale(LC_CTYPE, nullptr);
    std::setlocale(LC_CTYPE, "C");
    TestSheet sheet("<row r='1'><c r='A1' t='str'><v>a\xE2\x82\xAC</v></c><c r='B1' t='str'><v>a</v></c></row>");
    sheet.book.utf8 = false;
    sheet->readString(0, 0, nullptr);
    EXPECT_EQ(sheet.error(), "warning: some characters have not been converted properly");
    EXPECT_STREQ(sheet->readString(0, 1, nullptr), "a");
    EXPECT_EQ(sheet.error(), "ok");
    std::setlocale(LC_CTYPE, previous.c_str());
}

TEST(SheetCells, RowsAndCellsStaySortedWhateverTheOrderOfWriting) {
    TestSheet sheet("");
    const int places[] = {5, 1, 9, 3, 7, 0, 8, 2, 6, 4};
    for (const int row : places) {
        for (const int col : places) EXPECT_TRUE(sheet->writeNumber(row, col, row * 10 + col, nullptr));
    }
    int expected = 0;
    for (int row = 0, col = 0; sheet->cellFrom(&row, &col); ++col, ++expected) {
        EXPECT_EQ(row * 10 + col, expected);
        EXPECT_EQ(sheet->readNumber(row, col, nullptr), expected);
    }
    EXPECT_EQ(expected, 100);
}

TEST(SheetCells, AreasFollowTheWriters) {
    TestSheet sheet("<row r='3'><c r='B3' s='0'/><c r='C3'><v>1</v></c></row><row r='4'><c r='F4' s='0'/></row>");
    EXPECT_EQ(sheet.areas(), "2 4 1 6 2 3 2 3 ");
    sheet->writeNumber(9, 0, 1, nullptr);
    EXPECT_EQ(sheet.areas(), "2 10 0 6 2 10 0 3 ");
    sheet->writeBlank(9, 0, nullptr);
    EXPECT_EQ(sheet.areas(), "2 10 0 6 2 3 2 3 ");
    EXPECT_FALSE(sheet->writeError(2, 2, 99, nullptr));
    EXPECT_EQ(sheet.areas(), "2 10 0 6 0 0 0 0 ");
    EXPECT_EQ(TestSheet("").areas(), "0 0 0 0 0 0 0 0 ");
}

}  // namespace
}  // namespace vellum::test
