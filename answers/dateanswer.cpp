#include "answers/dateanswer.h"

#include <utility>
#include <vector>

#include "answers/text.h"

namespace answers {

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
using Reading = ParseDateTime::Explanation;

bool saySame(const Reading& a, const Reading& b)
{
    return a.m_eFound == b.m_eFound && (a.m_eFound == ParseDateTime::kParseError || a.m_tValue == b.m_tValue);
}

/// The readings under the orders that are not the locale's, where the text can be read and says something else.
std::vector<Reading> alternativesTo(const Reading& reading, const String& text, const Locale& locale,
                                    ParseDateTime::Fields expected)
{
    std::vector<Reading> alternatives;
    for (const Locale::DateOrder order : {Locale::kMDY, Locale::kDMY, Locale::kYMD}) {
        Locale other = locale;
        other.setOverridingDateInputFormat(locale.overridingDateSeparator(), order);
        const Reading otherwise = ParseDateTime::explain(text, other, expected);
        if (otherwise.m_eFound != ParseDateTime::kParseError && !saySame(otherwise, reading)) {
            alternatives.push_back(otherwise);
        }
    }
    return alternatives;
}

Json conventionsUsed(const Reading& reading, const Locale& locale)
{
    Json json;
    json["dateOrder"] = utf8Text(reading.m_sDateOrder);
    json["dateSeparator"] = utf8Text(locale.getInfoView(Locale::kDateSeparator));
    json["timeSeparator"] = utf8Text(locale.getInfoView(Locale::kTimeSeparator));
    json["am"] = utf8Text(locale.getInfoView(Locale::kAM));
    json["pm"] = utf8Text(locale.getInfoView(Locale::kPM));
    return json;
}

void addReading(const Reading& reading, Json& json)
{
    json["result"] = static_cast<unsigned>(reading.m_eFound);
    json["fields"] = fieldNames(reading.m_eFound);
    if (reading.m_eFound != ParseDateTime::kParseError) {
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
    const Reading reading = ParseDateTime::explain(text, locale, expected);
    const std::vector<Reading> alternatives = alternativesTo(reading, text, locale, expected);
    Json json;
    json["text"] = utf8Text(text);
    addReading(reading, json);
    json["ambiguous"] = reading.m_eFound != ParseDateTime::kParseError && !alternatives.empty();
    json["alternatives"] = Json::array();
    for (const Reading& each : alternatives) {
        Json alternative;
        alternative["dateOrder"] = utf8Text(each.m_sDateOrder);
        addReading(each, alternative);
        json["alternatives"].push_back(std::move(alternative));
    }
    json["used"] = conventionsUsed(reading, locale);
    return json;
}

}  // namespace answers
