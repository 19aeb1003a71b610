#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>

#include <array>
#include <stdexcept>

#include "rows.h"
#include "vel/core/stringbuffer.h"
#include "webi18n/locale.h"

// A request's own copy of a locale, and what it reads from it.

namespace bench {

namespace {

constexpr std::array<vel::Locale::StringInfo, 6> kOurs = {
    vel::Locale::kDecimalSeparator,       vel::Locale::kThousandsSeparator,    vel::Locale::kMonetaryDecimalSeparator,
    vel::Locale::kNegativeNumberTemplate, vel::Locale::kPrimaryCurrencySymbol, vel::Locale::kPercentFormat};

constexpr std::array<icu::DecimalFormatSymbols::ENumberFormatSymbol, 6> kPeers = {
    icu::DecimalFormatSymbols::kDecimalSeparatorSymbol,  icu::DecimalFormatSymbols::kGroupingSeparatorSymbol,
    icu::DecimalFormatSymbols::kMonetarySeparatorSymbol, icu::DecimalFormatSymbols::kMinusSignSymbol,
    icu::DecimalFormatSymbols::kCurrencySymbol,          icu::DecimalFormatSymbols::kPercentSymbol};

Batch copyOurs()
{
    return repeated([] {
        const vel::Locale copy = vel::Locale::kUSA;
        keep(copy);
    });
}

Batch copyPeer()
{
    return repeated([original = icu::Locale("fr", "CA")] {
        const icu::Locale copy = original;
        keep(copy);
    });
}

void readSix(const vel::Locale& locale)
{
    vel::StringBuffer<63> out;
    for (const vel::Locale::StringInfo info : kOurs) {
        out.clear();
        locale.getInfo(info, out);
        keep(out.data());
    }
}

Batch overrideOurs()
{
    return repeated([separator = vel::String(L",")] {
        vel::Locale copy = vel::Locale::kUSA;
        copy.setOverridingDecimalSeparator(separator);
        readSix(copy);
    });
}

Batch overridePeer()
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols original(icu::Locale::getUS(), status);
    if (U_FAILURE(status)) {
        throw std::runtime_error("DecimalFormatSymbols cannot be built");
    }
    return repeated([original, separator = icu::UnicodeString(u",")] {
        icu::DecimalFormatSymbols copy(original);
        copy.setSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol, separator);
        for (const icu::DecimalFormatSymbols::ENumberFormatSymbol symbol : kPeers) {
            keep(copy.getSymbol(symbol));
        }
    });
}

Batch readOurs()
{
    return repeated([locale = vel::Locale::kUSA] { readSix(locale); });
}

Batch readPeer()
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(icu::Locale::getUS(), status);
    return repeated([symbols] {
        for (const icu::DecimalFormatSymbols::ENumberFormatSymbol symbol : kPeers) {
            keep(symbols.getSymbol(symbol));
        }
    });
}

}  // namespace

void addLocaleRows(std::vector<Situation>& rows)
{
    rows.push_back({"copy a Locale and destroy it", "icu::Locale copy", {Target::kRatioAtLeast, 2}, [] {
                        return Contest{copyOurs(), copyPeer()};
                    }});
    rows.push_back({"one override on a shared copy, six getInfo",
                    "icu::DecimalFormatSymbols copy, set, six getSymbol",
                    {Target::kRatioAtLeast, 2},
                    [] {
                        return Contest{overrideOurs(), overridePeer()};
                    }});
    rows.push_back({"six getInfo", "icu::DecimalFormatSymbols, six getSymbol", {}, [] {
                        return Contest{readOurs(), readPeer()};
                    }});
}

}  // namespace bench
