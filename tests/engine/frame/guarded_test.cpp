#include "engine/failure/guarded.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "engine/api/enums.h"
#include "engine/base/book_base.h"
#include "engine/base/sheet_base.h"
#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

TEST(Guarded, TheTextOfTheFaultBecomesTheLastError) {
    LastError last;
    EXPECT_STREQ(last.text(), "ok");
    EXPECT_EQ(guarded(last, -1, []() -> int { throw vlerror("index is out of range"); }), -1);
    EXPECT_STREQ(last.text(), "index is out of range");
    EXPECT_EQ(guarded(last, -1, []() -> int { throw std::length_error("too long"); }), -1);
    EXPECT_STREQ(last.text(), "too long");
    EXPECT_EQ(guarded(last, -1, []() -> int { throw 7; }), -1);
    EXPECT_STREQ(last.text(), "general failure");
    EXPECT_EQ(guarded(last, -1, [] { return 3; }), 3);
    EXPECT_STREQ(last.text(), "ok");
    EXPECT_TRUE(guarded(last, false, [&] { return last.set("warning: cut"), true; }));
    EXPECT_STREQ(last.text(), "warning: cut");
}

TEST(Guarded, AFaultIsPutRightBeforeItIsTold) {
    LastError last;
    bool cleared = false;
    const auto load = [&](bool bad) {
        return guarded(
            last, false, [&] { return bad ? throw vlerror("bad file") : true; }, [&] { last.clear(), cleared = true; });
    };
    EXPECT_TRUE(load(false));
    EXPECT_FALSE(cleared);
    EXPECT_FALSE(load(true));
    EXPECT_TRUE(cleared);
    EXPECT_STREQ(last.text(), "bad file");
}

template <class CharT>
struct EmptyBook final : BookBaseT<CharT> {
    void release() override {}
};

template <class CharT>
struct EmptySheet final : SheetBaseT<CharT> {
    explicit EmptySheet(LastError& last) : _last(last) {}
    LastError& lastError() noexcept override { return _last; }
    LastError& _last;
};

template <class CharT>
class NotBuilt : public testing::Test {};
using CharTypes = testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(NotBuilt, CharTypes);

TYPED_TEST(NotBuilt, OperationsFailWithTheInterfacesValueAndTheText) {
    EmptyBook<TypeParam> book;
    const std::string text = "function is not available yet";
    const TypeParam name[] = {'n', 0};
    EXPECT_EQ(book.engineVersion(), 0x4000301);
    EXPECT_STREQ(book.errorMessage(), "ok");
    EXPECT_FALSE(book.loadFile(name, nullptr));
    EXPECT_EQ(book.errorMessage(), text);
    EXPECT_TRUE(book.setLocale("C"));
    EXPECT_STREQ(book.errorMessage(), "ok");
    EXPECT_EQ(book.packColor(1, 2, 3), 32767);
    EXPECT_EQ(book.pictureAt(0, nullptr, nullptr), 255);
    EXPECT_EQ(book.errorMessage(), text);

    EmptySheet<TypeParam> sheet(book.lastError());
    book.setLocale("C");
    EXPECT_EQ(sheet.columnWidth(0), -1.0);
    EXPECT_EQ(sheet.readError(0, 0, nullptr), 255);
    EXPECT_EQ(sheet.mergeTotal(), -1);
    EXPECT_EQ(book.errorMessage(), text);
}

}  // namespace
}  // namespace vellum
