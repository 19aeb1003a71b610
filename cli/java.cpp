#include "absentlocale.h"
#include "answers/javaanswer.h"
#include "subcommand.h"
#include "text.h"
#include "textargument.h"
#include "webi18n/nlsutils.h"

namespace cli {

namespace {

using vel::JavaLocale;
using vel::Locale;
using vel::String;

class Java final : public Subcommand
{
public:
    explicit Java(CLI::App& app)
    {
        m_tName.addTo(app, "NAME", "the name of an allowed locale's definition, such as fr-ca");
        app.add_option("--ui-language", m_tLanguage, "the interface language, such as en or pt-BR")
            ->type_name("TAG")
            ->take_last();
    }

    ExitCode run(Session& session, Output& output) override
    {
        const String language = wideText(m_tLanguage.value_or(""), "--ui-language");
        return m_tName.forEach(session, output, [&](const String& name) {
            Locale locale;
            if (!session.catalogue()->findLocaleByDefinitionName(name, locale)) {
                refuseLocale(name, session, output);
                return false;
            }
            answer(m_tLanguage ? vel::NLSUtils::languageLocaleToJavaLocale(vel::KWWUILanguage(language), locale)
                               : vel::NLSUtils::localeToJavaLocale(locale),
                   output);
            return true;
        });
    }

private:
    static void answer(const JavaLocale& java, Output& output)
    {
        // A script wants the one word.
        output.row(answers::describeJava(java), visibleText(java.toString()));
    }

    TextArgument m_tName;
    std::optional<std::string> m_tLanguage;
};

}  // namespace

std::unique_ptr<Subcommand> addJava(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("java", "A locale as Java writes it");
    sub->footer(
        "With --json answers with language, country, variant and string. A definition's name without a hyphen gives\n"
        "the empty string. With --ui-language that language counts, and with a hyphen in it the locale does not.\n\n"
        "  webi18n java fr-ca\n"
        "  webi18n java fr-ca --ui-language de --json");
    return std::make_unique<Java>(*sub);
}

}  // namespace cli
