#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "locales.h"
#include "printers.h"

// A locale that holds nothing.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::String;

struct Operation
{
    const char* m_pName;
    std::function<void(Locale&)> m_fCall;
};

const std::vector<Operation>& operations()
{
    static const std::vector<Operation> kOperations = {
        {"shareCount", [](Locale& l) { static_cast<void>(l.shareCount()); }},
        {"definitionName", [](Locale& l) { l.definitionName(); }},
        {"getInfo",
         [](Locale& l) {
             vel::StringBuffer<8> out;
             l.getInfo(Locale::kAM, out);
         }},
        {"getInfoAsString", [](Locale& l) { l.getInfoAsString(Locale::kAM); }},
        {"getName",
         [](Locale& l) {
             vel::StringBuffer<8> out;
             l.getName(Locale::kDay, 0, out);
         }},
        {"getNameAsString", [](Locale& l) { l.getNameAsString(Locale::kDay, 0); }},
        {"getNameAsString of no index", [](Locale& l) { l.getNameAsString(Locale::kDay, 99); }},
        {"getAllNames", [](Locale& l) { allNames(l, Locale::kDateFormats); }},
        {"storedNames", [](Locale& l) { static_cast<void>(l.storedNames(Locale::kDay)); }},
        {"getDateOrder", [](Locale& l) { l.getDateOrder(); }},
        {"is24Hours", [](Locale& l) { l.is24Hours(); }},
        {"getFirstDayOfWeek", [](Locale& l) { l.getFirstDayOfWeek(); }},
        {"getScaleFactors", [](Locale& l) { l.getScaleFactors(); }},
        {"getEra",
         [](Locale& l) {
             vel::StringBuffer<8> out;
             l.getEra(vel::DateTime(), out);
         }},
        {"mapString",
         [](Locale& l) {
             vel::StringBuffer<8> out;
             l.mapString(Locale::kLowerCase, L"", 0, out);
         }},
        {"collateStrings", [](Locale& l) { l.collateStrings(Locale::kCollateCase, L"", L""); }},
        {"getLocaleMessage", [](Locale& l) { l.getLocaleMessage({}); }},
        {"overridingCurrencyTag", [](Locale& l) { l.overridingCurrencyTag(); }},
        {"hasOverridingCurrencyTag", [](Locale& l) { l.hasOverridingCurrencyTag(); }},
        {"setOverridingCurrencyTag", [](Locale& l) { l.setOverridingCurrencyTag(L"x"); }},
        {"clearOverridingCurrencyTag", [](Locale& l) { l.clearOverridingCurrencyTag(); }},
        {"overridingDateFormat", [](Locale& l) { l.overridingDateFormat(); }},
        {"setOverridingDateFormat", [](Locale& l) { l.setOverridingDateFormat(L"x"); }},
        {"clearOverridingDateFormat", [](Locale& l) { l.clearOverridingDateFormat(); }},
        {"overridingTimeFormat", [](Locale& l) { l.overridingTimeFormat(); }},
        {"setOverridingTimeFormat", [](Locale& l) { l.setOverridingTimeFormat(L"x"); }},
        {"clearOverridingTimeFormat", [](Locale& l) { l.clearOverridingTimeFormat(); }},
        {"overridingDecimalSeparator", [](Locale& l) { l.overridingDecimalSeparator(); }},
        {"setOverridingDecimalSeparator", [](Locale& l) { l.setOverridingDecimalSeparator(L"x"); }},
        {"clearOverridingDecimalSeparator", [](Locale& l) { l.clearOverridingDecimalSeparator(); }},
        {"overridingThousandsSeparator", [](Locale& l) { l.overridingThousandsSeparator(); }},
        {"setOverridingThousandsSeparator", [](Locale& l) { l.setOverridingThousandsSeparator(L"x"); }},
        {"clearOverridingThousandsSeparator", [](Locale& l) { l.clearOverridingThousandsSeparator(); }},
        {"overridingDateSeparator", [](Locale& l) { l.overridingDateSeparator(); }},
        {"overridingDateOrdering", [](Locale& l) { l.overridingDateOrdering(); }},
        {"setOverridingDateInputFormat", [](Locale& l) { l.setOverridingDateInputFormat(L"x", Locale::kDMY); }},
        {"clearOverridingDateInputFormat", [](Locale& l) { l.clearOverridingDateInputFormat(); }},
        {"overridingTimeSeparator", [](Locale& l) { l.overridingTimeSeparator(); }},
        {"overriding24Hours", [](Locale& l) { l.overriding24Hours(); }},
        {"setOverridingTimeInputFormat", [](Locale& l) { l.setOverridingTimeInputFormat(L"x", Locale::kIs24HR); }},
        {"clearOverridingTimeInputFormat", [](Locale& l) { l.clearOverridingTimeInputFormat(); }},
    };
    return kOperations;
}

TEST(InvalidLocale, EveryOperationThrowsAndNamesTheImplementation)
{
    for (const Operation& each : operations()) {
        Locale locale;
        try {
            each.m_fCall(locale);
            ADD_FAILURE() << each.m_pName << " did not throw";
        } catch (const vel::InvalidHandleException& exception) {
            EXPECT_THAT(exception.what(), testing::HasSubstr("vel::i18n_details::XmlLocaleImpl")) << each.m_pName;
        }
        EXPECT_FALSE(locale.isValid()) << each.m_pName;
    }
}

TEST(InvalidLocale, ItsDateOrderThrowsRatherThanBeingTheDefault)
{
    EXPECT_THROW(Locale().getDateOrder(), vel::InvalidHandleException);
}

TEST(InvalidLocale, CopyingSwappingAndTheStaticHelpersWork)
{
    Locale invalid;
    const Locale copy = invalid;
    Locale assigned = Locale::kUSA;
    assigned = invalid;
    assigned.swap(invalid);
    EXPECT_FALSE(copy.isValid());
    EXPECT_FALSE(assigned.isValid());
    EXPECT_EQ(Locale::kYMD, Locale::getDateOrderByString(L"ym"));
}

TEST(InvalidLocale, ADefinitionMakesItValid)
{
    Locale locale;
    const vel::XmlDocument document = vel::XmlDocument::parse("<localeDefinition/>");
    locale.applyXmlDefinition(document.root());
    EXPECT_TRUE(locale.isValid());
    EXPECT_EQ(Locale::kMDY, locale.getDateOrder());
}

}  // namespace
