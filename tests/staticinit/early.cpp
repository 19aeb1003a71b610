// Uses the library from static initialisers, and once more from a static object's destructor: its static data must be
// there before every initialiser of a program and after every destructor, in whatever order the files are linked.

#include "early.h"

#include <unistd.h>

#include <exception>

#include "vel/log/logger.h"
#include "vel/messages/messagefilesregistry.h"
#include "vel/transcoding/universaltranscoding.h"
#include "vel/xml/xmldocument.h"
#include "webi18n/currencylookup.h"
#include "webi18n/locale.h"
#include "webi18n/localemapping.h"
#include "webi18n/localenames.h"
#include "webi18n/localetaglookup.h"
#include "webi18n/parsedatetime.h"

namespace {

struct Record
{
    std::vector<std::string> m_tFaults;
    int m_nChecks = 0;
};

Record& record()
{
    static Record s_record;
    return s_record;
}

void check(bool holds, const char* what)
{
    ++record().m_nChecks;
    if (!holds) {
        record().m_tFaults.emplace_back(what);
    }
}

/// Runs one group of checks; what it throws is a fault too, as nothing could catch it in an initialiser.
bool runEarly(const char* group, void (*checks)())
{
    try {
        checks();
    } catch (const std::exception& error) {
        check(false, (std::string(group) + ": " + error.what()).c_str());
    }
    return true;
}

void useBuiltInLocale()
{
    check(vel::Locale::kUSA.isValid(), "kUSA is built");
    const vel::Locale copy = vel::Locale::kUSA;
    check(copy.definitionName() == L"en-us", "kUSA has its name");
    check(copy.getInfoAsString(vel::Locale::kDateShortFormat) == L"M/d/yyyy", "kUSA has its short date format");
    check(copy.getNameAsString(vel::Locale::kDay, 0) == L"Monday", "kUSA has its day names");
    vel::Locale mine = copy;
    mine.setOverridingDecimalSeparator(L",");
    check(mine.getInfoAsString(vel::Locale::kDecimalSeparator) == L",", "a copy of kUSA can be changed");
    check(copy.getInfoAsString(vel::Locale::kDecimalSeparator) == L".", "kUSA stays as it was");
}

void useMaps()
{
    check(vel::Locale::stringInfoMap().find(L"decimalSeparator") == vel::Locale::kDecimalSeparator,
          "the property names are there");
    check(vel::Locale::nameTypeMap().find(L"dayNames") == vel::Locale::kDay, "the list names are there");
    check(vel::Locale::getDateOrderString(vel::Locale::kYMD) == L"ymd", "the date orders are there");
    check(vel::Locale::getDateOrderByString(L"dm") == vel::Locale::kDMY, "the date orders are read");
    check(std::wstring(s_pMonthNames[11]) == L"December", "the English names are there");
}

void useDefinition()
{
    const vel::XmlDocument document = vel::XmlDocument::parse(
        "<localeDefinition name='xx-yy'><property name='decimalSeparator'>;</property></localeDefinition>");
    vel::Locale locale;
    locale.applyXmlDefinition(document.root());
    check(locale.definitionName() == L"xx-yy", "a definition is applied");
    check(locale.getInfoAsString(vel::Locale::kDecimalSeparator) == L";", "its properties are read");
}

void useDates()
{
    const vel::XmlDocument document = vel::XmlDocument::parse(
        "<localeDefinition name='xx-yy'><property name='pm'>\xD9\x85</property></localeDefinition>");
    vel::Locale locale;
    locale.applyXmlDefinition(document.root());
    vel::DateTime time;
    vel::ParseDateTime::parse(L"1 \x645", locale, vel::ParseDateTime::kTime, time);
    check(time.m_nHour == 13, "a marker of another script than Latin is seen");
}

void useCatalogue()
{
    vel::Locale found;
    check(!vel::LocaleTagLookup::getInstance().findLocaleByDefinitionName(L"en-us", found),
          "the catalogue is there and allows nothing");
    const vel::LocaleMapping mapping;
    check(mapping.mapLocale(L"de-CH", L"").first.definitionName() == L"en-us", "mapping without rules gives kUSA");
}

void useCurrencies()
{
    const vel::CurrencyLookup& currencies = vel::CurrencyLookup::getInstance();
    check(currencies.getCurrencyList().empty(), "the currencies are there and none is loaded");
    check(currencies.lookupCurrencyTag(L"EUR").isNull() && currencies.lookupCurrencySymbol(L"").isNull(),
          "a currency is looked for");
    vel::GDVariant caption;
    vel::makeHandle<vel::Currency>()->getResolvedCurrencyDisplayName({}, caption);
    check(caption.toString().isEmpty(), "an empty currency has its empty symbol as caption");
}

void useTranscoding()
{
    vel::NarrowString bytes;
    check(!vel::UniversalTranscoding(L"shift_jis").encode(L"\u3042", bytes) && bytes == "\x82\xA0",
          "a transcoding encodes");
}

void useLogAndMessages()
{
    static constexpr vel::LogSource kSource(L"early");
    const vel::ScopedLogSource scope(kSource);
    VEL_LOG(vel::kLogInformation, vel::Message::text(L"early"));
    check(vel::ScopedLogSource::current() == &kSource, "a log source can be current");
    bool registered = false;
    for (const vel::String& file : vel::MessageFilesRegistry::getInstance().files()) {
        registered = registered || file == L"i18nmessages.xml";
    }
    check(registered, "the library's message file is registered");
}

/// Lives as long as the program's static objects do.
struct UsesAtExit
{
    ~UsesAtExit()
    {
        const vel::Locale copy = vel::Locale::kUSA;
        if (copy.getInfoAsString(vel::Locale::kPM) != L"PM" ||
            vel::Locale::getDateOrderString(vel::Locale::kMDY) != L"mdy") {
            _exit(9);
        }
    }
};

const UsesAtExit g_usesAtExit;
const bool g_builtInLocale = runEarly("built-in locale", useBuiltInLocale);
const bool g_maps = runEarly("maps", useMaps);
const bool g_definition = runEarly("definition", useDefinition);
const bool g_dates = runEarly("dates", useDates);
const bool g_catalogue = runEarly("catalogue", useCatalogue);
const bool g_currencies = runEarly("currencies", useCurrencies);
const bool g_transcoding = runEarly("transcoding", useTranscoding);
const bool g_logAndMessages = runEarly("log and messages", useLogAndMessages);
const vel::Locale g_copy = vel::Locale::kUSA;

}  // namespace

const std::vector<std::string>& earlyFaults()
{
    check(g_copy.shareCount() > 1, "a static copy shares kUSA's data");
    return record().m_tFaults;
}

int earlyChecks()
{
    return record().m_nChecks;
}
