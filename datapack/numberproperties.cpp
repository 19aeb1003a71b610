#include "numberproperties.h"

#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/numberformatter.h>

#include <algorithm>
#include <memory>
#include <set>
#include <stdexcept>
#include <utility>

#include "icutext.h"
#include "owncurrency.h"

namespace datapack {
namespace {

using Symbol = icu::DecimalFormatSymbols::ENumberFormatSymbol;

// No locale of ICU's has one character for both once they are typable. Should a later one do, the other of the two
// usual separators groups, so that a number still reads one way only.
std::string distinctThousands(const std::string& thousands, const std::string& decimal)
{
    if (thousands != decimal) {
        return thousands;
    }
    return decimal == "," ? "." : ",";
}

void addSeparators(const PackLocale& locale, Properties& properties)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(locale.icu, status);
    checkIcu(status, "symbols of " + locale.name);
    const auto read = [&symbols](Symbol symbol) { return typableSeparator(symbols.getConstSymbol(symbol)); };
    const std::string decimal = read(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
    const std::string monetaryDecimal = read(icu::DecimalFormatSymbols::kMonetarySeparatorSymbol);
    auto& scalars = properties.scalars;
    scalars["decimalSeparator"] = decimal;
    scalars["thousandsSeparator"] =
        distinctThousands(read(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol), decimal);
    scalars["monetaryDecimalSeparator"] = monetaryDecimal;
    scalars["monetaryThousandsSeparator"] =
        distinctThousands(read(icu::DecimalFormatSymbols::kMonetaryGroupingSeparatorSymbol), monetaryDecimal);
    scalars["listSeparator"] = decimal == "," || monetaryDecimal == "," ? ";" : ",";
}

// The affixes of a number format around "#", the locale's minus signs replaced by the keyboard's.
std::string picture(const icu::UnicodeString& prefix, const icu::UnicodeString& suffix)
{
    icu::UnicodeString text = typable(prefix + u'#' + suffix);
    text.findAndReplace(icu::UnicodeString(u'\u2212'), icu::UnicodeString(u'-'));
    return toUtf8(text.trim());
}

const icu::DecimalFormat& asDecimal(const icu::NumberFormat* format, const PackLocale& locale)
{
    const auto* decimal = dynamic_cast<const icu::DecimalFormat*>(format);
    if (decimal == nullptr) {
        throw std::runtime_error("ICU: no decimal format for " + locale.name);
    }
    return *decimal;
}

void addPictures(const PackLocale& locale, Properties& properties)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::NumberFormat> number(icu::NumberFormat::createInstance(locale.icu, status));
    const std::unique_ptr<icu::NumberFormat> percent(icu::NumberFormat::createPercentInstance(locale.icu, status));
    checkIcu(status, "number formats of " + locale.name);
    icu::UnicodeString prefix;
    icu::UnicodeString suffix;
    const icu::DecimalFormat& plain = asDecimal(number.get(), locale);
    properties.scalars["negativeNumberTemplate"] =
        picture(plain.getNegativePrefix(prefix), plain.getNegativeSuffix(suffix));
    const icu::DecimalFormat& hundredths = asDecimal(percent.get(), locale);
    hundredths.getPositivePrefix(prefix);
    hundredths.getPositiveSuffix(suffix);
    properties.scalars["percentFormat"] = picture(prefix, suffix);
    properties.scalars["percentSymbolLocation"] = typable(prefix).trim().isEmpty() ? "after" : "before";
}

void addCurrency(const PackLocale& locale, Properties& properties)
{
    const OwnCurrency own = ownCurrency(locale);
    properties.scalars["primaryCurrencySymbol"] = own.symbol;
    properties.scalars["currencyDigits"] = std::to_string(own.digits);
}

// The text of the field; empty when there is none, or when it stands in two places around the number (my: 10^12), where
// no part of it says the factor alone.
icu::UnicodeString fieldText(const icu::number::FormattedNumber& number, int32_t field)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text = number.toString(status);
    icu::ConstrainedFieldPosition position;
    position.constrainField(UFIELD_CATEGORY_NUMBER, field);
    icu::UnicodeString found;
    int count = 0;
    while (number.nextPosition(position, status) != 0) {
        found = icu::UnicodeString(text, position.getStart(), position.getLimit() - position.getStart());
        ++count;
    }
    checkIcu(status, "compact number");
    return count == 1 ? found : icu::UnicodeString();
}

// "10 Mio." of ten million: the abbreviation "Mio." stands for the number without its displayed part, 1000000. The
// displayed part of a power of ten is itself one, so its zeros are counted off.
std::string scaleOf(int exponent, const icu::UnicodeString& displayed)
{
    int shown = 0;
    for (int32_t index = 0; index < displayed.length(); ++index) {
        shown += displayed.charAt(index) == u'0' ? 1 : 0;
    }
    return "1" + std::string(static_cast<size_t>(exponent - shown), '0');
}

// One abbreviation per factor and one factor per abbreviation, the first that the powers of ten show.
void addScaleFactors(const PackLocale& locale, Properties& properties)
{
    const auto formatter =
        icu::number::NumberFormatter::withLocale(locale.icu).notation(icu::number::Notation::compactShort());
    ScaleFactors factors;
    std::set<std::string> used;
    int64_t power = 100;
    for (int exponent = 3; exponent <= 14; ++exponent) {
        UErrorCode status = U_ZERO_ERROR;
        power *= 10;
        const icu::number::FormattedNumber number = formatter.formatInt(power, status);
        checkIcu(status, "compact number of " + locale.name);
        const std::string name = toUtf8(typable(fieldText(number, UNUM_COMPACT_FIELD)).trim());
        const std::string value = scaleOf(exponent, fieldText(number, UNUM_INTEGER_FIELD));
        const bool isNew = used.count("name " + name) == 0 && used.count("value " + value) == 0;
        if (!name.empty() && isNew) {
            factors.emplace_back(name, value);
            used.insert({"name " + name, "value " + value});
        }
    }
    properties.scaleFactors = std::move(factors);
}

}  // namespace

void addNumberProperties(const PackLocale& locale, Properties& properties)
{
    addSeparators(locale, properties);
    addPictures(locale, properties);
    addCurrency(locale, properties);
    addScaleFactors(locale, properties);
}

}  // namespace datapack
