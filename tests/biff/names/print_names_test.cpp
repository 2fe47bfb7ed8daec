#include "tests/biff/names/fixture.h"

namespace vellum::test {
namespace {

struct Printing {
    std::string area, rows, columns;

    bool operator==(const Printing&) const = default;
};

void PrintTo(const Printing& p, std::ostream* out) {
    *out << p.area << ", rows " << p.rows << ", columns " << p.columns;
}

/// "-" where the engine says "not found".
Printing printing(IBookT<char>& book, int sheet) {
    auto* const s = book.getSheet(sheet);
    int v[4]{};
    const auto text = [&](bool found, int values) {
        EXPECT_STREQ(book.errorMessage(), found ? "ok" : "not found");
        std::string all;
        for (int i = 0; found && i < values; ++i) all.append(i > 0 ? 1 : 0, ' ').append(std::to_string(v[i]));
        return found ? all : "-";
    };
    Printing p;
    p.area = text(s->printAreaRange(&v[0], &v[1], &v[2], &v[3]), 4);
    p.rows = text(s->repeatRows(&v[0], &v[1]), 2);
    p.columns = text(s->repeatColumns(&v[0], &v[1]), 2);
    return p;
}

const char* const rowsForm = "3B0100 0200 0400 0000 FF00";
const char* const columnsForm = "3B0100 0000 FFFF 0100 0300";

std::string both(const std::string& first, const std::string& second) {
    return "29 1700" + first + second + "10";
}

TEST(PrintNames, FormsThatAreUnderstood) {
    const struct {
        const char* what;
        Record name;
        Printing found;
    } cases[] = {
        {"an area", lbl("\6", "3B 0100 0100 0200 0300 0400", 2, 0x20), {"1 2 3 4", "-", "-"}},
        {"a cell", lbl("\6", "3A 0100 0100 0300", 2, 0x20), {"1 1 3 3", "-", "-"}},
        {"of another sheet", lbl("\6", "3A 0100 0100 0300", 1, 0x20), {"-", "-", "-"}},
        {"no built-in name", lbl("Print_Area", "3A 0100 0100 0300", 2), {"-", "-", "-"}},
        {"broken", lbl("\6", "3D 0100 0100 0200 0300 0400", 2, 0x20), {"-", "-", "-"}},
        {"an error", lbl("\6", "1C 17", 2, 0x20), {"-", "-", "-"}},
        {"rows", lbl("\7", rowsForm, 2, 0x20), {"-", "2 4", "-"}},
        {"columns", lbl("\7", columnsForm, 2, 0x20), {"-", "-", "1 3"}},
        {"columns first", lbl("\7", both(columnsForm, rowsForm), 2, 0x20), {"-", "2 4", "1 3"}},
        {"rows first", lbl("\7", both(rowsForm, columnsForm), 2, 0x20), {"-", "2 4", "1 3"}},
        {"all columns", lbl("\7", "3B 0100 0000 FFFF 0000 FF00", 2, 0x20), {"-", "-", "0 255"}},
        {"neither", lbl("\7", "3B 0100 0000 0100 0000 0100", 2, 0x20), {"-", "-", "-"}},
        {"no union", lbl("\7", "29 1600" + std::string(rowsForm) + columnsForm + "10", 2, 0x20), {"-", "-", "-"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(printing(*loaded(threeSheets({c.name})), 1), c.found);
    }
}

TEST(PrintNames, SetAndRebuilt) {
    using Sheet = ISheetT<char>;
    const std::string xti =
        "010002000400"
        "0000FF00";
    const struct {
        const char* what;
        std::vector<Record> names;
        std::function<bool(Sheet&)> set;
        const char* last;  // of the saved names
    } cases[] = {
        {"area", {}, [](Sheet& s) { return s.setPrintAreaRange(0, 0, 0, 0); }, "6/32/2/3B01000000000000000000"},
        {"area there",
         {lbl("\6", "3B 0000 0100 0200 0300 0400", 2, 0x20)},
         [](Sheet& s) { return s.setPrintAreaRange(5, 6, 7, 8); },
         "6/32/2/3B01000500060007000800"},
        {"area broken",
         {lbl("\6", "1C 17", 2, 0x21)},
         [](Sheet& s) { return s.setPrintAreaRange(5, 6, 7, 8); },
         "6/33/2/3B01000500060007000800"},
        {"rows", {}, [](Sheet& s) { return s.setRepeatRows(2, 4); }, "7/32/2/3B0100020004000000FF00"},
        {"columns", {}, [](Sheet& s) { return s.setRepeatColumns(0, 255); }, "7/32/2/3B01000000FFFF0000FF00"},
        {"rows, then columns",
         {},
         [](Sheet& s) { return s.setRepeatRows(2, 4) && s.setRepeatColumns(1, 3); },
         "7/32/2/2917003B0100020004000000FF003B01000000FFFF0100030010"},
        {"columns, then rows",
         {lbl("\7", columnsForm, 2, 0x20)},
         [](Sheet& s) { return s.setRepeatRows(2, 4); },
         "7/32/2/2917003B0100020004000000FF003B01000000FFFF0100030010"},
        {"rows of both",
         {lbl("\7", both(columnsForm, rowsForm), 2, 0x20)},
         [](Sheet& s) { return s.setRepeatRows(0, 0); },
         "7/32/2/2917003B0100000000000000FF003B01000000FFFF0100030010"},
        {"cleared",
         {lbl("\7", rowsForm, 2, 0x20)},
         [](Sheet& s) { return s.clearRepeats() && s.clearRepeats(); },
         "_gone1/1/0/1C17"},
        {"cleared and set",
         {lbl("\6", "1C 17", 2, 0x20)},
         [](Sheet& s) { return s.clearPrintAreaRange() && s.setPrintAreaRange(1, 1, 1, 1); },
         "6/32/2/3B01000100010001000100"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Book book = loaded(threeSheets(c.names));
        EXPECT_TRUE(c.set(*book->getSheet(1))) << book->errorMessage();
        EXPECT_STREQ(book->errorMessage(), "ok");
        const auto names = savedNames(*book);
        EXPECT_EQ(names.size(), std::max<std::size_t>(1, c.names.size()));
        EXPECT_EQ(names.back(), c.last);
        EXPECT_EQ(printing(*loaded(saved(*book)), 1), printing(*book, 1));
    }
}

TEST(PrintNames, RefusedValues) {
    const Book book = newBook();
    auto* const s = book->addSheet("S");
    const struct {
        std::function<bool()> set;
        const char* text;
    } cases[] = {
        {[&] { return s->setRepeatRows(-1, 0); }, "firstRow must be in range 0-65535"},
        {[&] { return s->setRepeatRows(0, 65536); }, "lastRow must be in range 0-65535"},
        {[&] { return s->setRepeatRows(2, 1); }, "rowLast must be greater than or equal to rowFirst"},
        {[&] { return s->setRepeatColumns(256, 256); }, "firstCol must be in range 0-255"},
        {[&] { return s->setRepeatColumns(0, -1); }, "lastCol must be in range 0-255"},
        {[&] { return s->setRepeatColumns(2, 1); }, "colLast must be greater than or equal to colFirst"},
        {[&] { return s->setPrintAreaRange(65536, 0, 0, 0); }, "firstRow must be in range 0-65535"},
        {[&] { return s->setPrintAreaRange(0, 65536, 0, 0); }, "lastRow must be in range 0-65535"},
        {[&] { return s->setPrintAreaRange(0, 0, -1, 0); }, "firstCol must be in range 0-255"},
        {[&] { return s->setPrintAreaRange(0, 0, 0, 256); }, "lastCol must be in range 0-255"},
    };
    for (const auto& c : cases) {
        EXPECT_FALSE(c.set());
        EXPECT_STREQ(book->errorMessage(), c.text);
    }
    EXPECT_TRUE(only(recordsOf(saved(*book)), 430).empty()) << "no reference is left behind";
}

}  // namespace
}  // namespace vellum::test
