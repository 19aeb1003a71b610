#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "locales.h"
#include "printers.h"

// Copies share their data until one of them is changed.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::String;

using Change = std::function<void(Locale&)>;

const std::vector<Change>& setters()
{
    static const std::vector<Change> kSetters = {
        [](Locale& locale) { locale.setOverridingCurrencyTag(L"EUR"); },
        [](Locale& locale) { locale.setOverridingDateFormat(L"yyyy"); },
        [](Locale& locale) { locale.setOverridingTimeFormat(L"HH"); },
        [](Locale& locale) { locale.setOverridingDecimalSeparator(L","); },
        [](Locale& locale) { locale.setOverridingThousandsSeparator(L"."); },
        [](Locale& locale) { locale.setOverridingDateInputFormat(L".", Locale::kDMY); },
        [](Locale& locale) { locale.setOverridingTimeInputFormat(L".", Locale::kIs24HR); },
    };
    return kSetters;
}

const std::vector<Change>& clearers()
{
    static const std::vector<Change> kClearers = {
        [](Locale& locale) { locale.clearOverridingCurrencyTag(); },
        [](Locale& locale) { locale.clearOverridingDateFormat(); },
        [](Locale& locale) { locale.clearOverridingTimeFormat(); },
        [](Locale& locale) { locale.clearOverridingDecimalSeparator(); },
        [](Locale& locale) { locale.clearOverridingThousandsSeparator(); },
        [](Locale& locale) { locale.clearOverridingDateInputFormat(); },
        [](Locale& locale) { locale.clearOverridingTimeInputFormat(); },
    };
    return kClearers;
}

/// Everything that a user sees of a locale.
std::vector<String> everythingOf(const Locale& locale)
{
    std::vector<String> all = {locale.definitionName(), locale.overridingCurrencyTag(),
                               locale.is24Hours() ? L"24" : L"12", Locale::getDateOrderString(locale.getDateOrder())};
    for (unsigned info = 0; info < Locale::kStringInfoEnd_; ++info) {
        all.push_back(locale.getInfoAsString(static_cast<Locale::StringInfo>(info)));
    }
    return all;
}

TEST(LocaleSharing, CopiesShareAndGiveTheirShareBack)
{
    const Locale first = localeOf("");
    EXPECT_EQ(1U, first.shareCount());
    {
        const Locale second = first;
        Locale third;
        third = second;
        EXPECT_EQ(3U, first.shareCount());
        EXPECT_EQ(3U, third.shareCount());
    }
    EXPECT_EQ(1U, first.shareCount());
}

TEST(LocaleSharing, AssignmentReleasesWhatWasHeldAndSurvivesItself)
{
    const Locale old = localeOf("");
    Locale locale = old;
    locale = Locale::kUSA;
    EXPECT_EQ(1U, old.shareCount());
    Locale& alias = locale;
    locale = alias;
    EXPECT_EQ(String(L"en-us"), locale.definitionName());
    locale = Locale();
    EXPECT_FALSE(locale.isValid());
}

TEST(LocaleSharing, SwapExchanges)
{
    Locale first = localeOf("");
    Locale second;
    first.swap(second);
    EXPECT_FALSE(first.isValid());
    EXPECT_EQ(String(L"test"), second.definitionName());
    EXPECT_EQ(1U, second.shareCount());
}

TEST(LocaleSharing, AnOverrideOnOneCopyLeavesTheOther)
{
    for (std::size_t i = 0; i < setters().size(); ++i) {
        const Locale kept = localeOf("", Locale::kUSA);
        const std::vector<String> before = everythingOf(kept);
        Locale changed = kept;
        setters()[i](changed);
        EXPECT_EQ(1U, kept.shareCount()) << i;
        EXPECT_EQ(1U, changed.shareCount()) << i;
        EXPECT_EQ(before, everythingOf(kept)) << i;
        EXPECT_NE(before, everythingOf(changed)) << i;
        clearers()[i](changed);
        EXPECT_EQ(before, everythingOf(changed)) << i;
    }
}

TEST(LocaleSharing, SettingWhatIsSetCopiesNothing)
{
    for (std::size_t i = 0; i < setters().size(); ++i) {
        Locale first = Locale::kUSA;
        setters()[i](first);
        Locale second = first;
        setters()[i](second);
        EXPECT_EQ(2U, first.shareCount()) << i;
    }
}

TEST(LocaleSharing, ClearingWhatIsNotSetDoesNothing)
{
    for (std::size_t i = 0; i < clearers().size(); ++i) {
        const Locale first = localeOf("");
        Locale second = first;
        clearers()[i](second);
        EXPECT_EQ(2U, first.shareCount()) << i;
    }
}

TEST(LocaleSharing, ASoleOwnerIsChangedInPlace)
{
    for (const Change& set : setters()) {
        Locale locale = localeOf("");
        const void* place = &locale.overridingCurrencyTag();
        set(locale);
        EXPECT_EQ(place, &locale.overridingCurrencyTag());
        Locale copy = locale;
        copy.setOverridingCurrencyTag(L"another");
        EXPECT_NE(place, &copy.overridingCurrencyTag());
        EXPECT_EQ(place, &locale.overridingCurrencyTag());
    }
}

TEST(LocaleSharing, ApplyingADefinitionNeverChangesTheOldDataEvenOfASoleOwner)
{
    Locale locale = localeOf("");
    const void* place = &locale.overridingCurrencyTag();
    locale = localeOf(property("am", "x"), locale);
    EXPECT_NE(place, &locale.overridingCurrencyTag());

    const Locale base = localeOf(property("am", "base"));
    const Locale copy = base;
    const Locale derived = localeOf(property("am", "derived"), copy);
    EXPECT_EQ(2U, base.shareCount());
    EXPECT_EQ(String(L"base"), copy.getInfoAsString(Locale::kAM));
    EXPECT_EQ(String(L"derived"), derived.getInfoAsString(Locale::kAM));
}

TEST(LocaleSharing, ANewValueMayBeAReferenceToTheLocalesOwn)
{
    Locale locale = Locale::kUSA;
    locale.setOverridingDateFormat(L"a format too long for the inside of a string");
    for (const bool shared : {false, true}) {
        const Locale other = shared ? locale : Locale();
        locale.setOverridingTimeFormat(locale.overridingDateFormat());
        EXPECT_EQ(String(L"a format too long for the inside of a string"), locale.getInfoAsString(Locale::kTimeFormat));
        locale.clearOverridingTimeFormat();
    }
    locale.setOverridingDateInputFormat(L"a separator too long for the inside", Locale::kDMY);
    locale.setOverridingDateInputFormat(locale.overridingDateSeparator(), Locale::kYMD);
    EXPECT_EQ(String(L"a separator too long for the inside"), locale.overridingDateSeparator());
}

TEST(LocaleSharing, ACopyWithAnOverrideKeepsEveryOtherOverride)
{
    Locale all = Locale::kUSA;
    for (const Change& set : setters()) {
        set(all);
    }
    Locale copy = all;
    copy.setOverridingCurrencyTag(L"USD");
    copy.setOverridingCurrencyTag(L"EUR");
    EXPECT_EQ(1U, copy.shareCount());
    EXPECT_EQ(everythingOf(all), everythingOf(copy));
    EXPECT_EQ(all.overridingDateSeparator(), copy.overridingDateSeparator());
    EXPECT_EQ(all.overridingDateOrdering(), copy.overridingDateOrdering());
    EXPECT_EQ(all.overridingTimeSeparator(), copy.overridingTimeSeparator());
    EXPECT_EQ(all.overriding24Hours(), copy.overriding24Hours());
}

}  // namespace
