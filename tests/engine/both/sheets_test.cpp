#include "tests/engine/both/engines.h"

namespace vellum {
namespace {

using Sheets = EachEngine;
INSTANTIATE_FOR_EACH_ENGINE(Sheets);

TEST_P(Sheets, NamesThatAreRefused) {
    const std::string text31(31, 'a');
    const struct {
        const char* name;
        const char* message;
    } cases[] = {
        {"Sheet1", "ok"},
        {"SHEET1", "book already contains such sheet name"},
        {nullptr, "sheet name can't be 0"},
        {"", "sheet name can't be empty"},
        {"'quoted", "sheet name has an invalid character"},
        {"quoted'", "sheet name has an invalid character"},
        {"it's", "ok"},
        {"a*b", "sheet name has an invalid character"},
        {"a/b", "sheet name has an invalid character"},
        {"a:b", "sheet name has an invalid character"},
        {"a?b", "sheet name has an invalid character"},
        {"a[b", "sheet name has an invalid character"},
        {"a]b", "sheet name has an invalid character"},
        {"a\\b", "sheet name has an invalid character"},
        {"\xC3\x84rger", "ok"},
        {"01234567890123456789012345678901", "warning: sheet's name is cut to 31 characters"},
    };
    int count = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name ? c.name : "null");
        const bool fits = std::string(c.message) == "ok" || std::string(c.message).starts_with("warning");
        EXPECT_EQ(book->addSheet(c.name) != nullptr, fits);
        EXPECT_EQ(error(), c.message);
        count += fits;
    }
    EXPECT_EQ(book->sheetCount(), count);
    EXPECT_STREQ(book->sheetNameAt(count - 1), "0123456789012345678901234567890");
    const auto loaded = reloaded();
    for (int i = 0; i < count; ++i) {
        EXPECT_STREQ(loaded->sheetNameAt(i), book->sheetNameAt(i));
        EXPECT_EQ(loaded->sheetKindAt(i), sheetWorksheet);
    }
}

class Order : public EachEngine {
protected:
    std::string names(IBookT<char>& of) {
        std::string all;
        for (int i = 0; i < of.sheetCount(); ++i) all += of.sheetNameAt(i);
        return all;
    }
};
INSTANTIATE_FOR_EACH_ENGINE(Order);

TEST_P(Order, InsertMoveAndRemove) {
    for (const char* name : {"A", "B", "C"}) book->addSheet(name);
    book->getSheet(1)->writeNumber(0, 0, 2);
    EXPECT_NE(book->insertSheet(0, "D"), nullptr);
    EXPECT_EQ(names(*book), "DABC");
    EXPECT_EQ(book->insertSheet(5, "E"), nullptr);
    EXPECT_EQ(error(), "index is out of range");

    const struct {
        int src, dst;
        const char* message;
        const char* names;
    } moves[] = {
        {-1, 0, "srcIndex is out of range", "DABC"},
        {4, 0, "srcIndex is out of range", "DABC"},
        {0, 5, "dstIndex is out of range", "DABC"},
        {1, 1, "there is no sense: srcIndex is equal to dstIndex", "DABC"},
        {1, 2, "there is no sense: srcIndex is equal to dstIndex - 1", "DABC"},
        {0, 4, "ok", "ABCD"},
        {2, 0, "ok", "CABD"},
        {0, 2, "ok", "ACBD"},
    };
    for (const auto& m : moves) {
        SCOPED_TRACE(std::to_string(m.src) + " to " + std::to_string(m.dst));
        EXPECT_EQ(book->moveSheet(m.src, m.dst), std::string(m.message) == "ok");
        EXPECT_EQ(error(), m.message);
        EXPECT_EQ(names(*book), m.names);
    }
    EXPECT_TRUE(book->removeSheet(0));
    EXPECT_EQ(names(*book), "CBD");
    EXPECT_EQ(names(*reloaded()), "CBD");
    EXPECT_EQ(reloaded()->getSheet(1)->readNumber(0, 0), 2);
    EXPECT_FALSE(book->removeSheet(3));
    EXPECT_EQ(error(), "index is out of range");
    EXPECT_TRUE(book->removeSheet(0));
    EXPECT_TRUE(book->removeSheet(0));
    EXPECT_FALSE(book->removeSheet(0));
    EXPECT_EQ(error(), "can't remove the last sheet in workbook");
}

TEST_P(Order, ACopyHasTheCellsOfItsSource) {
    auto* source = book->addSheet("A");
    source->writeString(2, 1, "text");
    source->writeNumber(3, 2, 0.1);
    auto* copy = book->addSheet("B", source);
    ASSERT_NE(copy, nullptr) << error();
    source->writeString(2, 1, "changed");
    EXPECT_STREQ(copy->readString(2, 1), "text");
    const auto loaded = reloaded();
    EXPECT_STREQ(loaded->getSheet(0)->readString(2, 1), "changed");
    EXPECT_STREQ(loaded->getSheet(1)->readString(2, 1), "text");
    EXPECT_EQ(loaded->getSheet(1)->readNumber(3, 2), 0.1);
}

TEST_P(Order, TheActiveSheetIsWithinTheCount) {
    for (const char* name : {"A", "B", "C"}) book->addSheet(name);
    EXPECT_TRUE(book->setActiveSheetIndex(2));
    EXPECT_EQ(reloaded()->activeSheetIndex(), 2);
    EXPECT_FALSE(book->setActiveSheetIndex(3));
    EXPECT_EQ(error(), "index is out of range");
    EXPECT_TRUE(book->removeSheet(2));
    EXPECT_EQ(book->activeSheetIndex(), 1);
}

}  // namespace
}  // namespace vellum
