#include <map>

#include "datefields.h"
#include "subcommand.h"
#include "text.h"
#include "textargument.h"
#include "useroverrides.h"

namespace cli {

namespace {

using vel::DateTime;
using vel::Locale;
using vel::ParseDateTime;
using vel::String;

const std::map<std::string, ParseDateTime::Fields> kExpectations = {{"date", ParseDateTime::kDate},
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

class Parse final : public Subcommand
{
public:
    explicit Parse(CLI::App& app)
    {
        m_tText.addTo(app, "TEXT", "the date or time as it is typed");
        app.add_option("--locale", m_sLocale, "the name of an allowed locale's definition")
            ->required()
            ->type_name("NAME");
        app.add_option("--user", m_tOverrides, "what the user sets instead: " + userOverrideNames())
            ->type_name("KEY=VALUE")
            ->allow_extra_args(false);
        app.add_option("--expect", m_sExpect,
                       "date, time, datetime, timestamp (default), year-month, month-day or hour-minute")
            ->type_name("WHAT")
            ->take_last();
    }

    ExitCode run(Session& session, Output& output) override
    {
        const auto expected = kExpectations.find(m_sExpect);
        if (expected == kExpectations.end()) {
            throw UsageError("--expect " + m_sExpect +
                             ": accepted are date, time, datetime, timestamp, year-month, month-day and hour-minute");
        }
        Locale locale = Locale::kUSA;
        applyUserOverrides(m_tOverrides, locale);  // wrong settings are told before anything is loaded
        const String name = wideText(m_sLocale, "--locale");
        if (!session.catalogue()->findLocaleByDefinitionName(name, locale)) {
            complain("error", visibleText(name) + ": " + session.absenceOf(name));
            return kExitNoMatch;
        }
        applyUserOverrides(m_tOverrides, locale);
        return m_tText.forEach(session, output,
                               [&](const String& text) { return answer(text, locale, expected->second, output); });
    }

private:
    static bool answer(const String& text, const Locale& locale, ParseDateTime::Fields expected, Output& output)
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
        answerWithFacts(json, output);
        return reading.m_nFields != 0;
    }

    TextArgument m_tText;
    std::string m_sLocale;
    std::vector<std::string> m_tOverrides;
    std::string m_sExpect = "timestamp";
};

}  // namespace

std::unique_ptr<Subcommand> addParse(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("parse", "What a date or time that somebody types says in a locale");
    sub->footer(
        "\"result\" is the sum of the fields found (year 1, month 2, day 4, hour 8, minute 16, second 32, fraction "
        "64),\n"
        "0 when the text cannot be read; a single text that cannot exits with 1. \"alternatives\" are the readings of\n"
        "the same text under another date order that differ; with them a text that was read is \"ambiguous\".\n\n"
        "  webi18n parse --locale en-us 2/3/04\n"
        "  webi18n parse --locale de-de --expect date --json -");
    return std::make_unique<Parse>(*sub);
}

}  // namespace cli
