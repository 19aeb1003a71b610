#include <gtest/gtest.h>

#include "localemappingimpl.h"
#include "mappings.h"
#include "printers.h"

// Which interface language goes with a locale.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::String;

TEST(MappingLanguages, TheRequestedOneIsTakenWhateverItIs)
{
    MappingOnCatalogue mapping;
    for (const wchar_t* language : {L"fr", L"xx", L" ", L"not a language at all"}) {
        const auto [locale, chosen] = mapping.mapping().mapLanguage(Locale::kUSA, language);
        EXPECT_EQ(String(language), chosen);
        EXPECT_EQ(String(L"en-us"), locale.definitionName());
    }
}

TEST(MappingLanguages, WithoutARequestTheLocalesOwnIsTaken)
{
    MappingOnCatalogue mapping;
    EXPECT_EQ(String(L"fr"), mapping.mapping().mapLanguage(mapping.catalogue().find(L"fr-ca"), L"").second);
}

TEST(MappingLanguages, WithoutEitherItIsEnglish)
{
    MappingOnCatalogue mapping;
    const Locale german = mapping.catalogue().find(L"de-de");
    EXPECT_EQ(String(L"en"), mapping.mapping().mapLanguage(german, L"").second);
    EXPECT_EQ(String(L"xx"), mapping.mapping().mapLanguage(german, L"xx").second);
    EXPECT_EQ(String(L"de-de"), mapping.mapping().mapLanguage(german, L"").first.definitionName());
}

TEST(MappingLanguages, ALocaleThatIsNotInTheCatalogueIsReturnedUnchanged)
{
    MappingOnCatalogue mapping(L"");
    Locale own = localeOf(property("defaultLanguage", "eo"));
    own.setOverridingDateFormat(L"mine");
    const auto [locale, language] = mapping.mapping().mapLanguage(own, L"");
    EXPECT_EQ(String(L"eo"), language);
    EXPECT_EQ(String(L"mine"), locale.overridingDateFormat());
    EXPECT_EQ(2U, own.shareCount());
}

TEST(MappingLanguages, AnInvalidLocaleThrowsOnlyWhenItIsAsked)
{
    MappingOnCatalogue mapping;
    EXPECT_EQ(String(L"fr"), mapping.mapping().mapLanguage(Locale(), L"fr").second);
    EXPECT_THROW(mapping.mapping().mapLanguage(Locale(), L""), vel::InvalidHandleException);
}

TEST(MappingLanguages, MappingALocaleChoosesTheLanguageToo)
{
    MappingOnCatalogue mapping;
    mapping.load(
        "<when matches=\"fr*\"><localeDefinition name=\"fr-ca\"/></when>"
        "<when matches=\"de*\"><localeDefinition name=\"de-de\"/></when>");
    EXPECT_EQ(String(L"fr"), mapping.mapping().mapLocale(L"fr-CA", L"").second);
    EXPECT_EQ(String(L"es"), mapping.mapping().mapLocale(L"fr-CA", L"es").second);
    EXPECT_EQ(String(L"en"), mapping.mapping().mapLocale(L"de", L"").second);
    EXPECT_EQ(String(L"en"), mapping.mapping().mapLocale(L"xx", L"").second);
}

TEST(MappingLanguages, AnyTextButNoneIsSupported)
{
    const MappingOnCatalogue catalogue;
    const vel::i18n_details::LocaleMappingImpl mapping(catalogue.catalogue().handle());
    EXPECT_FALSE(mapping.isLanguageSupported(L""));
    EXPECT_TRUE(mapping.isLanguageSupported(L"en"));
    EXPECT_TRUE(mapping.isLanguageSupported(L" "));
    EXPECT_TRUE(mapping.isLanguageSupported(L"?"));
}

}  // namespace
