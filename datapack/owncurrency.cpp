#include "owncurrency.h"

#include <unicode/ucurr.h>

#include "icutext.h"

namespace datapack {

OwnCurrency ownCurrency(const PackLocale& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    char16_t code[4] = {};
    if (ucurr_forLocale(locale.icu.getName(), code, 4, &status) == 0 || U_FAILURE(status)) {
        return {{}, {}, 2};
    }
    int32_t length = 0;
    const char16_t* symbol = ucurr_getName(code, locale.icu.getName(), UCURR_SYMBOL_NAME, nullptr, &length, &status);
    checkIcu(status, "currency symbol of " + locale.name);
    const int digits = ucurr_getDefaultFractionDigits(code, &status);
    checkIcu(status, "currency digits of " + locale.name);
    // Where the symbol stands in place of the decimal separator (pt-cv: 20$00), ICU's own symbol is an invisible
    // character; the currency's code takes its place.
    const icu::UnicodeString shown(symbol, length);
    const icu::UnicodeString name(code);
    return {toUtf8(name), toUtf8(shown == u"\u200B" ? name : shown), digits};
}

}  // namespace datapack
