#include "answers/dateanswer.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "answers/text.h"

namespace answers {

using vel::DateTime;
using vel::Locale;
using vel::ParseDateTime;
using vel::String;

namespace {

constexpr std::pair<std::string_view, ParseDateTime::Fields> kExpectations[] = {
    {"date", ParseDateTime::kDate},
    {"time", ParseDateTime::kTime},
    {"datetime", ParseDateTime::kDateTime},
    {"timestamp", ParseDateTime::kTimeStamp},
    {"year-month", ParseDateTime::kYearMonth},
    {"month-day", ParseDateTime::kMonthDay},
    {"hour-minute", ParseDateTime::kHourMinute}};

/// What the parser made of a text under one date order.
struct Reading
{
    Locale::DateOrder m_eOrder;
    unsigned m_nFields;
    DateTime m_tValue;

    bool saysTheSame(const Reading& other) const
    {
        return m_nFields == other.m_nFields && (m_nFields == 0 || m_tValue == other.m_tValue);
    }
};

Reading readText(const String& text, const Locale& locale, ParseDateTime::Fields expected)
{
    Reading reading{locale.getDateOrder(), 0, {}};
    reading.m_nFields = ParseDateTime::parse(text, locale, expected, reading.m_tValue);
    return reading;
}

/// The readings under the orders that are not the locale's, where the text can be read and says something else.
std::vector<Reading> alternativesTo(const Reading& reading, const String& text, const Locale& locale,
                                    ParseDateTime::Fields expected)
{
    std::vector<Reading> alternatives;
    for (const Locale::DateOrder order : {Locale::kMDY, Locale::kDMY, Locale::kYMD}) {
        Locale other = locale;
        other.setOverridingDateInputFormat(locale.overridingDateSeparator(), order);
        const Reading otherwise = readText(text, other, expected);
        if (otherwise.m_nFields != 0 && !otherwise.saysTheSame(reading)) {
            alternatives.push_back(otherwise);
        }
    }
    return alternatives;
}

/// Whether the first number of the text can only be a year, which makes the date year-first in every locale.
bool beginsWithYear(const String& text)
{
    const std::wstring_view view = text.view();
    const std::size_t begin = std::min(view.find_first_of(L"0123456789"), view.size());
    const std::size_t end = std::min(view.find_first_not_of(L"0123456789", begin), view.size());
    return end - begin > 2 || (end - begin == 2 && view.substr(begin, 2) > L"31");
}

std::string orderName(Locale::DateOrder order)
{
    return utf8Text(Locale::getDateOrderString(order));
}

Json conventionsUsed(const Reading& reading, const String& text, const Locale& locale)
{
    const bool isYearFirst = (reading.m_nFields & ParseDateTime::kYear) != 0 && beginsWithYear(text);
    Json json;
    json["dateOrder"] = orderName(isYearFirst ? Locale::kYMD : reading.m_eOrder);
    json["dateSeparator"] = utf8Text(locale.getInfoView(Locale::kDateSeparator));
    json["timeSeparator"] = utf8Text(locale.getInfoView(Locale::kTimeSeparator));
    json["am"] = utf8Text(locale.getInfoView(Locale::kAM));
    json["pm"] = utf8Text(locale.getInfoView(Locale::kPM));
    return json;
}

void addReading(const Reading& reading, Json& json)
{
    json["result"] = reading.m_nFields;
    json["fields"] = fieldNames(reading.m_nFields);
    if (reading.m_nFields != 0) {
        addDateTime(reading.m_tValue, json);
    }
}

}  // namespace

std::optional<ParseDateTime::Fields> expectationOf(std::string_view name)
{
    for (const auto& [each, fields] : kExpectations) {
        if (each == name) {
            return fields;
        }
    }
    return std::nullopt;
}

void addDateTime(const vel::DateTime& value, Json& json)
{
    json["year"] = value.m_nYear;
    json["month"] = value.m_nMonth;
    json["day"] = value.m_nDay;
    json["hour"] = value.m_nHour;
    json["minute"] = value.m_nMinute;
    json["second"] = value.m_nSecond;
    json["fraction"] = value.m_nFraction;
}

Json fieldNames(unsigned fields)
{
    static constexpr std::pair<unsigned, const char*> kNames[] = {{ParseDateTime::kYear, "year"},
                                                                  {ParseDateTime::kMonth, "month"},
                                                                  {ParseDateTime::kDay, "day"},
                                                                  {ParseDateTime::kHour, "hour"},
                                                                  {ParseDateTime::kMinute, "minute"},
                                                                  {ParseDateTime::kSecond, "second"},
                                                                  {ParseDateTime::kNanoseconds, "nanoseconds"}};
    Json names = Json::array();
    for (const auto& [field, name] : kNames) {
        if ((fields & field) != 0) {
            names.push_back(name);
        }
    }
    return names;
}

Json describeTyped(const String& text, const Locale& locale, ParseDateTime::Fields expected)
{
    const Reading reading = readText(text, locale, expected);
    const std::vector<Reading> alternatives = alternativesTo(reading, text, locale, expected);
    Json json;
    json["text"] = utf8Text(text);
    addReading(reading, json);
    json["ambiguous"] = reading.m_nFields != 0 && !alternatives.empty();
    json["alternatives"] = Json::array();
    for (const Reading& each : alternatives) {
        Json alternative;
        alternative["dateOrder"] = orderName(each.m_eOrder);
        addReading(each, alternative);
        json["alternatives"].push_back(std::move(alternative));
    }
    json["used"] = conventionsUsed(reading, text, locale);
    return json;
}

}  // namespace answers
