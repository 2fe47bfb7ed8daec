// Names after rows came and went.
#include "biff/names/moved_names.h"

#include "tests/biff/names/fixture.h"

namespace vellum::test {
namespace {

/// Names over sheet 0 of a book of two.
biff::DefinedNames namesOf(const std::vector<std::string>& expressions) {
    static constexpr wchar_t text[] = L"N";
    biff::DefinedNames names;
    names.links.indexOf({0, 0});
    names.links.indexOf({1, 1});
    names.links.indexOf({0, 1});
    for (const std::string& tokens : expressions) names.add(Lbl::make(0, Lbl::wholeBook, {text, 1}, hex(tokens)));
    return names;
}

TEST(MovedNames, RowsOfAreasAndCells) {
    const struct {
        const char* what;
        std::string tokens;
        int firstRow, count;
        const char* moved;
    } cases[] = {
        {"below", "3B 0000 0500 0600 0100 0200", 5, 2, "3B00000700080001000200"},
        {"above", "3B 0000 0300 0400 0100 0200", 5, 2, "3B00000300040001000200"},
        {"across", "3B 0000 0300 0500 00C0 0240", 5, 2,
         "3B000003000700"
         "00C00240"},
        {"up", "3B 0000 0500 0900 0100 0200", 4, -2, "3B00000300070001000200"},
        {"no further than the first row", "3B 0000 0100 0200 0100 0200", 0, -5, "3B00000000000001000200"},
        {"no further than the last row", "3B 0000 FEFF FFFF 0100 0200", 9, 5, "3B0000FFFFFFFF01000200"},
        {"whole columns", "3B 0000 0000 FFFF 0100 0200", 0, 5, "3B00000000FFFF01000200"},
        {"a cell", "5A 0000 0500 0100", 5, 2, "5A000007000100"},
        {"a cell that leaves", "3A 0000 FFFF 0100", 5, 1, "gone"},
        {"another sheet", "3B 0100 0500 0600 0100 0200", 0, 2, "3B01000500060001000200"},
        {"several sheets", "3B 0200 0500 0600 0100 0200", 0, 2, "3B02000500060001000200"},
        {"a formula", "3A 0000 0500 0100 15", 0, 2, "3A00000500010015"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        auto names = namesOf({c.tokens});
        biff::moveNames(names, 0, c.firstRow, c.count);
        EXPECT_EQ(names.at(0).isGone() ? "gone" : hexOf(names.at(0).tokens()), c.moved);
    }
}

}  // namespace
}  // namespace vellum::test
