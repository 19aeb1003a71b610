#include "samples.h"

#include <chrono>
#include <tuple>

#include "answers/text.h"
#include "vel/core/stringbuffer.h"
#include "webi18n-render/datepicture.h"
#include "webi18n-render/rendernumber.h"

namespace server {

using answers::Json;
using answers::utf8Text;
using vel::DateTime;
using vel::Decimal;
using vel::Locale;
using vel::RenderNumber;
using vel::String;

namespace {

using Buffer = vel::StringBufferTemplate<wchar_t, 256>;

constexpr unsigned kDaysOfWeek = 7;

Json row(std::wstring_view picture, const Buffer& text)
{
    Json json;
    json["picture"] = utf8Text(picture);
    json["text"] = utf8Text(text.view());
    return json;
}

Json dateRow(std::wstring_view picture, const DateTime& moment, const Locale& locale)
{
    Buffer text;
    vel::DatePicture::append(picture, moment, locale, text);
    return row(picture, text);
}

void addNamed(Locale::StringInfo info, const DateTime& moment, const Locale& locale, Json& rows)
{
    Json named;
    named["name"] = utf8Text(Locale::stringInfoMap().find(info));
    named.update(dateRow(locale.getInfoView(info), moment, locale));
    rows.push_back(std::move(named));
}

void addList(Locale::NameType list, const DateTime& moment, const Locale& locale, Json& rows)
{
    std::vector<String> pictures;
    locale.getAllNames(list, pictures);
    for (const String& picture : pictures) {
        rows.push_back(dateRow(picture, moment, locale));
    }
}

using Append = void (*)(const Decimal&, const Locale&, Buffer&);

void appendWhole(const Decimal& number, const Locale& locale, Buffer& text)
{
    RenderNumber::append(number, locale, {}, text);
}

/// In units of the largest factor with two digits; nothing for a number that is too small for any.
void appendScaled(const Decimal& number, const Locale& locale, Buffer& text)
{
    if (const auto* factor = RenderNumber::findScaleFactor(number, locale)) {
        RenderNumber::appendScaled(number, *factor, locale, {2, true}, text);
    }
}

void appendPercent(const Decimal& ratio, const Locale& locale, Buffer& text)
{
    RenderNumber::appendPercent(ratio, locale, {}, text);
}

std::string amountText(const Decimal& amount, const vel::Currency& currency, const String& negativeTag,
                       const Locale& locale)
{
    Buffer text;
    RenderNumber::appendAmount(amount, currency, negativeTag, locale, {}, text);
    return utf8Text(text.view());
}

std::chrono::sys_days daysOf(const DateTime& date)
{
    return std::chrono::year(date.m_nYear) / std::chrono::month(date.m_nMonth) / 1;
}

/// 0 (Monday) to 6 (Sunday).
unsigned dayOfWeek(std::chrono::sys_days day)
{
    return std::chrono::weekday(day).iso_encoding() - 1;
}

Json dayNames(const Locale& locale, Locale::NameType type)
{
    Json names = Json::array();
    for (unsigned place = 0; place < kDaysOfWeek; ++place) {
        const unsigned day = (locale.getFirstDayOfWeek() + place) % kDaysOfWeek;
        names.push_back(utf8Text(locale.getNameAsString(type, day)));
    }
    return names;
}

Json weeksOf(const Locale& locale, const DateTime& date)
{
    const std::chrono::sys_days first = daysOf(date);
    const auto last = std::chrono::year(date.m_nYear) / std::chrono::month(date.m_nMonth) / std::chrono::last;
    const unsigned before = (dayOfWeek(first) + kDaysOfWeek - locale.getFirstDayOfWeek()) % kDaysOfWeek;
    const unsigned count = static_cast<unsigned>(last.day());
    Json weeks = Json::array();
    for (unsigned place = 0; place < before + count; place += kDaysOfWeek) {
        Json week = Json::array();
        for (unsigned each = place; each < place + kDaysOfWeek; ++each) {
            week.push_back(each < before || each >= before + count ? 0 : each - before + 1);
        }
        weeks.push_back(std::move(week));
    }
    return weeks;
}

}  // namespace

Json sampleDates(const Locale& locale, const DateTime& moment)
{
    Json rows = Json::array();
    addNamed(Locale::kDateShortFormat, moment, locale, rows);
    addNamed(Locale::kDateLongFormat, moment, locale, rows);
    addNamed(Locale::kDateInputFormat, moment, locale, rows);
    addList(Locale::kDateFormats, moment, locale, rows);
    return rows;
}

Json sampleTimes(const Locale& locale, const DateTime& moment)
{
    Json rows = Json::array();
    addNamed(Locale::kTimeFormat, moment, locale, rows);
    addNamed(Locale::kTimeInputFormat, moment, locale, rows);
    addList(Locale::kTimeFormats, moment, locale, rows);
    return rows;
}

Json sampleDateTimes(const Locale& locale, const DateTime& moment)
{
    Json rows = Json::array();
    addList(Locale::kDateTimeFormats, moment, locale, rows);
    return rows;
}

std::optional<Quantity> Quantity::of(std::wstring_view text)
{
    const auto number = Decimal::ofText(text);
    if (!number) {
        return std::nullopt;
    }
    text.remove_prefix(text.front() == L'-' || text.front() == L'+' ? 1 : 0);
    String negative(L"-");
    negative.append(text);
    return Quantity{*Decimal::ofText(text), *Decimal::ofText(negative)};
}

Json sampleNumbers(const Locale& locale, const Quantity& number)
{
    const Quantity ratio = {Decimal::ofInteger(256, 3), Decimal::ofInteger(-256, 3)};
    const std::tuple<const char*, Append, const Decimal&> kRows[] = {
        {"positive", &appendWhole, number.m_tPositive}, {"negative", &appendWhole, number.m_tNegative},
        {"scaled", &appendScaled, number.m_tPositive},  {"negativeScaled", &appendScaled, number.m_tNegative},
        {"percent", &appendPercent, ratio.m_tPositive}, {"negativePercent", &appendPercent, ratio.m_tNegative},
    };
    Json json = Json::object();
    for (const auto& [name, append, value] : kRows) {
        Buffer text;
        append(value, locale, text);
        json[name] = utf8Text(text.view());
    }
    return json;
}

Json sampleAmounts(const Locale& locale, const Quantity& amount, const vel::Currency& currency)
{
    Json json;
    json["tag"] = utf8Text(currency.getTag());
    json["positive"] = amountText(amount.m_tPositive, currency, String(), locale);
    json["negatives"] = Json::array();
    for (const auto& [tag, format] : currency.getNegativeFormats()) {
        Json negative;
        negative["tag"] = utf8Text(tag);
        negative["picture"] = utf8Text(format.getFormat());
        negative["text"] = amountText(amount.m_tNegative, currency, tag, locale);
        negative["preferred"] = tag == currency.getPreferredNegativeTag();
        json["negatives"].push_back(std::move(negative));
    }
    return json;
}

Json sampleMonth(const Locale& locale, const DateTime& date)
{
    Json json;
    json["year"] = date.m_nYear;
    json["month"] = date.m_nMonth;
    json["day"] = date.m_nDay;
    json["name"] = utf8Text(locale.getNameAsString(Locale::kNominitiveMonth, date.m_nMonth - 1U));
    json["firstDayOfWeek"] = locale.getFirstDayOfWeek();
    json["days"] = dayNames(locale, Locale::kDay);
    json["shortDays"] = dayNames(locale, Locale::kAbbreviatedDay);
    json["weeks"] = weeksOf(locale, date);
    return json;
}

vel::Handle<const vel::Currency> currencyOf(const Locale& locale, const vel::CurrencyLookup& currencies)
{
    if (locale.hasOverridingCurrencyTag()) {
        if (auto chosen = currencies.lookupCurrencyTag(locale.overridingCurrencyTag()); !chosen.isNull()) {
            return chosen;
        }
    }
    for (const auto& currency : currencies.getCurrencyList()) {
        if (currency->getType() == vel::Currency::kLocal &&
            currency->getLocaleDefinitionName().equalsNoCase(locale.definitionName())) {
            return currency;
        }
    }
    return currencies.lookupCurrencySymbol(locale.getInfoAsString(Locale::kPrimaryCurrencySymbol));
}

}  // namespace server
