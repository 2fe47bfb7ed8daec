#include "formula/expand_shared.h"

#include "tests/formula/fixture.h"

namespace vellum::test {
namespace {

using formula::Generation;

// By themselves the tokens read as the shared ones did through the cell.
TEST(ExpandShared, ReadsTheSame) {
    const struct {
        const char *shared, *own;
        Generation generation;
    } cases[] = {
        {"4C FF FF FF C0 6C 01 00 02 40 03", "44 08 00 02 C0 64 01 00 05 40 03", Generation::biff8},
        {"2D 00 00 FE FF 01 80 FF C0", "25 09 00 07 00 01 80 02 C0", Generation::biff8},
        {"4C F7 FF 00 80", "44 00 00 00 80", Generation::biff8},
        {"24 05 00 05 00 1E 07 00 03", "24 05 00 05 00 1E 07 00 03", Generation::biff8},
        {"5A 00 00 01 00 01 C0", "5A 00 00 01 00 01 C0", Generation::biff8},
        {"2C FF FF FF", "24 08 C0 02", Generation::biff5},
        {"2D 00 C0 02 00 FE 03", "25 09 C0 02 00 01 03", Generation::biff5},
    };
    FakeBook book;
    book.spans = {{SheetSpan::Where::ownBook, 0, 0}};
    for (const auto& c : cases) {
        const formula::LocationBase base{.row = 9, .col = 3};
        const auto own = formula::expandShared(hex(c.shared), base, c.generation);
        ASSERT_TRUE(own.has_value()) << c.shared;
        EXPECT_EQ(hexOf(*own), c.own);
        EXPECT_EQ(textOf(hexOf(*own), book, c.generation), textOf(c.shared, book, c.generation, base)) << c.shared;
    }
    EXPECT_FALSE(formula::expandShared(hex("4C FF FF FF"), {}, Generation::biff8).has_value());
}

}  // namespace
}  // namespace vellum::test
