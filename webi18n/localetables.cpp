#include "localetables.h"

#include "webi18n/localenames.h"

namespace vel::i18n_details {

namespace {

const StringEnumMap<Locale::StringInfo>::Entry s_StringInfoEntries[] = {
    {Locale::kDateShortFormat, L"dateShortFormat"},
    {Locale::kDateLongFormat, L"dateLongFormat"},
    {Locale::kTimeFormat, L"timeFormat"},
    {Locale::kDateInputFormat, L"dateInputFormat"},
    {Locale::kTimeInputFormat, L"timeInputFormat"},
    {Locale::kAM, L"am"},
    {Locale::kPM, L"pm"},
    {Locale::kTimeSeparator, L"timeSeparator"},
    {Locale::kDateSeparator, L"dateSeparator"},
    {Locale::kThousandsSeparator, L"thousandsSeparator"},
    {Locale::kMonetaryThousandsSeparator, L"monetaryThousandsSeparator"},
    {Locale::kDecimalSeparator, L"decimalSeparator"},
    {Locale::kMonetaryDecimalSeparator, L"monetaryDecimalSeparator"},
    {Locale::kListSeparator, L"listSeparator"},
    {Locale::kPrimaryCurrencySymbol, L"primaryCurrencySymbol"},
    {Locale::kNegativeNumberTemplate, L"negativeNumberTemplate"},
    {Locale::kDefaultLanguage, L"defaultLanguage"},
    {Locale::kLocaleMessageName, L"localeDisplayMessage"},
    {Locale::kCollationImplementation, L"collationImplementation"},
    {Locale::kCollationNLS_SORT, L"collationNLS_SORT"},
    {Locale::kCharactersetList, L"characterSetList"},
    {Locale::kPercentFormat, L"percentFormat"},
    {Locale::kPercentSymbolLocation, L"percentSymbolLocation"},
};

const StringEnumMap<Locale::NameType>::Entry s_NameTypeEntries[] = {
    {Locale::kNominitiveMonth, L"monthNames"},        {Locale::kGenetiveMonth, L"genetiveMonthNames"},
    {Locale::kAbbreviatedMonth, L"abbrevMonthNames"}, {Locale::kDay, L"dayNames"},
    {Locale::kAbbreviatedDay, L"abbrevDayNames"},     {Locale::kDateFormats, L"dateFormats"},
    {Locale::kTimeFormats, L"timeFormats"},           {Locale::kDateTimeFormats, L"dateTimeFormats"},
};

const StringEnumMap<Locale::DateOrder>::Entry s_DateOrderEntries[] = {
    {Locale::kMDY, L"mdy"},
    {Locale::kYMD, L"ymd"},
    {Locale::kDMY, L"dmy"},
};

}  // namespace

VEL_INIT_TABLES const StaticValue<StringEnumMap<Locale::StringInfo>> s_StringInfoMap([] {
    return StringEnumMap<Locale::StringInfo>(s_StringInfoEntries, Locale::kStringInfoEnd_);
});
VEL_INIT_TABLES const StaticValue<StringEnumMap<Locale::NameType>> s_NameTypeMap([] {
    return StringEnumMap<Locale::NameType>(s_NameTypeEntries, Locale::kNameTypeEnd_);
});
VEL_INIT_TABLES const StaticValue<StringEnumMap<Locale::DateOrder>> s_DateOrderMap([] {
    return StringEnumMap<Locale::DateOrder>(s_DateOrderEntries, Locale::kDateOrderEnd_);
});

void requireTables()
{
    static_cast<void>(*s_StringInfoMap);
    static_cast<void>(*s_NameTypeMap);
    static_cast<void>(*s_DateOrderMap);
}

}  // namespace vel::i18n_details

const wchar_t* const s_pDayNames[7] = {L"Sunday",   L"Monday", L"Tuesday", L"Wednesday",
                                       L"Thursday", L"Friday", L"Saturday"};
const wchar_t* const s_pMonthNames[12] = {L"January", L"February", L"March",     L"April",   L"May",      L"June",
                                          L"July",    L"August",   L"September", L"October", L"November", L"December"};
const wchar_t* const s_pAbbrevMonths[12] = {L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun",
                                            L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"};
const wchar_t* const s_pAbbrevDays[7] = {L"Sun", L"Mon", L"Tue", L"Wed", L"Thu", L"Fri", L"Sat"};
