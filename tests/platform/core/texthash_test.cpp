#include "vel/core/texthash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "anotherprocess.h"
#include "vel/core/flatindex.h"
#include "vel/core/textnumbers.h"

// Texts are hashed with a seed that nobody knows who writes a file: what collides under one does not under another.

namespace {

constexpr std::uint32_t kPlaces = 4096;

/// Texts of file's characters that share one place of kPlaces under the seed.
std::vector<std::wstring> collidingTexts(std::uint64_t seed, std::size_t count)
{
    std::vector<std::wstring> texts;
    for (std::uint32_t number = 0; texts.size() < count; ++number) {
        std::wstring text = L"key" + std::to_wstring(number);
        if (vel::hashText(text, seed) % kPlaces == 1) {
            texts.push_back(std::move(text));
        }
    }
    return texts;
}

/// How many of the texts the fullest place has.
std::size_t fullestPlace(const std::vector<std::wstring>& texts, std::uint64_t seed)
{
    std::vector<std::size_t> counts(kPlaces);
    for (const std::wstring& each : texts) {
        ++counts[vel::hashText(each, seed) % kPlaces];
    }
    return *std::max_element(counts.begin(), counts.end());
}

TEST(TextHash, TextsThatCollideUnderTheSeedAtHandDoNotUnderAnother)
{
    const std::vector<std::wstring> texts = collidingTexts(vel::textSeed(), 1000);
    EXPECT_EQ(1000U, fullestPlace(texts, vel::textSeed()));
    // Of a thousand texts in 4,096 places, chance puts more than ten into one once in 10^9 times.
    for (const std::uint64_t change : {0x1000ULL, 0x123456789ABCDEULL, 0x5555555555555554ULL}) {
        EXPECT_LE(fullestPlace(texts, vel::textSeed() ^ change), 10U) << change;
    }
}

TEST(TextHash, TextsThatCollideUnderTheSeedAtHandAreAllFound)
{
    const std::vector<std::wstring> texts = collidingTexts(vel::textSeed(), 1000);
    vel::TextNumbers numbers;
    for (std::uint32_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(i, numbers.add(texts[i]));
    }
    for (std::uint32_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(i, numbers.find(texts[i]));
    }
    EXPECT_EQ(vel::TextNumbers::kNone, numbers.find(L"key"));
}

TEST(TextHash, EveryCharacterAndTheLengthCount)
{
    const std::vector<std::wstring> texts = {L"",
                                             L"a",
                                             L"b",
                                             L"ab",
                                             L"ba",
                                             L"abc",
                                             L"abd",
                                             L"acb",
                                             L"bbc",
                                             L"abcd",
                                             std::wstring(1, L'\0'),
                                             std::wstring(2, L'\0')};
    for (const std::wstring& a : texts) {
        for (const std::wstring& b : texts) {
            EXPECT_EQ(a == b, vel::hashText(a) == vel::hashText(b)) << vel::hashText(a);
        }
    }
}

TEST(TextHash, TheSeedIsOddAndStays)
{
    EXPECT_EQ(1U, vel::textSeed() % 2);
    EXPECT_EQ(vel::textSeed(), vel::textSeed());
    EXPECT_EQ(vel::hashText(L"abc", vel::textSeed()), vel::hashText(L"abc"));
}

TEST(TextHash, DISABLED_ShowsTheSeed)
{
    testsupport::showToTheOtherProcess(std::to_string(vel::textSeed()));
}

TEST(TextHash, EveryProcessHasASeedOfItsOwn)
{
    const std::string first = testsupport::shownByAnotherProcess("TextHash.DISABLED_ShowsTheSeed");
    EXPECT_NE("", first);
    EXPECT_NE(first, testsupport::shownByAnotherProcess("TextHash.DISABLED_ShowsTheSeed"));
    EXPECT_NE(first, std::to_string(vel::textSeed()));
}

}  // namespace
