#include "xlsx/styles/colors.h"

#include <gtest/gtest.h>

#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(Colors, Palette) {
    EXPECT_EQ(paletteColor(0), (Rgb{0, 0, 0}));
    EXPECT_EQ(paletteColor(2), (Rgb{255, 0, 0}));
    EXPECT_EQ(paletteColor(2), paletteColor(10));
    EXPECT_EQ(paletteColor(63), (Rgb{51, 51, 51}));
    EXPECT_EQ(paletteColor(64), std::nullopt);
    EXPECT_EQ(paletteColor(0xffffffff), std::nullopt);
    // The lowest index of each colour, whichever repeats it.
    for (unsigned i = 8; i < 64; ++i) {
        unsigned lowest = 8;
        while (paletteColor(lowest) != paletteColor(i)) ++lowest;
        EXPECT_EQ(paletteIndexOf(*paletteColor(i)), static_cast<int>(lowest));
    }
    EXPECT_EQ(paletteIndexOf({0x12, 0x34, 0x56}), -1);
}

TEST(Colors, Bytes) {
    const struct {
        Bytes bytes;
        bool rgb;
        int color;
    } rows[] = {{{255, 255, 0, 0}, false, 10},    {{255, 0, 0}, false, 10},       {{0, 255, 0, 0}, false, -1},
                {{0, 255, 0, 0}, true, 0xff0000}, {{255, 18, 52, 86}, false, -1}, {{255, 18, 52, 86}, true, 0x123456}};
    for (const auto& row : rows) EXPECT_EQ(readRgbBytes(row.bytes, row.rgb), row.color);
    EXPECT_THROW(readRgbBytes({1, 2}, true), vlerror);
    EXPECT_THROW(readRgbBytes({}, false), vlerror);
}

TEST(Colors, Tint) {
    const struct {
        Rgb from;
        double tint;
        Rgb to;
    } rows[] = {{{0, 0, 0}, 0.5, {127, 127, 127}}, {{255, 255, 255}, -0.5, {127, 127, 127}},
                {{1, 2, 3}, 0, {1, 2, 3}},         {{255, 0, 0}, -0.5, {127, 0, 0}},
                {{0, 0, 255}, 1, {255, 255, 255}}, {{9, 99, 199}, -1, {0, 0, 0}}};
    for (const auto& row : rows) {
        const Rgb got = tinted(row.from, row.tint);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(got[i], row.to[i], 1) << row.tint;
    }
}

}  // namespace
}  // namespace vellum
