#include "vel/nls/sortnames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/ucol.h>
#include <unicode/uloc.h>

#include <string>

#include "sortname.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using vel::nls::nearestSortNames;
using vel::nls::resolveSortName;

TEST(SortNames, AreKnownWhenTheirLanguageIsListed)
{
    for (const char* name : {"sv", "SV", "und", "und-u-kn", "en-US", "en-ZZ", "sr-Latn-RS", "tlh", "i-klingon", "iw",
                             "zh-min-nan", "swe", "root", "fil", "de-1996", "en-x-foo"}) {
        EXPECT_TRUE(resolveSortName(name)) << name;
    }
    for (const char* name :
         {"xx", "swedish", "SWEDISH", "nosuch", "xx-u-kn", "qaa", "swedish-SE", "binary-u-kn", "u-kn", "xx-Latn"}) {
        EXPECT_FALSE(resolveSortName(name)) << name;
    }
}

TEST(SortNames, AreKnownForEveryLanguageThatIcuSorts)
{
    const int count = ucol_countAvailable();
    ASSERT_GT(count, 100);
    for (int i = 0; i < count; ++i) {
        UErrorCode status = U_ZERO_ERROR;
        char tag[100];
        uloc_toLanguageTag(ucol_getAvailable(i), tag, sizeof tag, 1, &status);
        ASSERT_TRUE(U_SUCCESS(status));
        EXPECT_TRUE(resolveSortName(tag)) << tag;
    }
}

TEST(SortNames, AreKnownWhenTheirKeywordsAndValuesExist)
{
    for (const char* name : {"de-u-co-phonebk", "en-u-ka-shifted", "en-u-ka-noignore", "da-u-kf-upper", "en-u-kn",
                             "en-u-kn-true", "en-u-kb", "en-u-kc", "en-u-kk", "en-u-ks-level2", "en-u-kr-grek-latn",
                             "en-u-ka-shifted-kv-symbol", "zh-u-co-stroke-kn"}) {
        EXPECT_TRUE(resolveSortName(name)) << name;
    }
    for (const char* name :
         {"sv-u-zz-foo", "sv-u-foo", "sv-u-co-nosuch", "sv-u-co-phonebk", "en-u-ka-what", "en-u-kn-what",
          "en-u-ks-level9", "en-u-kr-what", "en-u-kz", "en-u-ca-gregory", "sv-t-de", "en-u-kv-what"}) {
        EXPECT_FALSE(resolveSortName(name)) << name;
    }
}

TEST(SortNames, ACanonicalNameIsKnown)
{
    for (const char* name : {"iw", "i-klingon", "zh-min-nan", "swe", "root", "de-u-co-phonebk-kn-true", "no-bok"}) {
        const auto resolved = resolveSortName(name);
        if (resolved) {
            EXPECT_TRUE(resolveSortName(resolved->m_sCanonical)) << name << " " << resolved->m_sCanonical;
        }
    }
}

TEST(NearestSortNames, OfALanguageAreItsSorts)
{
    EXPECT_THAT(nearestSortNames("fr-u-co-phonebk"), Contains("fr"));
    EXPECT_THAT(nearestSortNames("de-u-co-phonebook"), ElementsAre("de", "de-u-co-phonebk", testing::_));
    EXPECT_THAT(nearestSortNames("sv-u-zz-foo"), Contains("sv"));
}

TEST(NearestSortNames, OfNoLanguageAreThoseSpelledAlike)
{
    EXPECT_THAT(nearestSortNames("SWEDISH"), ElementsAre("sv"));
    EXPECT_THAT(nearestSortNames("swedisch"), ElementsAre("sv"));
    EXPECT_THAT(nearestSortNames("swedish-u-kn"), ElementsAre("sv"));
    EXPECT_THAT(nearestSortNames("german"), Contains("de"));
    EXPECT_THAT(nearestSortNames("binry"), Contains("binary"));
    EXPECT_THAT(nearestSortNames("en_US"), ElementsAre("en-US"));
    EXPECT_THAT(nearestSortNames("De_CH"), ElementsAre("de-CH"));
}

TEST(NearestSortNames, AreNoneWhereNothingIsNear)
{
    for (const std::string& name :
         {std::string(), std::string("no such sort"), std::string("nosuch"), std::string("xx"),
          std::string(100'000, 'a'), std::string("\xFF\xFE"), std::string(4, '\0')}) {
        EXPECT_THAT(nearestSortNames(name), IsEmpty()) << name;
    }
}

}  // namespace
