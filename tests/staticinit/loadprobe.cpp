// Loaded by failingload: begins as a host does, and looks whether all of the library's static data is there.

#include <algorithm>
#include <new>

#include "vel/messages/messagefilesregistry.h"
#include "vel/xml/xmldocument.h"
#include "webi18n/charactersetresolver.h"
#include "webi18n/currencylookup.h"
#include "webi18n/locale.h"
#include "webi18n/localemapping.h"
#include "webi18n/localetaglookup.h"

namespace {

constexpr int kFirstCallTold = 101;

bool isRegistered()
{
    const std::vector<vel::String> files = vel::MessageFilesRegistry::getInstance().files();
    return std::find(files.begin(), files.end(), L"i18nmessages.xml") != files.end();
}

bool hasDefinitions()
{
    const vel::XmlDocument document = vel::XmlDocument::parse(
        "<localeDefinition name='xx-yy'><property name='decimalSeparator'>;</property></localeDefinition>");
    vel::Locale locale;
    locale.applyXmlDefinition(document.root());
    return locale.getInfoAsString(vel::Locale::kDecimalSeparator) == L";" &&
           vel::Locale::getDateOrderByString(L"dm") == vel::Locale::kDMY;
}

bool hasBuiltInLocale()
{
    return vel::LocaleMapping().mapLocale(L"de-CH", L"").first.definitionName() == L"en-us" &&
           vel::Locale::kUSA.getInfoAsString(vel::Locale::kDateShortFormat) == L"M/d/yyyy";
}

bool hasCurrencies()
{
    return vel::CurrencyLookup::getInstance().getCurrencyList().empty() &&
           vel::makeHandle<vel::Currency>()->getTag().isEmpty();
}

/// An invalid locale is an exception, not a fault.
bool isRefused(const vel::Locale& locale)
{
    try {
        return locale.definitionName().isEmpty();
    } catch (const vel::Exception&) {
        return true;
    }
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int useTheLibrary()
{
    try {
        vel::LocaleTagLookup::getInstance();
    } catch (const std::bad_alloc&) {
        return isRefused(vel::Locale::kUSA) ? kFirstCallTold : 1;
    }
    const bool holds[] = {isRegistered(), hasDefinitions(), hasBuiltInLocale(), hasCurrencies()};
    const auto* const fault = std::find(std::begin(holds), std::end(holds), false);
    return fault == std::end(holds) ? 0 : 2 + static_cast<int>(fault - std::begin(holds));
}
