#include "identicalcodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using vel::nls::IdenticalCodes;

/// The bytes of a decomposed text.
std::string bytesOf(std::u32string_view text)
{
    std::string bytes(IdenticalCodes::kMostBytes * text.size(), '\0');
    auto* const begin = reinterpret_cast<unsigned char*>(bytes.data());
    unsigned char* end = begin;
    IdenticalCodes codes;
    for (const char32_t c : text) {
        end = codes.put(c, end);
    }
    bytes.resize(static_cast<std::size_t>(end - begin));
    return bytes;
}

/// U+FFFE is lower than all others.
std::u32string ranksOf(std::u32string_view text)
{
    std::u32string ranks;
    for (const char32_t c : text) {
        ranks += c == 0xFFFE ? 0 : c + 1;
    }
    return ranks;
}

TEST(IdenticalCodes, TheirBytesAreInTheOrderOfTheTexts)
{
    const std::u32string characters =
        U"\U00000001\u0002\u001F ~az\u007F\u00E5\u0301\u06FF\u0700\u08FF\u0900\u10FF\u1100\u1101\u1112\u1113\u1160"
        U"\u1161\u1162\u1175\u1176\u11A7\u11A8\u11A9\u11C2\u11C3\u1200\u137F\u1380\u1FFF\u2000\u20FE\u20FF\u2FFF"
        U"\u3000\u3045\u3046\u3047\u304B\u3098\u3099\u309A\u309B\u309D\u30A1\u30FD\u30FE\u30FF\u3100\u312F\u3130"
        U"\u4DFF\u4E00\u9FAD\u9FAE\uA000\uE000\uFF00\uFF01\uFFFD\uFFFE\uFFFF\U00010000\U0001FE00\U0001FE01\U0010FFFF" +
        std::u32string(1, U'\0');
    std::vector<std::u32string> texts{U""};
    for (const char32_t first : characters) {
        texts.push_back({first});
        for (const char32_t second : characters) {
            texts.push_back({first, second});
            for (const char32_t third : characters) {
                texts.push_back({first, second, third});
            }
        }
    }
    std::sort(texts.begin(), texts.end(),
              [](const std::u32string& left, const std::u32string& right) { return ranksOf(left) < ranksOf(right); });
    for (std::size_t i = 1; i < texts.size(); ++i) {
        ASSERT_LT(bytesOf(texts[i - 1]), bytesOf(texts[i])) << testing::PrintToString(texts[i]);
    }
}

TEST(IdenticalCodes, HoldNoZero)
{
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        const std::string bytes = bytesOf({&c, 1});
        ASSERT_EQ(bytes.find('\0'), std::string::npos) << static_cast<unsigned>(c);
        ASSERT_FALSE(bytes.empty());
    }
}

TEST(IdenticalCodes, AreShortWhereTextsAreLong)
{
    struct Row
    {
        const char* m_szReason;
        std::u32string m_sText;
        std::size_t m_nBytes;
    };
    const Row rows[] = {
        {"printable ASCII", U"Straße ", 6 + 2},
        {"a letter and its mark", U"a\u0308", 1 + 2},
        {"Cyrillic", U"да", 2 + 2},
        {"Hindi", U"\u0928\u092E", 2 + 2},
        {"Thai", U"\u0E01\u0E48", 2 + 2},
        {"Chinese", U"\u4E2D\u56FD", 2 + 2},
        {"Kana", U"\u3042\u30FC", 2 + 2},
        {"Kana with a voicing mark", U"\u304B\u3099\u30CF\u309A", 2 + 2},
        {"Kana that has none", U"\u3042\u3099", 2 + 2},
        {"a syllable of two letters", U"\u1100\u1161", 2},
        {"a syllable of three letters", U"\u1112\u1175\u11C2\u1112\u1175\u11C2", 2 + 2},
        {"letters that are no syllable", U"\u1100\u1100\u11A8", 2 + 2 + 3},
        {"a separator of parts", U"\uFFFEa", 1 + 1},
        {"a smiley", U"\U0001F600", 3},
        {"Han beyond the basic plane", U"\U00020000", 4},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(bytesOf(row.m_sText).size(), row.m_nBytes) << row.m_szReason;
    }
}

TEST(IdenticalCodes, ASyllableIsItsLetters)
{
    for (char32_t number = 0; number < 11'172; ++number) {
        std::u32string letters{0x1100 + number / 588, 0x1161 + number / 28 % 21};
        if (number % 28 != 0) {
            letters += 0x11A7 + number % 28;
        }
        for (const char32_t behind : {U'a', U'\u11A8', U'\u4E00'}) {
            unsigned char bytes[16];
            IdenticalCodes codes;
            const unsigned char* const end = codes.put(behind, codes.putSyllable(0xAC00 + number, bytes));
            ASSERT_EQ(bytesOf(letters + behind),
                      std::string(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(end - bytes)));
        }
    }
}

}  // namespace
