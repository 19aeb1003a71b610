#include "currencyanswer.h"

#include "answers/currencyanswer.h"
#include "facts.h"
#include "failures.h"
#include "text.h"

namespace cli {

namespace {

using vel::Currency;
using vel::String;

constexpr const wchar_t* ksDefaultLanguage = L"en";

}  // namespace

void CurrencyAnswer::addTo(CLI::App& app)
{
    app.add_option("--locale", m_sLocale, "an allowed locale, in whose language captions and names are shown")
        ->type_name("NAME")
        ->take_last();
    app.add_option("--language", m_sLanguage, "their language (default: that of --locale, else en)")
        ->type_name("L")
        ->take_last();
}

bool CurrencyAnswer::prepare(Session& session)
{
    String language = wideText(m_sLanguage, "--language");
    if (const String name = wideText(m_sLocale, "--locale"); !name.isEmpty()) {
        vel::Locale locale;
        if (!session.catalogue()->findLocaleByDefinitionName(name, locale)) {
            complain("error", visibleText(name) + ": " + session.absenceOf(name));
            return false;
        }
        // As for a request: the language that is asked for, else the locale's own.
        language = language.isEmpty() ? locale.getInfoAsString(vel::Locale::kDefaultLanguage) : language;
    }
    m_tCaptions.emplace(session.captions(language.isEmpty() ? String(ksDefaultLanguage) : language));
    return true;
}

void CurrencyAnswer::answer(const Currency& currency, Session& session, Output& output)
{
    if (currency.getType() == Currency::kLocal && !m_bLocalesKnown) {
        // The captions of local currencies name their locale as the process's catalogue knows it.
        vel::LocaleTagLookup::getInstanceHandle() = session.catalogue();
        m_bLocalesKnown = true;
    }
    const Json json = answers::describeCurrency(currency, *m_tCaptions);
    output.answer(json, output.isJson() ? Facts() : factsOf(json));
}

}  // namespace cli
