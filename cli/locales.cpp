#include "subcommand.h"
#include "text.h"
#include "vel/messages/messageformatter.h"

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
        const TableHandle wanted = session.messages(wideText(m_sLanguage, "--language"));
        const TableHandle english = session.messages(L"en");
        for (const vel::Locale& locale : locales) {
            answer(locale, displayName(locale, wanted, english), output);
        }
        return kExitSuccess;
    }

private:
    using TableHandle = vel::Handle<const vel::MessageTable>;

    static vel::String displayName(const vel::Locale& locale, const TableHandle& wanted, const TableHandle& english)
    {
        const vel::String key = locale.getInfoAsString(vel::Locale::kLocaleMessageName);
        const TableHandle& table = wanted->lookUp(key).isUndefinedOrNull() ? english : wanted;
        const vel::GDVariant message = locale.getLocaleMessage(table);
        const vel::Message* text = message.asMessage();
        return text == nullptr ? message.toString() : vel::MessageFormatter(table).format(*text);
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
