/// \file
/// The pictures by which a locale writes amounts of its own currency: "$" marks the symbol, "#" the number.
#pragma once

#include <string>
#include <vector>

#include "locales.h"

namespace datapack {

/// A picture of negative amounts and its name.
struct NegativePicture
{
    std::string tag;
    std::string picture;
};

/// All pictures of one locale. The first negative one is the locale's default; none equals the positive one.
struct CurrencyPictures
{
    std::string positive;
    std::vector<NegativePicture> negatives;
};

/// Reads the pictures off what ICU writes for 5 and -5, so blanks that ICU sets between a symbol of letters and the
/// number are in them. They can be typed (icutext.h), and the minus sign is the keyboard's.
///
///     en-us  "$#"   minus "-$#", parens "($#)"        de-ch  "$ #"  minus-after-symbol "$-#", accounting-minus "-# $"
///     de-de  "# $"  minus "-# $"                      nl-nl  "$ #"  minus-after-symbol "$ -#", parens "($ #)"
///
/// The first negative picture is that of the locale's standard pattern, the second that of its accounting pattern
/// unless they are the same. A tag tells what the picture looks like:
/// - "parens": in brackets;
/// - "minus": the sign stands before everything;
/// - "trailing-minus": the sign stands behind everything;
/// - "minus-after-symbol", "minus-after-number": the sign stands between the two;
/// - with "accounting-" before it: the accounting picture has the symbol on the other side of the number than positive
///   amounts have it, or it has the standard picture's tag and differs in a blank.
/// So "minus" and "parens" keep the sides of positive amounts, as the ones that the loader adds do.
/// \throws std::runtime_error when a negative picture equals the positive one.
CurrencyPictures currencyPictures(const PackLocale& locale, const std::string& code);

}  // namespace datapack
