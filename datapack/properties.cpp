#include "properties.h"

namespace datapack {
namespace {

// A monetary separator and the plain one that it follows when it is not set.
constexpr std::pair<const char*, const char*> kaMonetary[] = {
    {"monetaryThousandsSeparator", "thousandsSeparator"},
    {"monetaryDecimalSeparator", "decimalSeparator"},
};

bool isMonetarySeparator(const std::string& name)
{
    return name == kaMonetary[0].first || name == kaMonetary[1].first;
}

void addMonetaryDifference(const Properties& base, const Properties& wanted, Properties& written)
{
    for (const auto& [monetary, plain] : kaMonetary) {
        const bool isDetached = base.scalar(monetary) == base.scalar(plain);
        const std::string loaded = isDetached ? wanted.scalar(plain) : base.scalar(monetary);
        if (loaded != wanted.scalar(monetary)) {
            written.scalars[monetary] = wanted.scalar(monetary);
        }
    }
}

}  // namespace

std::string Properties::scalar(const std::string& name) const
{
    const auto found = scalars.find(name);
    return found == scalars.end() ? std::string() : found->second;
}

std::vector<std::string> Properties::list(const std::string& name) const
{
    const auto found = lists.find(name);
    return found == lists.end() ? std::vector<std::string>() : found->second;
}

const std::vector<std::string>& scalarNames()
{
    static const std::vector<std::string> names = {
        "localeDisplayMessage",
        "characterSetList",
        "defaultLanguage",
        "listSeparator",
        "decimalSeparator",
        "thousandsSeparator",
        "monetaryDecimalSeparator",
        "monetaryThousandsSeparator",
        "dateSeparator",
        "timeSeparator",
        "am",
        "pm",
        "timeFormat",
        "dateShortFormat",
        "dateLongFormat",
        "negativeNumberTemplate",
        "percentFormat",
        "percentSymbolLocation",
        "primaryCurrencySymbol",
        "currencyDigits",
        "collationNLS_SORT",
        "dateOrder",
        "24hours",
        "firstDayOfWeek",
    };
    return names;
}

const std::vector<std::string>& listNames()
{
    static const std::vector<std::string> names = {
        "monthNames",     "genetiveMonthNames", "abbrevMonthNames", "dayNames",
        "abbrevDayNames", "dateFormats",        "timeFormats",
    };
    return names;
}

Properties whole(const Properties& wanted)
{
    Properties written;
    for (const std::string& name : scalarNames()) {
        if (!wanted.scalar(name).empty() && !isMonetarySeparator(name)) {
            written.scalars[name] = wanted.scalar(name);
        }
    }
    addMonetaryDifference(Properties(), wanted, written);
    for (const std::string& name : listNames()) {
        if (!wanted.list(name).empty()) {
            written.lists[name] = wanted.list(name);
        }
    }
    if (wanted.scaleFactors && !wanted.scaleFactors->empty()) {
        written.scaleFactors = wanted.scaleFactors;
    }
    return written;
}

Properties difference(const Properties& base, const Properties& wanted)
{
    Properties written;
    for (const std::string& name : scalarNames()) {
        if (!isMonetarySeparator(name) && base.scalar(name) != wanted.scalar(name)) {
            written.scalars[name] = wanted.scalar(name);
        }
    }
    addMonetaryDifference(base, wanted, written);
    for (const std::string& name : listNames()) {
        if (base.list(name) != wanted.list(name)) {
            written.lists[name] = wanted.list(name);
        }
    }
    if (base.scaleFactors != wanted.scaleFactors) {
        written.scaleFactors = wanted.scaleFactors;
    }
    return written;
}

}  // namespace datapack
