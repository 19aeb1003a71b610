#pragma once

#include <cstdint>
#include <utility>

#include "vel/core/api.h"
#include "vel/core/string.h"
#include "vel/core/stringbuffer.h"
#include "webi18n-render/decimal.h"
#include "webi18n/currency.h"
#include "webi18n/locale.h"

namespace vel {

/// How the digits of a number are shown.
struct NumberStyle
{
    /// Digits behind the decimal separator, 0 to 64; more are taken as 64. Negative: those that the number has, for
    /// amounts those that the currency names.
    std::int32_t m_nDigits = -1;
    /// Whether groups of three digits are separated. Definitions name no other size, so groups are of three digits
    /// everywhere.
    bool m_bGrouping = true;
};

/// Renders numbers, percents and amounts of money in a locale's conventions, the user's overrides included. Stateless:
/// every operation is safe from any thread, allocates nothing where `out` has room, and takes time linear in its
/// output.
///
/// The digits are ASCII's, with one in front of the decimal separator at least. An empty thousands separator separates
/// nothing; for an empty decimal separator stands ".", without which 1.50 would be 150. Negative numbers stand in the
/// locale's negative number template, "#" for the number; a number of which only zeros are shown has no sign. Infinity
/// is shown as "∞", what is not a number as "NaN".
///
/// In pictures "#" stands for the number and "$" for the symbol, the first one each; all other characters stand for
/// themselves. A picture without "#" has the number at its end: a number is never lost.
///
/// An invalid locale throws InvalidHandleException, and nothing is appended. When memory runs out, std::bad_alloc, and
/// `out` may end in a part of the text.
class WEBI18N_API RenderNumber
{
public:
    /// A scale factor of a locale: its name and its value.
    using ScaleFactor = std::pair<String, String>;

    RenderNumber() = delete;

    /// Appends the number.
    ///
    ///     1234567.891, 2 digits -> 1,234,567.89 (en-us)      1.234.567,89 (de-de)
    ///     1234567, own digits   -> 1,234,567                 without grouping -> 1234567
    ///     0.5, own digits       -> 0.5                       7, 2 digits -> 7.00
    ///     -1234.5, own digits   -> -1,234.5                  with template "(#)" -> (1,234.5)
    ///     -0.4, 0 digits        -> 0                         -infinity -> -∞
    ///     -5, template ""       -> -5                        template "minus " -> minus 5
    static void append(const Decimal& number, const Locale& locale, const NumberStyle& style,
                       StringBufferBaseTemplate<wchar_t>& out);

    /// Appends a ratio as percent in the locale's percent format. Where that has no "#" it is the sign ("%" when
    /// empty), and the locale's percent symbol location puts it: "before", else behind. The negative number template
    /// stands around the whole. Digits are counted after the multiplication.
    ///
    ///     0.256, own digits -> 25.6% (en-us)      25,6 % (de-de)      %25,6 (tr-tr)
    ///     -0.256, 0 digits  -> -26%               -%26 (tr-tr)        (26%) with template "(#)"
    ///     1, own digits     -> 100%
    static void appendPercent(const Decimal& ratio, const Locale& locale, const NumberStyle& style,
                              StringBufferBaseTemplate<wchar_t>& out);

    /// The largest factor of the locale that is not above the number without its sign; null when there is none, and for
    /// what is not finite. Values that are not 1 to 10^18 in plain digits are passed over; of equal ones the first
    /// counts. Valid while the locale is not changed.
    ///
    ///     en-us of the data pack: 999 -> null      1000 -> K      -2500000 -> M      1e30 -> T
    static const ScaleFactor* findScaleFactor(const Decimal& number, const Locale& locale);

    /// Appends the number in units of a factor, a blank and the factor's name; without a name, or for a factor whose
    /// value is not 1 to 10^18 in plain digits, the number alone, in the latter case undivided. Own digits (-1) are as
    /// many as the quotient needs, at most those of the number and of the factor together.
    ///
    ///     1234567, K=1000, 1 digit   -> 1,234.6 K      own digits -> 1,234.567 K
    ///     -2500000, M=1000000        -> -2.5 M         with template "(#)" -> (2.5 M)
    ///     999999, K, 0 digits        -> 1,000 K        1, k=1024, own digits -> 0.001 k
    static void appendScaled(const Decimal& number, const ScaleFactor& factor, const Locale& locale,
                             const NumberStyle& style, StringBufferBaseTemplate<wchar_t>& out);

    /// Appends an amount in the currency's picture, for negative ones in its preferred negative picture. The separators
    /// are the locale's monetary ones; groups are separated where style and currency both want it. Digits: the style's,
    /// else the currency's, else those of the number.
    ///
    ///     1234.5, "$" with "$#"        -> $1,234.50      -1234.5 -> -$1,234.50
    ///     1234.5, "EUR" with "# $"     -> 1,234.50 EUR
    static void appendAmount(const Decimal& amount, const Currency& currency, const Locale& locale,
                             const NumberStyle& style, StringBufferBaseTemplate<wchar_t>& out);

    /// The same with a chosen negative picture. A tag that the currency lacks stands for the preferred one; where that
    /// is not there either, "-" stands in front of the currency's picture.
    ///
    ///     -1234.5, "$" with "$#", "parens" -> ($1,234.50)      "minus" -> -$1,234.50
    static void appendAmount(const Decimal& amount, const Currency& currency, const String& negativeTag,
                             const Locale& locale, const NumberStyle& style, StringBufferBaseTemplate<wchar_t>& out);
};

}  // namespace vel
