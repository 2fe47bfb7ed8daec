#include "engine/failure/guarded.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

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

}  // namespace
}  // namespace vellum
