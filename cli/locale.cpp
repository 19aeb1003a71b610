#include "absentlocale.h"
#include "answers/localeanswer.h"
#include "facts.h"
#include "subcommand.h"
#include "text.h"
#include "textargument.h"
#include "useroverrides.h"

namespace cli {

namespace {

using vel::Locale;
using vel::String;

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
                refuseLocale(name, session, output);
                return false;
            }
            applyUserOverrides(m_tOverrides, locale);
            const Json json = answers::describeLocale(locale);
            output.answer(json, output.isJson() ? Facts() : factsOf(json));
            return true;
        });
    }

private:
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
