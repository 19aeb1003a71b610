#include "currencyanswer.h"

#include "facts.h"
#include "failures.h"
#include "text.h"

namespace cli {

namespace {

using vel::Currency;
using vel::String;

constexpr const wchar_t* ksDefaultLanguage = L"en";
constexpr const wchar_t* ksHeading = L"kmsgCurrencyFormatLocaleCurrencyHeading";  // of local currencies

/// By tag. Appended: looking each up among those before would take long where a file has very many.
Json negativeFormats(const Currency& currency)
{
    Json json = Json::object();
    auto& members = json.get_ref<Json::object_t&>();
    for (const auto& [tag, negative] : currency.getNegativeFormats()) {
        members.push_back({utf8Text(tag), utf8Text(negative.getFormat())});
    }
    return json;
}

/// The key of a caption; empty when there is none.
String keyOf(const vel::GDVariant& caption)
{
    const vel::Message* message = caption.asMessage();
    return message == nullptr ? String() : message->keyOrText();
}

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
    m_tCaptions.emplace(session, language.isEmpty() ? String(ksDefaultLanguage) : language);
    return true;
}

void CurrencyAnswer::answer(const Currency& currency, Session& session, Output& output)
{
    if (currency.getType() == Currency::kLocal && !m_bLocalesKnown) {
        // The captions of local currencies name their locale as the process's catalogue knows it.
        vel::LocaleTagLookup::getInstanceHandle() = session.catalogue();
        m_bLocalesKnown = true;
    }
    const Json json = describe(currency);
    output.answer(json, output.isJson() ? Facts() : factsOf(json));
}

Json CurrencyAnswer::describe(const Currency& currency) const
{
    Json json;
    json["tag"] = utf8Text(currency.getTag());
    json["type"] = currency.getType() == Currency::kLocal ? "local" : "international";
    json["symbol"] = utf8Text(currency.getCurrencySymbol());
    json["digits"] = currency.getDefaultDigits();
    json["format"] = utf8Text(currency.getFormat());
    json["negativeFormats"] = negativeFormats(currency);
    json["preferredNegativeTag"] = utf8Text(currency.getPreferredNegativeTag());
    json["display"] = currency.displayAsChoice();
    json["placeholder"] = currency.isPlaceholder();
    json["thousandsSeparator"] = currency.useThousandsSeparator();
    addCaptions(currency, json);
    return json;
}

void CurrencyAnswer::addCaptions(const Currency& currency, Json& json) const
{
    vel::GDAdjustableSizeVariant<16> text;
    currency.getDisplayMessage(text);
    const String captionKey = keyOf(text);
    const Captions::Table& captions = m_tCaptions->tableFor(m_tCaptions->has(captionKey) ? captionKey : ksHeading);
    currency.getResolvedCurrencyDisplayMessage(captions, text);
    json["caption"] = utf8Text(Captions::format(text, captions));

    currency.getDisplayName(text);
    const String nameKey = keyOf(text);
    const Captions::Table& names = m_tCaptions->has(nameKey) ? m_tCaptions->tableFor(nameKey) : captions;
    currency.getResolvedCurrencyDisplayName(names, text);
    json["name"] = utf8Text(Captions::format(text, names));
}

}  // namespace cli
