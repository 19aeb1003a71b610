// A currencies file from outside: whatever its bytes, it loads or is refused, every currency is found, and each has a
// caption.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "../tests/support/memoryfile.h"
#include "require.h"
#include "vel/config/configreader.h"
#include "vel/messages/messageformatter.h"
#include "vel/xml/xmldocument.h"
#include "vel/xml/xmlexception.h"
#include "webi18n/currencylookup.h"
#include "webi18n/localetaglookup.h"

namespace {

using fuzzing::require;
using vel::Currency;
using vel::CurrencyLookup;
using vel::GDVariant;
using vel::Handle;
using vel::MessageTable;
using vel::String;

/// The process's catalogue of locales with one locale that local currencies can belong to.
bool loadLocales()
{
    const testsupport::MemoryFile file;
    const Handle<vel::MemoryConfigReader> config = vel::makeHandle<vel::MemoryConfigReader>();
    config->set(L"Localization/AllowedLocales", L"de-de");
    vel::LocaleTagLookup::getInstanceForLoading().loadLocaleDefinitions(
        *config, file.write("<d><localeDefinition name=\"de-de\"/></d>"));
    return true;
}

Handle<const MessageTable> messages()
{
    const Handle<MessageTable> table = vel::makeHandle<MessageTable>(L"en");
    table->set(L"kmsgCurrencyFormatLocaleCurrencyHeading", L"%1 (%2)");
    table->set(L"kmsgEuro", L"Euro");
    table->set(L"kmsgInserts", L"%1 %% %2");
    table->setReference(L"kmsgAlias", L"kmsgEuro");
    return table;
}

bool isCurrency(const vel::XmlElement& element)
{
    const String type(element.attribute(L"type"));
    return element.name() == L"Currency" && !element.attribute(L"tag").empty() &&
           (type.equalsNoCase(L"local") || type.equalsNoCase(L"international"));
}

std::size_t countCurrencies(const vel::XmlDocument& document)
{
    std::size_t count = 0;
    if (document.root().name() == L"Currencies") {
        for (const vel::XmlElement& each : vel::children(document.root())) {
            count += isCurrency(each) ? 1 : 0;
        }
    }
    return count;
}

void checkCaption(const Currency& currency, const Handle<const MessageTable>& table)
{
    const vel::MessageFormatter formatter(table);
    GDVariant caption;
    GDVariant name;
    currency.getResolvedCurrencyDisplayMessage(table, caption);
    currency.getResolvedCurrencyDisplayName(table, name);
    require(caption.asMessage() != nullptr && name.asMessage() != nullptr);
    GDVariant ownName;
    currency.getDisplayName(ownName);
    require(name == ownName || name == caption);
    static_cast<void>(formatter.format(*name.asMessage()));
    GDVariant own;
    currency.getDisplayMessage(own);
    if (!own.isUndefinedOrNull()) {
        return;
    }
    const bool headed = currency.getType() == Currency::kLocal &&
                        vel::compareNoCase(currency.getLocaleDefinitionName().view(), L"de-de") == 0;
    const String symbol = currency.getCurrencySymbol();
    const String heading = table.isNull()
                               ? String(L"kmsgCurrencyFormatLocaleCurrencyHeading(").append(symbol).append(L", de-de)")
                               : String(symbol).append(L" (de-de)");
    require(formatter.format(*caption.asMessage()) == (headed ? heading : symbol));
}

void checkRecord(const Currency& currency)
{
    const Currency::NegativeFormats& negatives = currency.getNegativeFormats();
    require(!currency.getTag().isEmpty() && !currency.getFormat().isEmpty());
    require(negatives.count(L"minus") == 1 && negatives.count(L"parens") == 1);
    require(negatives.count(currency.getPreferredNegativeTag()) == 1);
    for (const auto& [tag, format] : negatives) {
        require(!tag.isEmpty() && tag == format.getTag() && !format.getFormat().isEmpty());
    }
    const Handle<Currency> clone(currency.clone());
    clone->setLocaleDefinitionName(L"nowhere");
    require(clone->getTag() == currency.getTag() && clone->getNegativeFormats().size() == negatives.size());
}

void checkCatalogue(const CurrencyLookup& lookup, std::size_t count)
{
    static const Handle<const MessageTable> kTable = messages();
    require(lookup.getCurrencyList().size() == count && lookup.getCurrencyMap().size() <= count);
    for (const Handle<const Currency>& each : lookup.getCurrencyList()) {
        const Handle<const Currency> byTag = lookup.lookupCurrencyTag(each->getTag());
        const Handle<const Currency> bySymbol = lookup.lookupCurrencySymbol(each->getCurrencySymbol());
        require(byTag->getTag() == each->getTag() && byTag == lookup.getCurrencyMap().at(each->getTag()));
        require(bySymbol->getCurrencySymbol() == each->getCurrencySymbol());
        require(lookup.lookupCurrencyTag(each->getTag() + L"\x01").isNull());
        checkRecord(*each);
        checkCaption(*each, kTable);
        checkCaption(*each, {});
    }
    // Of several, the last is found.
    if (count > 0) {
        const Handle<const Currency> last = lookup.getCurrencyList().back();
        require(lookup.lookupCurrencyTag(last->getTag()) == last);
        require(lookup.lookupCurrencySymbol(last->getCurrencySymbol()) == last);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const testsupport::MemoryFile kFile;
    static const bool kLoaded = loadLocales();
    require(kLoaded);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const String path = kFile.write(bytes);
    CurrencyLookup lookup;
    try {
        lookup.loadCurrencies(path);
        const std::size_t count = countCurrencies(vel::XmlDocument::parse(bytes));
        checkCatalogue(lookup, count);
        lookup.loadCurrencies(path);
        checkCatalogue(lookup, 2 * count);
    } catch (const vel::XmlException&) {
        require(lookup.getCurrencyList().empty() && lookup.getCurrencyMap().empty());
    }
    return 0;
}
