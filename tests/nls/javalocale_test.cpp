#include <gtest/gtest.h>

#include "locales.h"
#include "printers.h"
#include "vel/core/exception.h"
#include "webi18n/nlsutils.h"

namespace {

using vel::JavaLocale;
using vel::KWWUILanguage;
using vel::Locale;
using vel::NLSUtils;
using vel::String;

Locale named(const std::string& name)
{
    return testsupport::applied(testsupport::definition(name, ""));
}

String javaOf(const std::string& name)
{
    return NLSUtils::localeToJavaLocale(named(name)).toString();
}

String javaOf(const wchar_t* language, const std::string& name)
{
    return NLSUtils::languageLocaleToJavaLocale(KWWUILanguage(language), named(name)).toString();
}

TEST(JavaLocale, ToString)
{
    EXPECT_EQ((JavaLocale{L"en", L"US", L""}).toString(), L"en_US");
    EXPECT_EQ((JavaLocale{L"en", L"", L""}).toString(), L"en");
    EXPECT_EQ((JavaLocale{L"en", L"", L"X"}).toString(), L"en__X");
    EXPECT_EQ((JavaLocale{L"", L"US", L""}).toString(), L"_US");
    EXPECT_EQ((JavaLocale{L"en", L"US", L"X"}).toString(), L"en_US_X");
    EXPECT_EQ((JavaLocale{L"", L"", L"X"}).toString(), L"__X");
    EXPECT_EQ(JavaLocale().toString(), L"");
}

TEST(JavaLocale, TheBuiltInLocaleIsEnUS)
{
    EXPECT_EQ(NLSUtils::localeToJavaLocale(Locale::kUSA), (JavaLocale{L"en", L"US", L""}));
}

TEST(JavaLocale, ANameWithoutAHyphenGivesTheEmptyString)
{
    EXPECT_EQ(NLSUtils::localeToJavaLocale(named("fr")), JavaLocale());
    EXPECT_EQ(javaOf("fr"), L"");
    EXPECT_EQ(javaOf(""), L"");
}

TEST(JavaLocale, TheNameIsSplitAtItsFirstHyphen)
{
    EXPECT_EQ(javaOf("fr-ca"), L"fr_CA");
    EXPECT_EQ(javaOf("zh-hant-tw"), L"zh_HANT-TW");
    EXPECT_EQ(javaOf("FR-ca"), L"FR_CA");
    EXPECT_EQ(javaOf("fr-"), L"fr");
    EXPECT_EQ(javaOf("-us"), L"_US");
    EXPECT_EQ(javaOf("--"), L"_-");
    EXPECT_EQ(javaOf("xx-\xC3\xA9\xC3\x9F"), L"xx_\u00C9\u00DF");
}

TEST(JavaLocale, LanguageFrWithLocaleFRcaKeepsTheLocalesSpelling)
{
    EXPECT_EQ(javaOf(L"fr", "FR-ca"), L"FR_CA");
    EXPECT_EQ(javaOf(L"FR", "fr-ca"), L"fr_CA");
}

TEST(JavaLocale, LanguageDeWithLocaleEnUs)
{
    EXPECT_EQ(NLSUtils::languageLocaleToJavaLocale(KWWUILanguage(L"de"), Locale::kUSA).toString(), L"de_US");
}

TEST(JavaLocale, ALanguageWithAHyphenAloneDecides)
{
    EXPECT_EQ(javaOf(L"zh-Hant-TW", "en-us"), L"zh_HANT-TW");
    EXPECT_EQ(javaOf(L"zh-Hant-TW", "fr"), L"zh_HANT-TW");
    EXPECT_EQ(javaOf(L"pt-BR", "pt-pt"), L"pt_BR");
    EXPECT_EQ(javaOf(L"-", "en-us"), L"");
    EXPECT_EQ(javaOf(L"e-", "en-us"), L"e");
}

TEST(JavaLocale, OfALanguageWithoutAHyphenTwoCharactersCount)
{
    EXPECT_EQ(javaOf(L"deu", "en-us"), L"de_US");
    EXPECT_EQ(javaOf(L"ENG", "en-us"), L"en_US");
    EXPECT_EQ(javaOf(L"d", "en-us"), L"d_US");
    EXPECT_EQ(javaOf(L"", "en-us"), L"_US");
    EXPECT_EQ(javaOf(L"fil", "fil-ph"), L"fi_PH");  // the prefix is no language of three letters, deliberately
}

TEST(JavaLocale, ALanguageWithALocaleWithoutAHyphenStandsAlone)
{
    EXPECT_EQ(javaOf(L"de", "fr"), L"de");
    EXPECT_EQ(javaOf(L"fr", "fr"), L"fr");
    EXPECT_EQ(javaOf(L"", "fr"), L"");
}

TEST(JavaLocale, ALocaleThatHoldsNothingThrows)
{
    EXPECT_THROW(NLSUtils::localeToJavaLocale(Locale()), vel::InvalidHandleException);
    for (const wchar_t* language : {L"de", L"zh-Hant-TW", L""}) {
        EXPECT_THROW(NLSUtils::languageLocaleToJavaLocale(KWWUILanguage(language), Locale()),
                     vel::InvalidHandleException);
    }
}

}  // namespace
