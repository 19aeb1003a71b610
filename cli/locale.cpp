#include "facts.h"
#include "subcommand.h"
#include "text.h"
#include "textargument.h"
#include "useroverrides.h"

namespace cli {

namespace {

using vel::Locale;
using vel::String;

Json asJson(const std::vector<String>& texts)
{
    Json json = Json::array();
    for (const String& text : texts) {
        json.push_back(utf8Text(text));
    }
    return json;
}

/// The month or day names as dates show them, the fallbacks included.
std::vector<String> effectiveNames(const Locale& locale, Locale::NameType type)
{
    const unsigned count = type == Locale::kDay || type == Locale::kAbbreviatedDay ? 7 : 12;
    std::vector<String> names;
    for (unsigned index = 0; index < count; ++index) {
        names.push_back(locale.getNameAsString(type, index));
    }
    return names;
}

void addStrings(const Locale& locale, Json& json)
{
    for (unsigned info = 0; info < Locale::kStringInfoEnd_; ++info) {
        const auto each = static_cast<Locale::StringInfo>(info);
        json[utf8Text(Locale::stringInfoMap().find(each))] = utf8Text(locale.getInfoAsString(each));
    }
}

void addStoredNames(const Locale& locale, Json& json)
{
    for (unsigned type = 0; type < Locale::kNameTypeEnd_; ++type) {
        const auto each = static_cast<Locale::NameType>(type);
        json[utf8Text(Locale::nameTypeMap().find(each))] = asJson(locale.storedNames(each));
    }
}

void addScaleFactors(const Locale& locale, Json& json)
{
    json["scaleFactors"] = Json::array();
    for (const auto& [name, value] : locale.getScaleFactors()) {
        json["scaleFactors"].push_back(Json::array({utf8Text(name), utf8Text(value)}));
    }
}

Json effective(const Locale& locale)
{
    Json json = Json::object();
    for (unsigned type = Locale::kNominitiveMonth; type <= Locale::kAbbreviatedDay; ++type) {
        const auto each = static_cast<Locale::NameType>(type);
        json[utf8Text(Locale::nameTypeMap().find(each))] = asJson(effectiveNames(locale, each));
    }
    std::vector<String> formats;
    locale.getAllNames(Locale::kDateTimeFormats, formats);
    json["dateTimeFormats"] = asJson(formats);
    return json;
}

Json describe(const Locale& locale)
{
    Json json;
    json["locale"] = utf8Text(locale.definitionName());
    addStrings(locale, json);
    json["dateOrder"] = utf8Text(Locale::getDateOrderString(locale.getDateOrder()));
    json["24hours"] = locale.is24Hours();
    json["firstDayOfWeek"] = locale.getFirstDayOfWeek();
    if (locale.hasOverridingCurrencyTag()) {
        json["currencyTag"] = utf8Text(locale.overridingCurrencyTag());
    }
    addStoredNames(locale, json);
    addScaleFactors(locale, json);
    json["effective"] = effective(locale);
    return json;
}

class ShowLocale final : public Subcommand
{
public:
    explicit ShowLocale(CLI::App& app)
    {
        m_tName.addTo(app, "NAME", "the name of an allowed locale's definition, such as fr-ca");
        app.add_option("--user", m_tOverrides, "what the user sets instead: " + userOverrideNames())
            ->type_name("KEY=VALUE")
            ->allow_extra_args(false);
    }

    ExitCode run(Session& session, Output& output) override
    {
        Locale trial = Locale::kUSA;
        applyUserOverrides(m_tOverrides, trial);
        return m_tName.forEach(session, output, [&](const String& name) {
            Locale locale;
            if (!session.catalogue()->findLocaleByDefinitionName(name, locale)) {
                refuse(name, session, output);
                return false;
            }
            applyUserOverrides(m_tOverrides, locale);
            const Json json = describe(locale);
            output.answer(json, output.isJson() ? Facts() : factsOf(json));
            return true;
        });
    }

private:
    static void refuse(const String& name, Session& session, Output& output)
    {
        const std::string problem = session.absenceOf(name);
        if (!output.isBatch()) {
            complain("error", visibleText(name) + ": " + problem);
            return;
        }
        Json json;
        json["locale"] = utf8Text(name);
        json["error"] = problem;
        output.answer(json, {{"locale", quotedText(name)}, {"error", problem}});
    }

    TextArgument m_tName;
    std::vector<std::string> m_tOverrides;
};

}  // namespace

std::unique_ptr<Subcommand> addLocale(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("locale", "Everything that a locale holds");
    sub->footer(
        "Shows the string properties, dateOrder, 24hours and firstDayOfWeek with the user's settings applied, the\n"
        "lists as the definition has them, and under \"effective\" the names and formats that are used.\n\n"
        "  webi18n locale fr-ca\n"
        "  webi18n locale fr-ca --user dateSeparator=. --user dateOrder=dmy --json");
    return std::make_unique<ShowLocale>(*sub);
}

}  // namespace cli
