#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>

#include "knowncharacters.h"
#include "printers.h"
#include "sign.h"
#include "vel/core/nocasecompare.h"
#include "vel/core/string.h"

namespace {

using testsupport::sign;
using vel::compareNoCase;
using vel::foldCase;

TEST(CaseFolding, RowsOfTheHeader)
{
    EXPECT_EQ(foldCase(L'A'), L'a');
    EXPECT_EQ(foldCase(L'\u0130'), L'\u0130');
    EXPECT_EQ(foldCase(L'\u1E9E'), L'\u00DF');
    EXPECT_EQ(foldCase(L'\u03C2'), L'\u03C3');
}

// Letters that are older than their folding, which came with Unicode 15.1: they look like what they are folded to.
bool isFoldedSince151(UChar32 c)
{
    return c == 0x1FD3 || c == 0x1FE3 || c == 0xFB05;
}

TEST(CaseFolding, EveryCodePointFoldsAsUnicodeSays)
{
    UVersionInfo version{};
    u_getUnicodeVersion(version);
    const bool isBefore151 = version[0] * 10 + version[1] < 151;
    for (UChar32 each = 0; each <= 0x10FFFF; ++each) {
        const UChar32 expected = u_foldCase(each, U_FOLD_CASE_DEFAULT);
        const UChar32 ours = static_cast<UChar32>(foldCase(static_cast<wchar_t>(each)));
        if (!isBefore151 || !isFoldedSince151(each)) {
            ASSERT_TRUE(testsupport::isSameCase(each, ours, expected))
                << std::hex << each << ": " << ours << ", not " << expected;
        }
    }
}

TEST(CaseFolding, LettersOfThisYearAreFolded)
{
    EXPECT_EQ(foldCase(L'\u1FD3'), L'\u0390');
    EXPECT_EQ(foldCase(L'\u1FE3'), L'\u03B0');
    EXPECT_EQ(foldCase(L'\uFB05'), L'\uFB06');
    EXPECT_EQ(foldCase(L'\u1C89'), L'\u1C8A');          // Cyrillic letter tje, Unicode 16
    EXPECT_EQ(foldCase(L'\U00016EA0'), L'\U00016EBB');  // Beria Erfe, Unicode 17
}

TEST(CaseFolding, WhatIsNoCodePointStays)
{
    for (const int each : {-1, -2, -97, INT_MIN, INT_MIN + 65, 0x110000, 0x110041, INT_MAX}) {
        EXPECT_EQ(foldCase(static_cast<wchar_t>(each)), static_cast<wchar_t>(each)) << each;
    }
}

TEST(CaseFolding, WhiteSpaceIsUnicodesProperty)
{
    for (UChar32 each = 0; each <= 0x10FFFF; ++each) {
        ASSERT_EQ(vel::isWhiteSpace(static_cast<wchar_t>(each)), u_isUWhiteSpace(each) != 0) << std::hex << each;
    }
    EXPECT_FALSE(vel::isWhiteSpace(static_cast<wchar_t>(-1)));
    EXPECT_FALSE(vel::isWhiteSpace(static_cast<wchar_t>(0x110020)));
}

TEST(CompareNoCase, RowsOfTheHeader)
{
    EXPECT_EQ(compareNoCase(L"en-US", L"EN-us"), 0);
    EXPECT_LT(compareNoCase(L"a", L"B"), 0);
    EXPECT_LT(compareNoCase(L"en", L"en-us"), 0);
}

TEST(CompareNoCase, OrdersByFoldedCharacterThenByLength)
{
    EXPECT_EQ(compareNoCase(L"", L""), 0);
    EXPECT_LT(compareNoCase(L"", L"a"), 0);
    EXPECT_GT(compareNoCase(L"a", L""), 0);
    EXPECT_GT(compareNoCase(L"b", L"A"), 0);
    EXPECT_LT(compareNoCase(L"_", L"A"), 0);  // U+005F before U+0061, though after U+0041
    EXPECT_GT(compareNoCase(L"\u00C4", L"z"), 0);
    EXPECT_EQ(compareNoCase(L"\u00C4\u03A3", L"\u00E4\u03C2"), 0);
    EXPECT_NE(compareNoCase(L"\u00DF", L"ss"), 0);  // simple folding: one character to one
    EXPECT_NE(compareNoCase(L"\u0130", L"i"), 0);
    EXPECT_NE(compareNoCase(std::wstring_view(L"a\0b", 3), std::wstring_view(L"a\0c", 3)), 0);
}

TEST(CompareNoCase, IsAnOrdering)
{
    const std::wstring_view texts[] = {L"",   L"a",      L"A",      L"b",          L"ab",         L"AB",    L"aB\u00E9",
                                       L"_",  L"[",      L"\u00C9", L"\u00E9",     L"\u212A",     L"k",     L"K",
                                       L"zz", L"\u1E9E", L"\u00DF", L"\U00010400", L"\U00010428", L"\uFFFD"};
    for (const std::wstring_view a : texts) {
        for (const std::wstring_view b : texts) {
            EXPECT_EQ(sign(compareNoCase(a, b)), -sign(compareNoCase(b, a)));
            for (const std::wstring_view c : texts) {
                if (compareNoCase(a, b) <= 0 && compareNoCase(b, c) <= 0) {
                    EXPECT_LE(compareNoCase(a, c), 0);
                }
            }
        }
    }
}

TEST(CompareNoCase, MapsAreSearchedByViewAndKeepTheFirstSpelling)
{
    std::map<vel::String, int, vel::NoCaseCompareLess> map;
    map.insert_or_assign(L"fr-FR", 1);
    map.insert_or_assign(L"FR-fr", 2);
    map.insert_or_assign(L"de", 3);
    ASSERT_EQ(map.size(), 2U);
    const auto found = map.find(std::wstring_view(L"Fr-Fr"));
    ASSERT_NE(found, map.end());
    EXPECT_EQ(found->first, L"fr-FR");
    EXPECT_EQ(found->second, 2);
    EXPECT_EQ(map.find(std::wstring_view(L"fr")), map.end());
}

}  // namespace
