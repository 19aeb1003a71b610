#pragma once

#include <stdexcept>
#include <string>

#include "memoryfile.h"
#include "printers.h"
#include "webi18n/currencylookup.h"

// Currencies files as text, and what was read from them.
namespace testsupport {

inline std::string currenciesFile(const std::string& elements)
{
    return "<Currencies>" + elements + "</Currencies>";
}

/// An element with a tag, a type, and what else is given.
inline std::string currency(const std::string& tag, const std::string& type, const std::string& attributes = "",
                            const std::string& children = "")
{
    return "<Currency tag=\"" + tag + "\" type=\"" + type + "\" " + attributes + ">" + children + "</Currency>";
}

inline std::string negative(const std::string& tag, const std::string& format)
{
    return "<negative tag=\"" + tag + "\" format=\"" + format + "\"/>";
}

/// A catalogue of one file with these bytes.
inline vel::CurrencyLookup loadedFile(const std::string& bytes)
{
    const MemoryFile file;
    return vel::CurrencyLookup(file.write(bytes));
}

inline vel::CurrencyLookup loaded(const std::string& elements)
{
    return loadedFile(currenciesFile(elements));
}

/// The only record of a file with this element; throws when there is not exactly one.
inline vel::Handle<const vel::Currency> recordOf(const std::string& element)
{
    const vel::CurrencyLookup lookup = loaded(element);
    if (lookup.getCurrencyList().size() != 1) {
        throw std::runtime_error("not one currency: " + element);
    }
    return lookup.getCurrencyList().front();
}

inline vel::String negativesOf(const vel::Currency& currency)
{
    vel::String text;
    for (const auto& [tag, format] : currency.getNegativeFormats()) {
        text.append(tag).append(tag == format.getTag() ? L"=" : L"!=").append(format.getFormat()).append(L";");
    }
    return text;
}

/// Every field of a record, so that two can be compared.
inline vel::String outline(const vel::Currency& currency)
{
    vel::GDVariant message;
    vel::GDVariant name;
    currency.getDisplayMessage(message);
    currency.getDisplayName(name);
    vel::String text = currency.getTag();
    text.append(currency.getType() == vel::Currency::kLocal ? L"|local|" : L"|international|");
    text.append(currency.getCurrencySymbol()).append(L"|").append(currency.getFormat()).append(L"|");
    text.append(std::to_wstring(currency.getDefaultDigits())).append(L"|");
    text.append(currency.getLocaleDefinitionName()).append(L"|");
    text.append(currency.displayAsChoice() ? L"display," : L"")
        .append(currency.isPlaceholder() ? L"placeholder," : L"");
    text.append(currency.useThousandsSeparator() ? L"thousands|" : L"|");
    text.append(currency.getPreferredNegativeTag()).append(L"|").append(negativesOf(currency)).append(L"|");
    return text.append(message.toString()).append(L"|").append(name.toString());
}

/// Everything that a catalogue tells, so that two states of it can be compared.
inline vel::String outline(const vel::CurrencyLookup& lookup)
{
    vel::String text;
    for (const vel::Handle<const vel::Currency>& each : lookup.getCurrencyList()) {
        const bool byTag = lookup.lookupCurrencyTag(each->getTag()) == each;
        const bool bySymbol = lookup.lookupCurrencySymbol(each->getCurrencySymbol()) == each;
        text.append(outline(*each)).append(byTag ? L" by tag" : L"").append(bySymbol ? L" by symbol\n" : L"\n");
    }
    for (const auto& [tag, each] : lookup.getCurrencyMap()) {
        text.append(tag).append(L": ").append(outline(*each)).append(L"\n");
    }
    return text;
}

}  // namespace testsupport
