#include "vel/core/utf8.h"

#include <gtest/gtest.h>

#include <climits>

#include "utf8reference.h"

namespace {

constexpr std::size_t kGood = std::string_view::npos;

struct Row
{
    std::string_view m_sBytes;
    std::size_t m_nFault;
    std::wstring_view m_sBefore;  ///< what is decoded, up to the fault
};

const Row kRows[] = {
    {"", kGood, L""},
    {"a", kGood, L"a"},
    {"\xC3\xA9", kGood, L"\u00E9"},
    {"a\xC3", 1, L"a"},
    {"ab\xC0\xAF", 2, L"ab"},
    {"\xED\xA0\x80", 0, L""},
    {"\xF4\x90\x80\x80", 0, L""},
    {"\xF4\x8F\xBF\xBF", kGood, L"\U0010FFFF"},
    {"\xEF\xBB\xBFx", kGood, L"\uFEFFx"},  // a byte-order mark is a character here
    {"\xEF\xBF\xBE", kGood, L"\uFFFE"},    // so is a noncharacter
    {"\x80", 0, L""},
    {"abcdefgh\xBF", 8, L"abcdefgh"},
    {"\xE2\x82", 0, L""},
    {"\xE2\x82\xAC\xE2\x82", 3, L"\u20AC"},
    {"\xF0\x9F\x98", 0, L""},
    {"\xE2\x28\xA1", 0, L""},
    {"\xE0\x80\x80", 0, L""},
    {"\xF0\x80\x80\x80", 0, L""},
    {"\xF8\x88\x80\x80\x80", 0, L""},
    {"\xFE", 0, L""},
    {"\xFF", 0, L""},
    {{"a\0b", 3}, kGood, {L"a\0b", 3}},
};

TEST(Utf8, RowsOfTheHeaderAndTheirLike)
{
    for (const Row& row : kRows) {
        std::wstring out = L"> ";
        const std::optional<std::size_t> fault = vel::appendUtf8AsWide(row.m_sBytes, out);
        EXPECT_EQ(fault.value_or(kGood), row.m_nFault) << testing::PrintToString(row.m_sBytes);
        EXPECT_TRUE(out == L"> " + std::wstring(row.m_sBefore)) << testing::PrintToString(row.m_sBytes);
    }
}

TEST(Utf8, DecodingTellsHowMuchItWrote)
{
    wchar_t out[8] = {};
    std::size_t fault = 0;
    EXPECT_EQ(vel::decodeUtf8("a\xC3\xA9z", out, &fault), 3U);
    EXPECT_EQ(fault, kGood);
    EXPECT_EQ(out[1], L'\u00E9');
    EXPECT_EQ(vel::decodeUtf8("ab\xFFxyz", out, &fault), 2U);
    EXPECT_EQ(fault, 2U);
    EXPECT_EQ(vel::decodeUtf8("", out, &fault), 0U);
    EXPECT_EQ(fault, kGood);
}

// The fast path takes eight bytes at a time: every sequence at every place relative to it, whole and cut at every
// length.
TEST(Utf8, EveryAlignmentAndEveryTruncation)
{
    for (std::size_t before = 0; before <= 17; ++before) {
        for (const std::uint32_t value : {0x41U, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xFFFFU, 0x10000U, 0x10FFFFU}) {
            for (std::size_t after = 0; after <= 9; ++after) {
                const std::string sequence = utf8reference::encode(value);
                const std::string text = std::string(before, 'x') + sequence + std::string(after, 'y');
                for (std::size_t length = 0; length <= text.size(); ++length) {
                    std::wstring expected;
                    std::wstring actual;
                    const std::string_view cut = std::string_view(text).substr(0, length);
                    const std::size_t fault = utf8reference::decode(cut, expected);
                    ASSERT_EQ(vel::appendUtf8AsWide(cut, actual).value_or(kGood), fault) << before << " " << length;
                    ASSERT_TRUE(actual == expected);
                }
            }
        }
    }
}

TEST(WideToUtf8, EveryScalarValueMakesTheRoundTrip)
{
    std::wstring all;
    std::string expected;
    for (std::uint32_t value = 0; value <= 0x10FFFF; ++value) {
        if (value >= 0xD800 && value <= 0xDFFF) {
            continue;
        }
        all.push_back(static_cast<wchar_t>(value));
        expected += utf8reference::encode(value);
    }
    std::string encoded;
    EXPECT_FALSE(vel::appendWideAsUtf8(all, encoded).has_value());
    EXPECT_TRUE(encoded == expected);
    std::wstring back;
    EXPECT_FALSE(vel::appendUtf8AsWide(encoded, back).has_value());
    EXPECT_TRUE(back == all);
    EXPECT_TRUE(vel::toUtf8Lossy(all) == expected);
}

TEST(WideToUtf8, WhatIsNoScalarValueIsFoundAndWhatCameBeforeStays)
{
    for (const int bad : {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000, INT_MAX, -1, INT_MIN}) {
        const std::wstring text = std::wstring(L"a\u00E9") + static_cast<wchar_t>(bad) + L"z";
        std::string out = "> ";
        EXPECT_EQ(vel::appendWideAsUtf8(text, out), std::optional<std::size_t>(2)) << bad;
        EXPECT_EQ(out, "> a\xC3\xA9");
        EXPECT_EQ(vel::toUtf8Lossy(text), "a\xC3\xA9\xEF\xBF\xBDz") << bad;
    }
}

}  // namespace
