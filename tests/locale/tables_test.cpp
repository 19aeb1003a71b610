#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "localetables.h"
#include "printers.h"
#include "textrows.h"
#include "webi18n/localenames.h"
#include "xmllocale.h"

// The numbers of the enumerators and the names they have in definitions: hosts and files depend on both.

namespace {

using vel::Locale;
using vel::String;

struct NamedInfo
{
    Locale::StringInfo m_eInfo;
    unsigned m_nValue;
    const wchar_t* m_pName;
};

constexpr NamedInfo kStringInfos[] = {
    {Locale::kDateShortFormat, 0, L"dateShortFormat"},
    {Locale::kDateLongFormat, 1, L"dateLongFormat"},
    {Locale::kTimeFormat, 2, L"timeFormat"},
    {Locale::kDateInputFormat, 3, L"dateInputFormat"},
    {Locale::kTimeInputFormat, 4, L"timeInputFormat"},
    {Locale::kAM, 5, L"am"},
    {Locale::kPM, 6, L"pm"},
    {Locale::kTimeSeparator, 7, L"timeSeparator"},
    {Locale::kDateSeparator, 8, L"dateSeparator"},
    {Locale::kThousandsSeparator, 9, L"thousandsSeparator"},
    {Locale::kMonetaryThousandsSeparator, 10, L"monetaryThousandsSeparator"},
    {Locale::kDecimalSeparator, 11, L"decimalSeparator"},
    {Locale::kMonetaryDecimalSeparator, 12, L"monetaryDecimalSeparator"},
    {Locale::kListSeparator, 13, L"listSeparator"},
    {Locale::kPrimaryCurrencySymbol, 14, L"primaryCurrencySymbol"},
    {Locale::kNegativeNumberTemplate, 15, L"negativeNumberTemplate"},
    {Locale::kDefaultLanguage, 16, L"defaultLanguage"},
    {Locale::kLocaleMessageName, 17, L"localeDisplayMessage"},
    {Locale::kCharactersetList, 18, L"characterSetList"},
    {Locale::kCollationImplementation, 19, L"collationImplementation"},
    {Locale::kCollationNLS_SORT, 20, L"collationNLS_SORT"},
    {Locale::kPercentFormat, 21, L"percentFormat"},
    {Locale::kPercentSymbolLocation, 22, L"percentSymbolLocation"},
};

TEST(LocaleTables, EveryStringInfoHasItsNumberAndItsName)
{
    EXPECT_EQ(23U, std::size(kStringInfos));
    EXPECT_EQ(23U, Locale::kStringInfoEnd_);
    EXPECT_EQ(23U, Locale::stringInfoMap().size());
    for (const NamedInfo& each : kStringInfos) {
        EXPECT_EQ(each.m_nValue, each.m_eInfo);
        EXPECT_EQ(String(each.m_pName), Locale::stringInfoMap().find(each.m_eInfo));
        EXPECT_EQ(each.m_eInfo, Locale::stringInfoMap().find(each.m_pName));
    }
}

struct NamedType
{
    Locale::NameType m_eType;
    unsigned m_nValue;
    const wchar_t* m_pName;
};

constexpr NamedType kNameTypes[] = {
    {Locale::kNominitiveMonth, 0, L"monthNames"},        {Locale::kGenetiveMonth, 1, L"genetiveMonthNames"},
    {Locale::kAbbreviatedMonth, 2, L"abbrevMonthNames"}, {Locale::kDay, 3, L"dayNames"},
    {Locale::kAbbreviatedDay, 4, L"abbrevDayNames"},     {Locale::kDateFormats, 5, L"dateFormats"},
    {Locale::kTimeFormats, 6, L"timeFormats"},           {Locale::kDateTimeFormats, 7, L"dateTimeFormats"},
};

TEST(LocaleTables, EveryNameTypeHasItsNumberAndItsName)
{
    EXPECT_EQ(8U, std::size(kNameTypes));
    EXPECT_EQ(8U, Locale::kNameTypeEnd_);
    EXPECT_EQ(8U, Locale::nameTypeMap().size());
    for (const NamedType& each : kNameTypes) {
        EXPECT_EQ(each.m_nValue, each.m_eType);
        EXPECT_EQ(String(each.m_pName), Locale::nameTypeMap().find(each.m_eType));
        EXPECT_EQ(each.m_eType, Locale::nameTypeMap().find(each.m_pName));
    }
}

TEST(LocaleTables, EveryDateOrderHasItsNumberAndItsName)
{
    EXPECT_EQ(0U, Locale::kMDY);
    EXPECT_EQ(1U, Locale::kDMY);
    EXPECT_EQ(2U, Locale::kYMD);
    EXPECT_EQ(3U, Locale::kDateOrderEnd_);
    EXPECT_EQ(3U, Locale::dateOrderMap().size());
    EXPECT_EQ(String(L"mdy"), Locale::getDateOrderString(Locale::kMDY));
    EXPECT_EQ(String(L"dmy"), Locale::getDateOrderString(Locale::kDMY));
    EXPECT_EQ(String(L"ymd"), Locale::getDateOrderString(Locale::kYMD));
}

TEST(LocaleTables, TheOtherEnumerationsHaveTheirNumbers)
{
    EXPECT_EQ(0U, Locale::kLowerCase);
    EXPECT_EQ(1U, Locale::kUpperCase);
    EXPECT_EQ(0U, Locale::kNotDefined24HR);
    EXPECT_EQ(1U, Locale::kIs24HR);
    EXPECT_EQ(2U, Locale::kIs12HR);
    EXPECT_EQ(0U, Locale::kCollateNoCase);
    EXPECT_EQ(1U, Locale::kCollateCase);
}

TEST(LocaleTables, WhatIsNotThereGivesTheSentinelOrAnEmptyName)
{
    EXPECT_EQ(Locale::kStringInfoEnd_, Locale::stringInfoMap().find(L"AM"));
    EXPECT_EQ(Locale::kStringInfoEnd_, Locale::stringInfoMap().find(L""));
    EXPECT_EQ(Locale::kNameTypeEnd_, Locale::nameTypeMap().find(L"genitiveMonthNames"));
    EXPECT_EQ(Locale::kDateOrderEnd_, Locale::dateOrderMap().find(L"MDY"));
    EXPECT_TRUE(Locale::stringInfoMap().find(Locale::kStringInfoEnd_).isEmpty());
    EXPECT_TRUE(Locale::nameTypeMap().find(Locale::kNameTypeEnd_).isEmpty());
    EXPECT_TRUE(Locale::nameTypeMap().find(static_cast<Locale::NameType>(99)).isEmpty());
}

TEST(LocaleTables, TheSentinelDateOrderHasAnEmptyName)
{
    EXPECT_TRUE(Locale::getDateOrderString(Locale::kDateOrderEnd_).isEmpty());
    EXPECT_TRUE(Locale::getDateOrderString(static_cast<Locale::DateOrder>(4)).isEmpty());
    // One empty string for the whole process, so that the reference stays good.
    EXPECT_EQ(&Locale::getDateOrderString(Locale::kDateOrderEnd_),
              &Locale::getDateOrderString(static_cast<Locale::DateOrder>(77)));
}

/// The order that a row names. A name would not do for comparing: every value that is no order has the empty one.
Locale::DateOrder orderOfRow(const std::string& name)
{
    if (name == "mdy") {
        return Locale::kMDY;
    }
    if (name == "dmy") {
        return Locale::kDMY;
    }
    EXPECT_TRUE(name == "ymd" || name == "none") << name;
    return name == "ymd" ? Locale::kYMD : Locale::kDateOrderEnd_;
}

TEST(LocaleTables, DateOrdersAreReadLenientlyByLocaleAndExactlyByItsImplementation)
{
    for (const testsupport::TextRow& row : testsupport::readRows(WEBI18N_SOURCE_DIR "/dateorders.rows", 4)) {
        SCOPED_TRACE(row.trace());
        const Locale::DateOrder lenient = orderOfRow(row.field(1));
        EXPECT_EQ(lenient, Locale::getDateOrderByString(row.wide(0)));
        EXPECT_EQ(lenient, vel::i18n_details::XmlLocaleImpl::guessDateOrderByString(row.wide(0)));
        EXPECT_EQ(orderOfRow(row.field(2)), vel::i18n_details::XmlLocaleImpl::getDateOrderByString(row.wide(0)));
    }
}

TEST(LocaleTables, ClocksAreReadExactly)
{
    EXPECT_EQ(Locale::kIs24HR, Locale::getOverriding24Hours(L"true"));
    EXPECT_EQ(Locale::kIs12HR, Locale::getOverriding24Hours(L"false"));
    EXPECT_EQ(Locale::kNotDefined24HR, Locale::getOverriding24Hours(L""));
    EXPECT_EQ(Locale::kNotDefined24HR, Locale::getOverriding24Hours(L"false "));
    EXPECT_EQ(Locale::kNotDefined24HR, Locale::getOverriding24Hours(L"1"));
}

TEST(LocaleTables, AnUpperCaseClockIsNotDefined)
{
    EXPECT_EQ(Locale::kNotDefined24HR, Locale::getOverriding24Hours(L"TRUE"));
    EXPECT_EQ(Locale::kNotDefined24HR, Locale::getOverriding24Hours(L"False"));
}

TEST(LocaleTables, TheEnglishNamesBeginWithSundayAndJanuary)
{
    const std::wstring days[] = {L"Sunday", L"Monday", L"Tuesday", L"Wednesday", L"Thursday", L"Friday", L"Saturday"};
    const std::wstring months[] = {L"January", L"February", L"March",     L"April",   L"May",      L"June",
                                   L"July",    L"August",   L"September", L"October", L"November", L"December"};
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(days[i], s_pDayNames[i]);
        EXPECT_EQ(days[i].substr(0, 3), s_pAbbrevDays[i]);
    }
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_EQ(months[i], s_pMonthNames[i]);
        EXPECT_EQ(months[i].substr(0, 3), s_pAbbrevMonths[i]);
    }
}

}  // namespace
