#include "engine/text/string_pool.h"

#include <gtest/gtest.h>

#include <vector>

#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

TEST(StringPool, BlocksAreFilledAndNeverShared) {
    StringPool pool;
    EXPECT_EQ(pool.allocate(0), nullptr);
    EXPECT_EQ(pool.allocateBytes(0), nullptr);
    wchar_t* const first = pool.allocate(3);
    EXPECT_EQ(pool.allocate(StringPool::blockChars - 3), first + 3);  // to the last place
    wchar_t* const next = pool.allocate(1);
    *first = L'a';
    *next = L'b';
    EXPECT_EQ(*first, L'a');
    EXPECT_EQ(pool.allocateBytes(1), reinterpret_cast<std::byte*>(next + 1));
    EXPECT_EQ(pool.allocateBytes(5), reinterpret_cast<std::byte*>(next + 2));
    EXPECT_EQ(pool.allocate(1), next + 4);
}

TEST(StringPool, RefusesMoreThanABlock) {
    StringPool pool;
    const auto text = [](auto&& action) {
        try {
            action();
        } catch (const vlerror& e) {
            return std::string(e.what());
        }
        return std::string();
    };
    EXPECT_EQ(text([&] { pool.allocate(10'000'001); }), "Error allocating, not enough memory.");
    EXPECT_EQ(text([&] { pool.allocateBytes(40'000'001); }), "Error allocating, not enough memory.");
    EXPECT_EQ(text([&] { pool.allocateBytes(SIZE_MAX); }), "Error allocating, not enough memory.");
    EXPECT_NE(pool.allocate(10'000'000), nullptr);
    EXPECT_NE(pool.allocateBytes(40'000'000), nullptr);
}

TEST(StringPool, KeptObjectsGoWithIt) {
    struct Witness {
        std::vector<int>& gone;
        int number;
        ~Witness() { gone.push_back(number); }
    };
    std::vector<int> gone;
    StringPool pool;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(pool.keep(std::unique_ptr<Witness>(new Witness{gone, i}))->number, i);
    EXPECT_TRUE(gone.empty());
    pool.clear();
    EXPECT_EQ(gone, (std::vector<int>{2, 1, 0}));
    EXPECT_STREQ(pool.copy(L"after"), L"after");
}

}  // namespace
}  // namespace vellum
