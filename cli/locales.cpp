#include "answers/localename.h"
#include "subcommand.h"
#include "text.h"

namespace cli {

namespace {

class Locales final : public Subcommand
{
public:
    explicit Locales(CLI::App& app)
    {
        app.add_option("--language", m_sLanguage, "the language of the names (default: en)")
            ->type_name("L")
            ->take_last();
    }

    ExitCode run(Session& session, Output& output) override
    {
        std::vector<vel::Locale> locales;
        session.catalogue()->getSupportedLocales(locales);
        if (locales.empty()) {
            complain("note", "no locale is allowed by the configuration");
            return kExitSuccess;
        }
        const answers::Captions captions = session.captions(wideText(m_sLanguage, "--language"));
        for (const vel::Locale& locale : locales) {
            const vel::String name = answers::nameOf(locale, captions);
            output.row(answers::describeName(locale, captions),
                       visibleText(locale.definitionName()) + "\t" + visibleText(name) + "\t" +
                           visibleText(locale.getInfoAsString(vel::Locale::kDefaultLanguage)));
        }
        return kExitSuccess;
    }

private:
    std::string m_sLanguage = "en";
};

}  // namespace

std::unique_ptr<Subcommand> addLocales(CLI::App& app)
{
    CLI::App* sub = app.add_subcommand("locales", "The allowed locales with their names");
    sub->footer(
        "A line for each: locale, name, defaultLanguage; without --json with tabs between them. A name that\n"
        "the language lacks is the English one, and without that the locale's own.\n\n"
        "  webi18n locales --language fr");
    return std::make_unique<Locales>(*sub);
}

}  // namespace cli
