#include "engine/facts/r1c1.h"

#include <gtest/gtest.h>

#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

TEST(R1C1, SingleCellsOfATextAreTold) {
    const struct {
        const wchar_t *a1, *r1c1;
    } cases[] = {
        {L"B2", L"RC"},
        {L"$B$2", L"R2C2"},
        {L"A1+$C1", L"R[-1]C[-1]+R[-1]C3"},
        {L"SUM(B3,A1:B2)", L"SUM(R[1]C,A1:B2)"},
        {L"LOG10(B1)", L"LOG10(R[-1]C)"},
        {L"Sheet1!A1&'B2'!A1", L"Sheet1!A1&'B2'!A1"},
        {L"\"B2\"&B2", L"\"B2\"&RC"},
        {L"XFD1048576", L"R[1048574]C[16382]"},
        {L"1.5E2+Rate", L"1.5E2+Rate"},
        {L"$ABCD1+Rate2", L"$ABCD1+Rate2"},
        {L"A123456789", L"A123456789"},
    };
    for (const auto& c : cases) EXPECT_EQ(a1ToR1C1(c.a1, 1, 1), c.r1c1) << a1ToR1C1(c.a1, 1, 1).size();
}

struct Back {
    const wchar_t *r1c1, *a1;
};

TEST(R1C1, CellsBecomeA1AndAllElseStays) {
    const Back cases[] = {
        {L"RC", L"B2"},
        {L"rc[1]", L"C2"},
        {L"R2C2", L"$B$2"},
        {L"R[-1]C3", L"$C1"},
        {L"= R1C1 : R[1]C", L"=$A$1:B3"},
        {L"SUM(R1C1;1.5)", L"SUM($A$1;1.5)"},
        {L"Sheet1!RC&'RC x'!R1C1", L"Sheet1!B2&'RC x'!$A$1"},
        {L"\"R C\"&\"don't RC\"", L"\"R C\"&\"don't RC\""},
        {L"RCX+SRC+RC_1+R+C", L"RCX+SRC+RC_1+R+C"},
        {L"RC!A1+RC(1)", L"RC!A1+RC(1)"},
        {L"R[1C1+R[]C", L"R[1C1+R[]C"},
        {L"R1C16384", L"$XFD$1"},
    };
    for (const auto& c : cases) {
        std::wstring text = c.r1c1;
        r1c1ToA1(text, 1, 1, true);
        EXPECT_EQ(text, c.a1);
    }
}

TEST(R1C1, WhatLeavesTheSheetComesInAgain) {
    std::wstring text = L"R[-2]C[-3]";
    r1c1ToA1(text, 1, 1, true);
    EXPECT_EQ(text, L"IU65536");
    text = L"R[-2]C[-3]";
    r1c1ToA1(text, 1, 1, false);
    EXPECT_EQ(text, L"XFC1048576");
}

TEST(R1C1, PlacesOutsideOfTheSheet) {
    const struct {
        const wchar_t* text;
        const char* failure;
    } cases[] = {
        {L"R1048577C1", "row must be in range 0-1048575"},
        {L"R0C1", "row must be in range 0-1048575"},
        {L"R[1048575]C", "row must be in range 0-1048575"},
        {L"R99999999999999999999C1", "row must be in range 0-1048575"},
        {L"R1C16385", "col must be in range 0-16383"},
        {L"RC[-99999]", "col must be in range 0-16383"},
    };
    for (const auto& c : cases) {
        std::wstring text = c.text;
        try {
            r1c1ToA1(text, 1, 1, false);
            ADD_FAILURE() << c.failure;
        } catch (const vlerror& e) {
            EXPECT_STREQ(e.what(), c.failure);
        }
    }
}

}  // namespace
}  // namespace vellum
