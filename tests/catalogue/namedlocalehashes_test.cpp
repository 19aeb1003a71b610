#include "namedlocales.h"

#include <gtest/gtest.h>

#include <vector>

#include "anotherprocess.h"
#include "vel/core/texthash.h"

// Locales by name: found without regard to case, by hashes that nobody knows who writes a file.

namespace {

using vel::Locale;
using vel::i18n_details::NamedLocales;

TEST(NamedLocaleHashes, NamesThatDifferInCaseHaveOneHash)
{
    EXPECT_EQ(NamedLocales::hashOf(L"en-us"), NamedLocales::hashOf(L"EN-Us"));
    EXPECT_NE(NamedLocales::hashOf(L"en-us"), NamedLocales::hashOf(L"en-uk"));
    EXPECT_NE(NamedLocales::hashOf(L"en-us"), NamedLocales::hashOf(L"ne-us"));
}

TEST(NamedLocaleHashes, NamesThatCollideUnderTheSeedAtHandAreAllFound)
{
    NamedLocales locales;
    std::vector<std::wstring> names;
    for (int number = 0; names.size() < 300; ++number) {
        std::wstring name = L"xx-" + std::to_wstring(number);
        if (NamedLocales::hashOf(name) % 1024 == 1) {
            locales.set(name, Locale::kUSA);
            names.push_back(std::move(name));
        }
    }
    for (const std::wstring& each : names) {
        EXPECT_NE(nullptr, locales.find(each));
    }
    EXPECT_EQ(nullptr, locales.find(L"xx"));
}

TEST(NamedLocaleHashes, DISABLED_ShowsAHash)
{
    testsupport::showToTheOtherProcess(std::to_string(NamedLocales::hashOf(L"en-us")));
}

TEST(NamedLocaleHashes, EveryProcessHasHashesOfItsOwn)
{
    const std::string first = testsupport::shownByAnotherProcess("NamedLocaleHashes.DISABLED_ShowsAHash");
    EXPECT_NE("", first);
    EXPECT_NE(first, testsupport::shownByAnotherProcess("NamedLocaleHashes.DISABLED_ShowsAHash"));
}

}  // namespace
