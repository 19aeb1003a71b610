#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assertioncapture.h"
#include "locales.h"
#include "logcapture.h"
#include "printers.h"

// Name lists and scale factors of a definition.

namespace {

using namespace testsupport;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using vel::Locale;
using vel::String;

std::string thirteenMonths(const std::string& third)
{
    return listProperty("monthNames", {"January", "February", third, "April", "May", "June", "July", "August",
                                       "September", "October", "November", "December", "Thirteenth"});
}

TEST(LocaleDefinitionLists, EveryListPropertySetsItsOwnList)
{
    const char* const names[] = {"monthNames", "genetiveMonthNames", "abbrevMonthNames", "dayNames", "abbrevDayNames"};
    for (unsigned set = 0; set < 5; ++set) {
        const Locale locale = localeOf(listProperty(names[set], {"set"}));
        for (unsigned read = 0; read < 5; ++read) {
            // A genitive month is looked up among the nominative ones where there is no list of it.
            const bool shown = read == set || (set == Locale::kNominitiveMonth && read == Locale::kGenetiveMonth);
            const Locale::NameType type = static_cast<Locale::NameType>(read);
            EXPECT_EQ(shown, locale.getNameAsString(type, 0) == L"set") << names[set] << " read as " << read;
        }
    }
    const Locale dates = localeOf(listProperty("dateFormats", {"d1", "d2"}));
    EXPECT_THAT(allNames(dates, Locale::kDateFormats), ElementsAre(String(L"d1"), String(L"d2")));
    EXPECT_THAT(allNames(dates, Locale::kTimeFormats), IsEmpty());
    const Locale times = localeOf(listProperty("timeFormats", {"t1"}));
    EXPECT_THAT(allNames(times, Locale::kTimeFormats), ElementsAre(String(L"t1")));
    EXPECT_THAT(allNames(times, Locale::kDateFormats), IsEmpty());
    const Locale both = localeOf(listProperty("dateTimeFormats", {"b1"}));
    EXPECT_THAT(allNames(both, Locale::kDateTimeFormats), ElementsAre(String(L"b1")));
}

TEST(LocaleDefinitionLists, ThirteenMonthsAreKeptThoughOnlyTwelveAreRead)
{
    const Locale locale = localeOf(thirteenMonths("March"));
    EXPECT_EQ(String(L"March"), locale.getNameAsString(Locale::kNominitiveMonth, 2));
    EXPECT_TRUE(locale.getNameAsString(Locale::kNominitiveMonth, 12).isEmpty());
    ASSERT_EQ(13U, locale.storedNames(Locale::kNominitiveMonth).size());
    EXPECT_EQ(String(L"Thirteenth"), locale.storedNames(Locale::kNominitiveMonth)[12]);
}

TEST(LocaleDefinitionLists, StoredNamesAreTheListsWithoutFallbacks)
{
    const AssertionCapture capture;
    const Locale locale = localeOf(listProperty("monthNames", {"m"}) + listProperty("dateFormats", {"d"}) +
                                   listProperty("timeFormats", {"t"}));
    EXPECT_THAT(locale.storedNames(Locale::kNominitiveMonth), ElementsAre(String(L"m")));
    for (const Locale::NameType type : {Locale::kGenetiveMonth, Locale::kAbbreviatedMonth, Locale::kDay,
                                        Locale::kDateTimeFormats, Locale::kNameTypeEnd_}) {
        EXPECT_THAT(locale.storedNames(type), IsEmpty()) << type;
    }
    EXPECT_THAT(locale.storedNames(static_cast<Locale::NameType>(99)), IsEmpty());
    EXPECT_THAT(capture.texts(), IsEmpty());
}

TEST(LocaleDefinitionLists, AnEmptyThirdMonthMovesAprilToIndexTwo)
{
    const Locale locale =
        localeOf(listProperty("monthNames", {"January", "February", "", "April", "May", "June", "July", "August",
                                             "September", "October", "November", "Dezember"}));
    EXPECT_EQ(String(L"February"), locale.getNameAsString(Locale::kNominitiveMonth, 1));
    EXPECT_EQ(String(L"April"), locale.getNameAsString(Locale::kNominitiveMonth, 2));
    EXPECT_EQ(String(L"Dezember"), locale.getNameAsString(Locale::kNominitiveMonth, 10));
    EXPECT_EQ(11U, locale.storedNames(Locale::kNominitiveMonth).size());
    // Eleven entries: the twelfth month is the English one.
    EXPECT_EQ(String(L"December"), locale.getNameAsString(Locale::kNominitiveMonth, 11));
}

TEST(LocaleDefinitionLists, AListReplacesTheBasesList)
{
    const Locale base = localeOf(listProperty("dateFormats", {"a", "b", "c"}));
    EXPECT_THAT(allNames(localeOf(listProperty("dateFormats", {"x"}), base), Locale::kDateFormats),
                ElementsAre(String(L"x")));
    EXPECT_THAT(allNames(localeOf("<property name=\"dateFormats\"/>", base), Locale::kDateFormats), IsEmpty());
    EXPECT_THAT(allNames(localeOf("", base), Locale::kDateFormats),
                ElementsAre(String(L"a"), String(L"b"), String(L"c")));
}

TEST(LocaleDefinitionLists, NamesOfEntriesOtherElementsAndTextsAreIgnored)
{
    const LogCapture log;
    const Locale locale = localeOf(
        "<property name=\"dateFormats\">text<property name=\"am\">one</property><entry>two</entry>"
        "<!-- comment --><property>th<b>re</b>e</property><property/> </property>");
    EXPECT_THAT(allNames(locale, Locale::kDateFormats), ElementsAre(String(L"one"), String(L"three")));
    EXPECT_EQ(String(L"am"), locale.getInfoAsString(Locale::kAM));
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(LocaleDefinitionLists, AnEntryOfBlanksIsAnEntry)
{
    const Locale locale = localeOf(listProperty("dateFormats", {" ", " x "}));
    EXPECT_THAT(allNames(locale, Locale::kDateFormats), ElementsAre(String(L" "), String(L" x ")));
}

TEST(LocaleDefinitionLists, ScaleFactorsKeepTheirOrderAndTheirNames)
{
    const Locale locale = localeOf(
        "<property name=\"scaleFactors\"><property name=\"M\">1000000</property><property name=\"K\">1000</property>"
        "<property>nameless</property><property name=\"\">empty name</property><property name=\"gone\"></property>"
        "<other name=\"x\">1</other><property name=\"K\"> again </property></property>");
    EXPECT_THAT(locale.getScaleFactors(),
                ElementsAre(Pair(String(L"M"), String(L"1000000")), Pair(String(L"K"), String(L"1000")),
                            Pair(String(), String(L"nameless")), Pair(String(), String(L"empty name")),
                            Pair(String(L"K"), String(L" again "))));
}

TEST(LocaleDefinitionLists, ScaleFactorsReplaceTheBasesAndCopiesKeepTheirs)
{
    const Locale base = localeOf("<property name=\"scaleFactors\"><property name=\"K\">1000</property></property>");
    const Locale inheriting = localeOf("", base);
    const Locale emptied = localeOf("<property name=\"scaleFactors\"/>", base);
    EXPECT_THAT(inheriting.getScaleFactors(), ElementsAre(Pair(String(L"K"), String(L"1000"))));
    EXPECT_THAT(emptied.getScaleFactors(), IsEmpty());
    Locale overridden = base;
    overridden.setOverridingDateFormat(L"x");
    EXPECT_THAT(overridden.getScaleFactors(), ElementsAre(Pair(String(L"K"), String(L"1000"))));
}

}  // namespace
