#include "vel/core/uppercase.h"

#include <gtest/gtest.h>

#include <climits>

#include "knowncharacters.h"
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
        const UChar32 ours = static_cast<UChar32>(toUpperCase(static_cast<wchar_t>(each)));
        ASSERT_TRUE(testsupport::isSameCase(each, ours, u_toupper(each)))
            << std::hex << each << ": " << ours << ", not " << u_toupper(each);
    }
}

// Old small letters, and small letters of their own, whose capitals came with Unicode 16 and 17: the same with every
// ICU.
TEST(UpperCase, CapitalsOfThisYearAreKnown)
{
    EXPECT_EQ(toUpperCase(L'\u0264'), L'\uA7CB');          // Latin letter rams horn, Unicode 16
    EXPECT_EQ(toUpperCase(L'\u019B'), L'\uA7DC');          // Latin letter lambda with stroke, Unicode 16
    EXPECT_EQ(toUpperCase(L'\U00010D70'), L'\U00010D50');  // Garay, Unicode 16
    EXPECT_EQ(toUpperCase(L'\U00016EBB'), L'\U00016EA0');  // Beria Erfe, Unicode 17
}

TEST(UpperCase, WhatIsNoCodePointStays)
{
    for (const int each : {-1, -2, -97, INT_MIN, INT_MIN + 97, 0x110000, 0x110061, INT_MAX}) {
        EXPECT_EQ(toUpperCase(static_cast<wchar_t>(each)), static_cast<wchar_t>(each)) << each;
    }
}

}  // namespace
