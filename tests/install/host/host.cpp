#include <algorithm>
#include <iostream>
#include <utility>
#include <vector>

#include <vel/config/configreader.h>
#include <vel/messages/messagefilesregistry.h>
#include <webi18n/charactersetresolver.h>
#include <webi18n/collator.h>
#include <webi18n/currencylookup.h>
#include <webi18n/languagelists.h>
#include <webi18n/localemapping.h>
#include <webi18n/localetaglookup.h>
#include <webi18n/parsedatetime.h>

// A program that knows the library by its installed package only: it starts it as a server does, serves one request,
// and says what it found. host.expected has the answers.

namespace {

void show(const char* what, const vel::String& value)
{
    std::cout << what << ": " << vel::toUtf8Lossy(value) << '\n';
}

/// Everything that is loaded once, on one thread, before requests are served.
class Catalogues
{
public:
    explicit Catalogues(const vel::String& folder)
    {
        const vel::XmlConfigReader config(folder + L"/config.xml");
        vel::LocaleTagLookup::getInstanceForLoading().loadLocaleDefinitions(config, folder + L"/localedefinitions.xml");
        m_tMapping.loadMappings(folder + L"/localemapping.xml");
        m_tLanguages.loadConfig(config, vel::kConfigInitialize);
        vel::CurrencyLookup::getInstance().loadCurrencies(folder + L"/currencies.xml");
        m_tCharacterSets.loadCharacterSetDefinitions(folder + L"/charactersets.xml");
        m_tCharacterSets.loadCharacterSetLists(folder + L"/charactersetlists.xml");
    }

    const vel::LocaleMapping& mapping() const { return m_tMapping; }
    const vel::CharacterSetResolver& characterSets() const { return m_tCharacterSets; }

private:
    vel::LocaleMapping m_tMapping;
    vel::LanguageLists m_tLanguages;
    vel::CharacterSetResolver m_tCharacterSets;
    // Taken by the first thread, held as long as any thread sorts.
    vel::Handle<vel::i18n::NLSEnvironment> m_hSorting = vel::i18n::NLSEnvironment::getEnvironmentGuard();
};

void showDate(const vel::Locale& locale)
{
    vel::DateTime date;
    const auto found = vel::ParseDateTime::parse(L"31.12.2005", locale, vel::ParseDateTime::kDate, date);
    std::cout << "31.12.2005: ";
    if (found != vel::ParseDateTime::kDate) {
        std::cout << "not a date\n";
        return;
    }
    std::cout << "year " << date.m_nYear << ", month " << date.m_nMonth << ", day " << date.m_nDay << '\n';
}

void showCurrency(const vel::String& tag)
{
    const auto currency = vel::CurrencyLookup::getInstance().lookupCurrencyTag(tag);
    show(vel::toUtf8Lossy(tag).c_str(), currency.isNull() ? vel::String(L"none") : currency->getCurrencySymbol());
}

void showBytes(const vel::CharacterSetResolver& characterSets, const vel::String& label, const vel::String& text)
{
    const auto definition = characterSets.getCharacterSetDefinition(label);
    vel::NarrowString bytes;
    if (!definition.isNull()) {
        characterSets.createCharacterSet(label, *definition)->getTranscoding().encode(text, bytes);
    }
    std::cout << vel::toUtf8Lossy(label) << ':' << std::hex;
    for (const char byte : bytes.view()) {
        std::cout << ' ' << static_cast<unsigned>(static_cast<unsigned char>(byte));
    }
    std::cout << std::dec << '\n';
}

void showSorted(const vel::Locale& locale, std::vector<vel::String> texts)
{
    vel::i18n::NLSThreadContext context(vel::i18n::NLSEnvironment::getDefaultEnvironment());
    vel::i18n::Collator collator(context, locale, vel::i18n::kCollationStrengthDefault);
    std::sort(texts.begin(), texts.end(), [&](const vel::String& left, const vel::String& right) {
        return collator.compare(left.view(), right.view()) < 0;
    });
    vel::String line;
    for (const vel::String& text : texts) {
        line += (line.isEmpty() ? L"" : L" ") + text;
    }
    show("sorted", line);
}

void serve(const Catalogues& catalogues)
{
    const auto [locale, language] = catalogues.mapping().mapLocale(L"fr-CA,fr;q=0.9,en;q=0.8", L"");
    show("locale", locale.definitionName());
    show("language", language);
    vel::Locale mine = locale;
    mine.setOverridingDateInputFormat(L".", vel::Locale::kDMY);
    show("typed dates", locale.getInfoAsString(vel::Locale::kDateInputFormat));
    show("mine", mine.getInfoAsString(vel::Locale::kDateInputFormat));
    showDate(mine);
    showCurrency(L"loc:de-de");
    showCurrency(L"XYZ");
    showBytes(catalogues.characterSets(), L"windows-1252", L"ao\u00fbt \u20ac");
    showSorted(locale, {L"c\u00f4t\u00e9", L"cot\u00e9", L"c\u00f4te", L"cote"});
}

}  // namespace

int main(int count, char** arguments)
{
    try {
        const Catalogues catalogues(vel::stringFromUtf8(count == 2 ? arguments[1] : ".").value());
        serve(catalogues);
        for (const vel::String& file : vel::MessageFilesRegistry::getInstance().files()) {
            show("messages", file);
        }
        return 0;
    } catch (const vel::Exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
