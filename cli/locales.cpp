#include "answers/captions.h"
#include "subcommand.h"
#include "text.h"

namespace cli {

namespace {

using answers::Captions;

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
        const Captions captions = session.captions(wideText(m_sLanguage, "--language"));
        for (const vel::Locale& locale : locales) {
            answer(locale, displayName(locale, captions), output);
        }
        return kExitSuccess;
    }

private:
    static vel::String displayName(const vel::Locale& locale, const Captions& captions)
    {
        const Captions::Table& table = captions.tableFor(locale.getInfoAsString(vel::Locale::kLocaleMessageName));
        return Captions::format(locale.getLocaleMessage(table), table);
    }

    static void answer(const vel::Locale& locale, const vel::String& name, Output& output)
    {
        Json json;
        json["locale"] = utf8Text(locale.definitionName());
        json["name"] = utf8Text(name);
        json["defaultLanguage"] = utf8Text(locale.getInfoAsString(vel::Locale::kDefaultLanguage));
        output.row(json, visibleText(locale.definitionName()) + "\t" + visibleText(name) + "\t" +
                             visibleText(locale.getInfoAsString(vel::Locale::kDefaultLanguage)));
    }

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
