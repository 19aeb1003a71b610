#include "namedlocales.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "faileverywhere.h"
#include "locales.h"
#include "printers.h"

namespace {

using namespace testsupport;
using testing::ElementsAre;
using vel::Locale;
using vel::String;
using vel::i18n_details::NamedLocales;

std::vector<String> namesOf(const NamedLocales& locales)
{
    std::vector<String> names;
    for (const auto& [name, locale] : locales.inOrder()) {
        names.push_back(name);
    }
    return names;
}

/// "aa-aa", "aa-ab", ... in order.
std::wstring nameOfNumber(unsigned number)
{
    return {L'a', L'a', L'-', static_cast<wchar_t>(L'a' + number / 26), static_cast<wchar_t>(L'a' + number % 26)};
}

TEST(NamedLocales, AreFoundWithoutRegardToCase)
{
    NamedLocales locales;
    locales.set(L"fr-FR", Locale::kUSA);
    EXPECT_NE(locales.find(L"FR-fr"), nullptr);
    EXPECT_EQ(locales.find(L"fr-fr", NamedLocales::hashOf(L"fr-FR")), locales.find(L"fr-fr"));
    EXPECT_EQ(locales.find(L"fr-ca"), nullptr);
    EXPECT_EQ(locales.find(L""), nullptr);
}

TEST(NamedLocales, KeepTheSpellingOfTheFirstAndTheLocaleOfTheLast)
{
    NamedLocales locales;
    locales.set(L"fr-fr", Locale());
    locales.set(L"FR-FR", Locale::kUSA);
    EXPECT_THAT(namesOf(locales), ElementsAre(String(L"fr-fr")));
    EXPECT_TRUE(locales.find(L"fr-fr")->isValid());
}

TEST(NamedLocales, EveryChangeGetsAVersionOfItsOwn)
{
    NamedLocales locales;
    std::vector<std::uint64_t> versions = {locales.version()};
    for (const wchar_t* const name : {L"fr-fr", L"de-de", L"fr-fr"}) {
        locales.set(name, Locale::kUSA);
        versions.push_back(locales.version());
    }
    std::sort(versions.begin(), versions.end());
    EXPECT_EQ(std::adjacent_find(versions.begin(), versions.end()), versions.end());
}

// Names differ in a few letters at a few places: the hash, whose low bits choose the place, has to mix them all.
TEST(NamedLocales, TheHashesOfNamesThatAreLikeEachOtherDiffer)
{
    std::vector<std::uint32_t> hashes;
    for (unsigned number = 0; number < 26 * 26; ++number) {
        hashes.push_back(NamedLocales::hashOf(nameOfNumber(number)));
        hashes.push_back(NamedLocales::hashOf(nameOfNumber(number) + L"-x"));
    }
    // Of 1352 numbers of 32 bits that a new seed chose, two are the same once in some 5000 processes.
    std::sort(hashes.begin(), hashes.end());
    EXPECT_GE(std::unique(hashes.begin(), hashes.end()) - hashes.begin(), 1350);
}

TEST(NamedLocales, OutOfMemoryNothingHasChanged)
{
    // 8 fill the first table, so that the next one needs a larger one.
    for (unsigned before = 0; before < 20; ++before) {
        SCOPED_TRACE(before);
        NamedLocales locales;
        for (unsigned number = 0; number < before; ++number) {
            locales.set(nameOfNumber(number), Locale::kUSA);
        }
        failEverywhere([&] { locales.set(L"zz", Locale::kUSA); },
                       [&] {
                           EXPECT_EQ(locales.inOrder().size(), before);
                           EXPECT_EQ(locales.find(L"zz"), nullptr);
                       });
        EXPECT_EQ(locales.inOrder().size(), before + 1);
        EXPECT_NE(locales.find(L"zz"), nullptr);
    }
}

}  // namespace
