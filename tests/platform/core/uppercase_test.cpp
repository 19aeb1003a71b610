#include "vel/core/uppercase.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include <climits>

#include "printers.h"

namespace {

using vel::toUpperCase;

TEST(UpperCase, RowsOfTheHeader)
{
    EXPECT_EQ(toUpperCase(L'a'), L'A');
    EXPECT_EQ(toUpperCase(L'\u00E9'), L'\u00C9');
    EXPECT_EQ(toUpperCase(L'\u00DF'), L'\u00DF');
    EXPECT_EQ(toUpperCase(L'\u0131'), L'I');
    EXPECT_EQ(toUpperCase(L"us"), L"US");
    EXPECT_EQ(toUpperCase(L"hant-tw"), L"HANT-TW");
    EXPECT_EQ(toUpperCase(L""), L"");
}

TEST(UpperCase, EveryCodePointIsMappedAsUnicodeSays)
{
    for (UChar32 each = 0; each <= 0x10FFFF; ++each) {
        ASSERT_EQ(static_cast<UChar32>(toUpperCase(static_cast<wchar_t>(each))), u_toupper(each)) << std::hex << each;
    }
}

TEST(UpperCase, WhatIsNoCodePointStays)
{
    for (const int each : {-1, -2, -97, INT_MIN, INT_MIN + 97, 0x110000, 0x110061, INT_MAX}) {
        EXPECT_EQ(toUpperCase(static_cast<wchar_t>(each)), static_cast<wchar_t>(each)) << each;
    }
}

}  // namespace
