#include "vel/core/string.h"

#include <gtest/gtest.h>

#include <unordered_set>

#include "printers.h"

namespace {

using vel::NarrowString;
using vel::String;

TEST(String, BuildsFromEveryKindOfText)
{
    EXPECT_TRUE(String().isEmpty());
    EXPECT_TRUE(String(static_cast<const wchar_t*>(nullptr)).isEmpty());
    EXPECT_EQ(String(L"abc"), L"abc");
    EXPECT_EQ(String(L"abc", 2), L"ab");
    EXPECT_EQ(String(L"a\0c", 3).length(), 3U);
    EXPECT_EQ(String(std::wstring_view(L"view")), L"view");
    EXPECT_EQ(String(std::wstring(L"standard")), L"standard");
    EXPECT_EQ(NarrowString("bytes").length(), 5U);
}

TEST(String, GivesItsCharacters)
{
    const String text(L"abc");
    EXPECT_EQ(text.length(), 3U);
    EXPECT_FALSE(text.isEmpty());
    EXPECT_EQ(text[0], L'a');
    EXPECT_EQ(text[2], L'c');
    EXPECT_EQ(text.c_str()[3], L'\0');
    EXPECT_EQ(text.data(), text.c_str());
    EXPECT_EQ(text.view(), std::wstring_view(L"abc"));
    EXPECT_EQ(text.standard(), std::wstring(L"abc"));
    EXPECT_EQ(std::wstring(text.begin(), text.end()), std::wstring(L"abc"));
    const std::wstring_view view = text;
    EXPECT_EQ(view.data(), text.data());
}

TEST(String, Appends)
{
    String text(L"a");
    text.append(L"bc").append(L'd');
    text += L"ef";
    text += L'g';
    EXPECT_EQ(text, L"abcdefg");
    text.append(text.view());
    EXPECT_EQ(text, L"abcdefgabcdefg");
    EXPECT_EQ(String(L"x") + L"y", L"xy");
    text.clear();
    EXPECT_TRUE(text.isEmpty());
}

TEST(String, Swaps)
{
    String a(L"a");
    String b(L"b");
    a.swap(b);
    EXPECT_EQ(a, L"b");
    EXPECT_EQ(b, L"a");
}

TEST(String, Finds)
{
    const String text(L"abcabc");
    EXPECT_EQ(text.find(L"bc"), 1U);
    EXPECT_EQ(text.find(L"bc", 1), 1U);
    EXPECT_EQ(text.find(L"bc", 2), 4U);
    EXPECT_EQ(text.find(L"bc", 5), String::kNotFound);
    EXPECT_EQ(text.find(L"BC"), String::kNotFound);
    EXPECT_EQ(text.find(L'c'), 2U);
    EXPECT_EQ(text.find(L'c', 3), 5U);
    EXPECT_EQ(text.find(L'x'), String::kNotFound);
    EXPECT_EQ(text.find(L'a', 99), String::kNotFound);
    EXPECT_EQ(text.find(L"", 4), 4U);
    EXPECT_TRUE(text.startsWith(L"ab"));
    EXPECT_TRUE(text.startsWith(L""));
    EXPECT_FALSE(text.startsWith(L"bc"));
    EXPECT_FALSE(String(L"a").startsWith(L"ab"));
}

TEST(String, Substring)
{
    const String text(L"abcdef");
    EXPECT_EQ(text.substring(0), L"abcdef");
    EXPECT_EQ(text.substring(2), L"cdef");
    EXPECT_EQ(text.substring(2, 2), L"cd");
    EXPECT_EQ(text.substring(5, 9), L"f");
    EXPECT_EQ(text.substring(2, 0), L"");
    EXPECT_EQ(text.substring(6), L"");
    EXPECT_EQ(text.substring(String::kNotFound), L"");
}

TEST(String, ComparesByCharacterValue)
{
    EXPECT_LT(String(L"A").compare(L"a"), 0);
    EXPECT_GT(String(L"b").compare(L"a"), 0);
    EXPECT_EQ(String(L"a").compare(L"a"), 0);
    EXPECT_LT(String(L"a").compare(L"aa"), 0);
    EXPECT_LT(String(L"\uFFFF").compare(L"\U00010000"), 0);  // code points, not UTF-16 units
    EXPECT_TRUE(String(L"A") < String(L"a"));
    EXPECT_TRUE(String(L"a") < std::wstring_view(L"b"));
    EXPECT_TRUE(String(L"a") == String(L"a"));
    EXPECT_TRUE(String(L"a") != String(L"A"));
    EXPECT_TRUE(String(L"a") == std::wstring_view(L"a"));
    EXPECT_TRUE(L"a" == String(L"a"));
    EXPECT_FALSE(String(L"a\0b", 3) == String(L"a"));
}

TEST(String, ComparesWithoutCase)
{
    EXPECT_EQ(String(L"\u00C9t\u00C9").compareNoCase(L"\u00E9T\u00E9"), 0);
    EXPECT_LT(String(L"a").compareNoCase(L"B"), 0);
    EXPECT_TRUE(String(L"EN-us").equalsNoCase(L"en-US"));
    EXPECT_FALSE(String(L"en").equalsNoCase(L"en-us"));
}

TEST(String, TrimsWhiteSpaceAtBothEnds)
{
    EXPECT_EQ(String(L"  a b\t\n").trimmed(), L"a b");
    EXPECT_EQ(String(L"\u00A0\u3000a\u2028\u0085").trimmed(), L"a");
    EXPECT_EQ(String(L" \t\r\n").trimmed(), L"");
    EXPECT_EQ(String(L"").trimmed(), L"");
    EXPECT_EQ(String(L"a").trimmed(), L"a");
    EXPECT_EQ(String(L"\u200Ba\uFEFF").trimmed(), L"\u200Ba\uFEFF");  // zero-width characters are no white space
    EXPECT_EQ(String::trim(L" x "), std::wstring_view(L"x"));
}

TEST(String, BytesAboveAsciiAreNoWhiteSpace)
{
    // The second byte of U+00E0 is 0xA0, of U+0405 0x85: trimming must not cut a character in two.
    EXPECT_EQ(NarrowString(" \xC3\xA0").trimmed(), NarrowString("\xC3\xA0"));
    EXPECT_EQ(NarrowString("\xD0\x85 ").trimmed(), NarrowString("\xD0\x85"));
}

TEST(String, EqualTextsHashEqually)
{
    const std::unordered_set<String> set{L"a", L"b", L"a"};
    EXPECT_EQ(set.size(), 2U);
    EXPECT_EQ(set.count(String(std::wstring(L"b"))), 1U);
    EXPECT_EQ(set.count(L"B"), 0U);
}

TEST(String, FromUtf8)
{
    EXPECT_EQ(vel::stringFromUtf8("d\xC3\xA9j\xC3\xA0").value(), L"d\u00E9j\u00E0");
    EXPECT_EQ(vel::stringFromUtf8("").value(), L"");
    std::size_t offset = 99;
    EXPECT_TRUE(vel::stringFromUtf8("ok", &offset).has_value());
    EXPECT_EQ(offset, 99U);
    EXPECT_FALSE(vel::stringFromUtf8("ab\xC0\xAF", &offset).has_value());
    EXPECT_EQ(offset, 2U);
    EXPECT_FALSE(vel::stringFromUtf8("\xFF").has_value());
}

}  // namespace
