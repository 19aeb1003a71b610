#include "answers/dateanswer.h"
#include "datefields.h"
#include "subcommand.h"
#include "text.h"
#include "textargument.h"
#include "useroverrides.h"

namespace cli {

namespace {

using vel::Locale;
using vel::ParseDateTime;
using vel::String;

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
        const auto expected = answers::expectationOf(m_sExpect);
        if (!expected) {
            throw UsageError("--expect " + m_sExpect + ": accepted are " + answers::ksExpectationNames);
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
                               [&](const String& text) { return answer(text, locale, *expected, output); });
    }

private:
    static bool answer(const String& text, const Locale& locale, ParseDateTime::Fields expected, Output& output)
    {
        const Json json = answers::describeTyped(text, locale, expected);
        answerWithFacts(json, output);
        return json["result"] != 0;
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
