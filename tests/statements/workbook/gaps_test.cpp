#include <random>
#include <utility>
#include <vector>

#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "tests/statements/workbook/workbook_script.h"

namespace {

constexpr int rowCount = 30, colCount = 12;

using Place = std::pair<int, int>;

/// Cells here and there: whole rows at times, mostly single ones, with stretches of nothing between.
std::vector<Place> scattered(unsigned seed) {
    std::mt19937 random(seed);
    std::vector<Place> cells = {{rowCount - 1, colCount - 1}};
    const unsigned density = 1 + seed % 5;
    for (int row = 0; row < rowCount; ++row) {
        const unsigned kind = static_cast<unsigned>(random()) % 8;
        for (int col = 0; col < colCount; ++col) {
            const bool isThere = kind == 0 || (kind <= density && static_cast<unsigned>(random()) % 6 == 0);
            if (isThere && Place{row, col} != cells[0]) cells.emplace_back(row, col);
        }
    }
    return cells;
}

int valueAt(const Place& at) {
    return 1 + at.first * 100 + at.second;
}

class Gaps : public WorkbookScript {
protected:
    void makeFiles(const std::vector<Place>& cells) {
        using namespace vellum;
        IBookT<char>* const book = isXls() ? vlCreateBook<char>() : vlCreateXMLBook<char>();
        book->setLocale("UTF-8");
        ISheetT<char>& sheet = *book->addSheet("S");
        std::vector<std::vector<std::string>> lines(rowCount, std::vector<std::string>(colCount));
        for (const Place& at : cells) {
            sheet.writeNumber(at.first, at.second, valueAt(at));
            lines[static_cast<std::size_t>(at.first)][static_cast<std::size_t>(at.second)] =
                std::to_string(valueAt(at));
        }
        EXPECT_TRUE(book->saveFile(folder().path("t." + extension()).c_str())) << book->errorMessage();
        book->release();
        std::string text;
        for (const auto& line : lines) {
            for (std::size_t col = 0; col < line.size(); ++col) text += (col != 0 ? "," : "") + line[col];
            text += '\n';
        }
        csv.folder().write("t.csv", text);
    }

    WorkbookHost csv{"csv"};
};
INSTANTIATE_FOR_DRIVERS(Gaps);

}  // namespace

// Tables of csv files are visited cell by cell; workbooks, of which the next cell is known, have to give the same.
TEST_P(Gaps, ReadAsIfEachCellWereVisited) {
    const std::string script = R"s(
        declare I : range 1..9
        declare J : range 1..5
        declare L : list of real
        declare M : list of record(x: real, y: integer, z: integer)
        declare S : dynamic set of integer
        declare A : dynamic array(integer, integer) of real
        declare U : dynamic array(range) of real
        declare N : array(I, J) of real
        declare Q : dynamic array(integer, J) of real
        declare F : dynamic array(range, range) of real
        declare G : dynamic array(integer) of real
        declare H : dynamic array(integer) of real
        declare GH : list of array = [G, H]
        read "$D:t.$E" { L from "[A1:L30]", S from "[B2:K29]", M from "[A1:L30]" }
        read "$D:t.$E" { L from "[A:L]" }
        read "$D:t.$E" { S from "[A1:L30](#3,#1,#12)" }
        read "$D:emptyndx;t.$E" { A from "[A1:C30]" }
        read "$D:emptyndx;t.$E" { A from "[D1:L30](#9,#1,#4)" }
        read "$D:autondx=1;t.$E" { U from "[B1:B30]" }
        read "$D:noindex;t.$E" { N from "[C1:G9]" }
        read "$D:partndx;emptyndx;t.$E" { Q from "[A1:F30]" }
        read "$D:dataframe;t.$E" { F from "[A1:L30]" }
        read "$D:emptyndx;t.$E" { GH from "[A1:C30]" }
        print L
        print M
        print S
        print A
        print U
        print N
        print Q
        print F
        print G
        print H)s";
    for (unsigned seed = 0; seed < 12; ++seed) {
        makeFiles(scattered(seed));
        EXPECT_EQ(run(script), csv.run(script)) << seed;
    }
}
