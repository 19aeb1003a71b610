#include "currencypictures.h"

#include <unicode/currunit.h>
#include <unicode/numberformatter.h>

#include <stdexcept>

#include "icutext.h"

namespace datapack {
namespace {

icu::number::FormattedNumber format(const PackLocale& locale, const std::string& code, UNumberSignDisplay sign,
                                    int number)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::CurrencyUnit unit(icu::StringPiece(code), status);
    auto formatted = icu::number::NumberFormatter::withLocale(locale.icu)
                         .unit(unit)
                         .precision(icu::number::Precision::integer())
                         .grouping(UNUM_GROUPING_OFF)
                         .sign(sign)
                         .formatInt(number, status);
    checkIcu(status, "currency format of " + locale.name);
    return formatted;
}

// Sets `mark` where the field begins in the text and U+0000 on the rest of it, which keeps all positions true.
void markField(const icu::number::FormattedNumber& number, int32_t field, char16_t mark, icu::UnicodeString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::ConstrainedFieldPosition position;
    position.constrainField(UFIELD_CATEGORY_NUMBER, field);
    while (number.nextPosition(position, status) != 0) {
        for (int32_t index = position.getStart(); index < position.getLimit(); ++index) {
            text.setCharAt(index, index == position.getStart() ? mark : u'\0');
        }
    }
    checkIcu(status, "fields of a currency format");
}

// "CHF-5" -> "$-#"
std::string pictureOf(const icu::number::FormattedNumber& number)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text = number.toString(status);
    checkIcu(status, "text of a currency format");
    markField(number, UNUM_CURRENCY_FIELD, u'$', text);
    markField(number, UNUM_INTEGER_FIELD, u'#', text);
    text.findAndReplace(icu::UnicodeString(u'\0'), icu::UnicodeString());
    text = typable(text);
    text.findAndReplace(icu::UnicodeString(u'\u2212'), icu::UnicodeString(u'-'));
    return toUtf8(text.trim());
}

bool isSymbolFirst(const std::string& picture)
{
    return picture.find('$') < picture.find('#');
}

std::string shapeOf(const std::string& picture)
{
    if (picture.front() == '(' && picture.back() == ')') {
        return "parens";
    }
    if (picture.front() == '-') {
        return "minus";
    }
    if (picture.back() == '-') {
        return "trailing-minus";
    }
    return isSymbolFirst(picture) ? "minus-after-symbol" : "minus-after-number";
}

void addAccounting(const std::string& picture, CurrencyPictures& pictures)
{
    const NegativePicture& standard = pictures.negatives.front();
    if (picture == standard.picture) {
        return;
    }
    const std::string shape = shapeOf(picture);
    const bool isPlain = shape != standard.tag && isSymbolFirst(picture) == isSymbolFirst(pictures.positive);
    pictures.negatives.push_back({isPlain ? shape : "accounting-" + shape, picture});
}

}  // namespace

CurrencyPictures currencyPictures(const PackLocale& locale, const std::string& code)
{
    CurrencyPictures pictures;
    pictures.positive = pictureOf(format(locale, code, UNUM_SIGN_AUTO, 5));
    const std::string standard = pictureOf(format(locale, code, UNUM_SIGN_AUTO, -5));
    pictures.negatives.push_back({shapeOf(standard), standard});
    addAccounting(pictureOf(format(locale, code, UNUM_SIGN_ACCOUNTING, -5)), pictures);
    for (const NegativePicture& negative : pictures.negatives) {
        if (negative.picture == pictures.positive) {
            throw std::runtime_error("negative amounts look like positive ones in " + locale.name);
        }
    }
    return pictures;
}

}  // namespace datapack
