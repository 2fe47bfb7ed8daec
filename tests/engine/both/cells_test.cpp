#include <cmath>
#include <cstring>
#include <limits>

#include "engine/api/isheet_row_cells.h"
#include "tests/engine/both/engines.h"

namespace vellum {
namespace {

using Cells = EachEngine;
INSTANTIATE_FOR_EACH_ENGINE(Cells);

TEST_P(Cells, EveryKindComesBackFromAFile) {
    const struct {
        const char* text;
    } texts[] = {{"plain"}, {""},       {" outer blanks "}, {"line\nbreak"}, {"\xC3\xA4\xE2\x82\xAC"},
                 {"<&\">"}, {"_x0041_"}};
    const double numbers[] = {0, -0.0, 1, -1, 0.1, 1.5, 1e300, 5e-324, 123456789.25, 1.0 / 3};
    const int errors[] = {errorNull, errorDivisionByZero, errorValue,       errorReference,
                          errorName, errorNumber,         errorNotAvailable};
    auto* sheet = book->addSheet("Data");
    ASSERT_NE(sheet, nullptr) << error();
    for (int i = 0; i < int(std::size(texts)); ++i) EXPECT_TRUE(sheet->writeString(i, 0, texts[i].text)) << error();
    for (int i = 0; i < int(std::size(numbers)); ++i) EXPECT_TRUE(sheet->writeNumber(i, 1, numbers[i])) << error();
    for (int i = 0; i < int(std::size(errors)); ++i) EXPECT_TRUE(sheet->writeError(i, 2, errors[i])) << error();
    EXPECT_TRUE(sheet->writeBool(0, 3, true)) << error();
    EXPECT_TRUE(sheet->writeBool(1, 3, false)) << error();
    EXPECT_EQ(error(), "ok");

    const auto loaded = reloaded();
    for (auto* s : {sheet, loaded->getSheet(0)}) {
        ASSERT_NE(s, nullptr) << loaded->errorMessage();
        EXPECT_EQ(s->firstRow(), 0);
        EXPECT_EQ(s->lastRow(), 10);
        EXPECT_EQ(s->firstCol(), 0);
        EXPECT_EQ(s->lastCol(), 4);
        for (int i = 0; i < int(std::size(texts)); ++i) {
            SCOPED_TRACE(texts[i].text);
            EXPECT_EQ(s->cellType(i, 0), cellString);
            // Underscore escapes of Open XML are shown as they stand in the file.
            if (isBinary() || std::string(texts[i].text) != "_x0041_") {
                EXPECT_STREQ(s->readString(i, 0), texts[i].text);
            }
        }
        for (int i = 0; i < int(std::size(numbers)); ++i) {
            EXPECT_EQ(s->cellType(i, 1), cellNumber);
            EXPECT_EQ(s->readNumber(i, 1), numbers[i]);
        }
        for (int i = 0; i < int(std::size(errors)); ++i) {
            EXPECT_EQ(s->cellType(i, 2), cellError);
            EXPECT_EQ(s->readError(i, 2), errors[i]);
        }
        EXPECT_EQ(s->cellType(1, 3), cellBoolean);
        EXPECT_TRUE(s->readBool(0, 3));
        EXPECT_FALSE(s->readBool(1, 3));
        EXPECT_EQ(s->cellType(2, 3), cellEmpty);
        EXPECT_EQ(s->cellType(lastPossibleRow(), lastPossibleCol()), cellEmpty);
    }
}

TEST_P(Cells, ANumberThatNoSheetCanHoldIsAnError) {
    auto* sheet = book->addSheet("S");
    const double odd[] = {std::nan(""), std::numeric_limits<double>::infinity(),
                          -std::numeric_limits<double>::infinity()};
    for (const double value : odd) {
        EXPECT_TRUE(sheet->writeNumber(0, 0, value));
        EXPECT_EQ(sheet->cellType(0, 0), cellError);
        EXPECT_EQ(sheet->readError(0, 0), errorNumber);
    }
}

TEST_P(Cells, OverwritingChangesTheKindAndKeepsTheBounds) {
    auto* sheet = book->addSheet("S");
    EXPECT_TRUE(sheet->writeNumber(7, 3, 1));
    EXPECT_TRUE(sheet->writeString(7, 3, "text"));
    EXPECT_EQ(sheet->cellType(7, 3), cellString);
    EXPECT_TRUE(sheet->writeBool(7, 3, true));
    EXPECT_EQ(sheet->cellType(7, 3), cellBoolean);
    EXPECT_EQ(sheet->lastRow(), 8);
    EXPECT_EQ(sheet->firstRow(), 7);
    EXPECT_TRUE(sheet->writeNumber(2, 5, 1));
    EXPECT_EQ(sheet->firstRow(), 2);
    EXPECT_EQ(sheet->lastCol(), 6);
}

TEST_P(Cells, TheWalkFindsWhatIsThere) {
    auto* sheet = book->addSheet("S");
    auto* walk = dynamic_cast<ISheetCells*>(sheet);
    ASSERT_NE(walk, nullptr);
    int row = 0, col = 0;
    EXPECT_FALSE(walk->cellFrom(&row, &col));
    const std::vector<std::pair<int, int>> places = {{0, 5}, {3, 0}, {3, 1}, {3, 200}, {40000, 17}};
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        ASSERT_TRUE(sheet->writeNumber(place->first, place->second, 1));
    }
    std::vector<std::pair<int, int>> found;
    for (row = col = 0; walk->cellFrom(&row, &col); ++col) found.emplace_back(row, col);
    EXPECT_EQ(found, places);
    row = 3, col = 2;
    EXPECT_TRUE(walk->cellFrom(&row, &col));
    EXPECT_EQ(std::pair(row, col), std::pair(3, 200));
}

/// What a look at part of a row tells, beside what each cell tells by itself; nothing when both are the same.
std::string rowDifference(ISheetT<char>& sheet, int row, int col, int count) {
    constexpr double untouched = -77;
    std::vector<std::uint8_t> kinds(static_cast<std::size_t>(count), 99);
    std::vector<double> numbers(static_cast<std::size_t>(count), untouched);
    dynamic_cast<ISheetRowCells&>(sheet).rowCells(row, col, count, kinds.data(), numbers.data());
    for (int i = 0; i < count; ++i) {
        const std::size_t at = static_cast<std::size_t>(i);
        const int kind = sheet.cellType(row, col + i);
        const bool isNumber = kind == cellNumber || kind == cellDate;
        const double number = isNumber ? sheet.readNumber(row, col + i) : untouched;
        if (kinds[at] != kind || std::memcmp(&numbers[at], &number, sizeof number) != 0) {
            return std::to_string(row) + "," + std::to_string(col + i) + ": " + std::to_string(kinds[at]) + " " +
                   std::to_string(numbers[at]) + ", not " + std::to_string(kind) + " " + std::to_string(number);
        }
    }
    return "";
}

TEST_P(Cells, ARowIsSeenAsItsCellsAre) {
    auto* sheet = book->addSheet("S");
    for (int col = 0; col < 200; ++col) {
        switch (col * 7 % 12) {
            case 0:
                sheet->writeNumber(3, col, col);
                break;
            case 1:
                sheet->writeNumber(3, col, -0.1 * col);
                break;
            case 2:
                sheet->writeNumber(3, col, 1e300 / (col + 1));
                break;
            case 3:
                sheet->writeString(3, col, "12");
                break;
            case 4:
                sheet->writeBool(3, col, true);
                break;
            case 5:
                sheet->writeError(3, col, errorDivisionByZero);
                break;
            case 6:
                sheet->writeBlank(3, col, book->formatAt(0));
                break;
            case 7:
                sheet->writeFormulaNumber(3, col, "A1+1", 2.5);
                break;
            case 8:
                sheet->writeFormulaText(3, col, "T(A1)", "text");
                break;
            case 9:
                sheet->writeFormulaBoolean(3, col, "A1=1", true);
                break;
            default:
                break;
        }
    }
    sheet->writeNumber(4, lastPossibleCol(), 5);
    sheet->writeNumber(lastPossibleRow(), 2, 6);
    const auto loaded = reloaded();
    for (auto* s : {sheet, loaded->getSheet(0)}) {
        for (const int row : {-1, 0, 2, 3, 4, 5, lastPossibleRow(), lastPossibleRow() + 1}) {
            for (int col = 0; col < 210; col += 17) EXPECT_EQ(rowDifference(*s, row, col, 1 + col % 64), "");
            EXPECT_EQ(rowDifference(*s, row, lastPossibleCol() - 3, 10), "");
        }
    }
}

template <class CharT>
class WideAndNarrow : public testing::Test {};
using CharTypes = testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(WideAndNarrow, CharTypes);

TYPED_TEST(WideAndNarrow, OneTextThroughEitherInterface) {
    using Text = std::basic_string<TypeParam>;
    const auto ascii = [](const char* text) { return Text(text, text + std::strlen(text)); };
    for (const Engine engine : {Engine::binary, Engine::openXml}) {
        const auto book = createBook<TypeParam>(engine);
        if (!book) continue;
        auto* sheet = book->addSheet(ascii("Name").c_str());
        ASSERT_NE(sheet, nullptr) << book->errorMessage();
        EXPECT_EQ(sheet->sheetName(), ascii("Name"));
        EXPECT_TRUE(sheet->writeString(1, 1, ascii("text").c_str())) << book->errorMessage();
        EXPECT_EQ(sheet->readString(1, 1), ascii("text"));
        const char* data = nullptr;
        std::size_t size = 0;
        ASSERT_TRUE(book->saveMemory(&data, &size)) << book->errorMessage();
        const auto loaded = createBook<TypeParam>(engine);
        ASSERT_TRUE(loaded->loadMemory(data, size)) << loaded->errorMessage();
        EXPECT_EQ(loaded->sheetNameAt(0), ascii("Name"));
        EXPECT_EQ(loaded->getSheet(0)->readString(1, 1), ascii("text"));
    }
}

}  // namespace
}  // namespace vellum
