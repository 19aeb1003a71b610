#include "webi18n-render/rendernumber.h"

#include <algorithm>
#include <charconv>

#include "textwriter.h"
#include "vel/core/nocasecompare.h"

namespace vel {

namespace {

using render_details::TextWriter;
using View = std::wstring_view;

constexpr std::uint64_t kMaxFactor = 1'000'000'000'000'000'000;
constexpr std::size_t kGroup = 3;

/// What stands before and behind a number.
struct Affixes
{
    View m_sBefore;
    View m_sAfter;
};

Affixes affixesOf(View picture) noexcept
{
    const std::size_t number = picture.find(L'#');
    return number == View::npos ? Affixes{picture, {}} : Affixes{picture.substr(0, number), picture.substr(number + 1)};
}

Affixes negativeAffixes(const Locale& locale)
{
    const View picture = locale.getInfoView(Locale::kNegativeNumberTemplate);
    return affixesOf(picture.empty() ? View(L"-") : picture);
}

Affixes percentAffixes(const Locale& locale)
{
    const View format = locale.getInfoView(Locale::kPercentFormat);
    if (format.find(L'#') != View::npos) {
        return affixesOf(format);
    }
    const View sign = format.empty() ? View(L"%") : format;
    const bool isBefore = compareNoCase(locale.getInfoView(Locale::kPercentSymbolLocation), L"before") == 0;
    return isBefore ? Affixes{sign, {}} : Affixes{{}, sign};
}

/// The text between groups, empty for none, and that between integer and fraction.
struct Separators
{
    View m_sThousands;
    View m_sDecimal;
};

Separators separatorsOf(const Locale& locale, Locale::StringInfo thousands, Locale::StringInfo decimal, bool isGrouping)
{
    const View point = locale.getInfoView(decimal);
    return {isGrouping ? locale.getInfoView(thousands) : View(), point.empty() ? View(L".") : point};
}

Separators plainSeparators(const Locale& locale, const NumberStyle& style)
{
    return separatorsOf(locale, Locale::kThousandsSeparator, Locale::kDecimalSeparator, style.m_bGrouping);
}

/// Negative digits stand for those that the number has.
Decimal withDigits(const Decimal& number, std::int32_t digits) noexcept
{
    return digits < 0 ? number : number.rounded(static_cast<unsigned>(digits));
}

/// A sign before nothing but zeros would tell what the digits do not show.
bool showsSign(const Decimal& shown) noexcept
{
    return shown.isNegative() && !shown.isZero();
}

void putInteger(TextWriter& out, std::string_view digits, View separator)
{
    if (separator.empty()) {
        return out.putDigits(digits);
    }
    std::size_t group = (digits.size() - 1) % kGroup + 1;
    out.putDigits(digits.substr(0, group));
    for (; group < digits.size(); group += kGroup) {
        out.put(separator);
        out.putDigits(digits.substr(group, kGroup));
    }
}

void putNumber(TextWriter& out, const Decimal& shown, const Separators& separators)
{
    if (shown.kind() != Decimal::kFinite) {
        return out.put(shown.kind() == Decimal::kInfinite ? View(L"\u221E") : View(L"NaN"));
    }
    const std::string_view integer = shown.integerDigits();
    putInteger(out, integer.empty() ? std::string_view("0") : integer, separators.m_sThousands);
    if (!shown.fractionDigits().empty()) {
        out.put(separators.m_sDecimal);
        out.putDigits(shown.fractionDigits());
    }
}

/// A number of a locale: the negative template around what stands before the number, the number, and what is behind.
void putSigned(TextWriter& out, const Decimal& shown, const Locale& locale, const Separators& separators,
               const Affixes& around)
{
    const Affixes sign = showsSign(shown) ? negativeAffixes(locale) : Affixes{};
    out.put(sign.m_sBefore);
    out.put(around.m_sBefore);
    putNumber(out, shown, separators);
    out.put(around.m_sAfter);
    out.put(sign.m_sAfter);
}

/// 0 for a text that is not 1 to kMaxFactor.
std::uint64_t factorValue(View text) noexcept
{
    constexpr std::size_t kMostDigits = 19;
    std::uint64_t value = 0;
    if (text.size() > kMostDigits) {
        return 0;
    }
    for (const wchar_t character : text) {
        if (character < L'0' || character > L'9') {
            return 0;
        }
        value = value * 10 + static_cast<unsigned>(character - L'0');
    }
    return value <= kMaxFactor ? value : 0;
}

/// The number without sign and fraction; one beyond all factors where it is larger than those.
std::uint64_t magnitudeOf(const Decimal& number) noexcept
{
    std::uint64_t value = 0;
    const std::string_view digits = number.integerDigits();
    const bool fits =
        std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc::result_out_of_range;
    return fits ? value : kMaxFactor + 1;
}

/// Digits that every quotient of the number by a power of ten fits into.
unsigned quotientDigits(const Decimal& number, View factor) noexcept
{
    return static_cast<unsigned>(number.fractionDigits().size() + factor.size());
}

View negativePicture(const Currency& currency, const String& tag)
{
    const Currency::NegativeFormats& formats = currency.getNegativeFormats();
    auto found = formats.find(tag);
    if (found == formats.end()) {
        found = formats.find(currency.getPreferredNegativeTag());
    }
    return found == formats.end() ? View() : found->second.getFormat().view();
}

/// The picture with the symbol for the first "$" and the number for the first "#".
void putAmount(TextWriter& out, View picture, View symbol, const Decimal& shown, const Separators& separators)
{
    const std::size_t symbolAt = picture.find(L'$');
    const std::size_t numberAt = std::min(picture.find(L'#'), picture.size());
    const auto putLiteral = [&](std::size_t begin, std::size_t end) {
        if (symbolAt >= begin && symbolAt < end) {
            out.put(picture.substr(begin, symbolAt - begin));
            out.put(symbol);
            begin = symbolAt + 1;
        }
        out.put(picture.substr(begin, end - begin));
    };
    putLiteral(0, numberAt);
    putNumber(out, shown, separators);
    if (numberAt < picture.size()) {
        putLiteral(numberAt + 1, picture.size());
    }
}

}  // namespace

void RenderNumber::append(const Decimal& number, const Locale& locale, const NumberStyle& style, StringBufferBase& out)
{
    const Separators separators = plainSeparators(locale, style);
    TextWriter writer(out);
    putSigned(writer, withDigits(number, style.m_nDigits), locale, separators, {});
    writer.flush();
}

void RenderNumber::appendPercent(const Decimal& ratio, const Locale& locale, const NumberStyle& style,
                                 StringBufferBase& out)
{
    const Separators separators = plainSeparators(locale, style);
    TextWriter writer(out);
    putSigned(writer, withDigits(ratio.timesHundred(), style.m_nDigits), locale, separators, percentAffixes(locale));
    writer.flush();
}

const RenderNumber::ScaleFactor* RenderNumber::findScaleFactor(const Decimal& number, const Locale& locale)
{
    const ScaleFactor* best = nullptr;
    std::uint64_t bestValue = 0;
    const std::vector<ScaleFactor>& factors = locale.getScaleFactors();
    if (number.kind() != Decimal::kFinite) {
        return nullptr;
    }
    const std::uint64_t magnitude = magnitudeOf(number);
    for (const ScaleFactor& each : factors) {
        const std::uint64_t value = factorValue(each.second);
        if (value > bestValue && value <= magnitude) {
            best = &each;
            bestValue = value;
        }
    }
    return best;
}

void RenderNumber::appendScaled(const Decimal& number, const ScaleFactor& factor, const Locale& locale,
                                const NumberStyle& style, StringBufferBase& out)
{
    const std::uint64_t value = factorValue(factor.second);
    if (value == 0) {
        return append(number, locale, style, out);
    }
    const bool isOwn = style.m_nDigits < 0;
    Decimal shown =
        number.dividedBy(value, isOwn ? quotientDigits(number, factor.second) : static_cast<unsigned>(style.m_nDigits));
    if (isOwn) {
        shown.dropTrailingZeros();
    }
    const Separators separators = plainSeparators(locale, style);
    const Affixes sign = showsSign(shown) ? negativeAffixes(locale) : Affixes{};
    TextWriter writer(out);
    writer.put(sign.m_sBefore);
    putNumber(writer, shown, separators);
    if (!factor.first.isEmpty()) {
        writer.put(L' ');
        writer.put(factor.first.view());
    }
    writer.put(sign.m_sAfter);
    writer.flush();
}

void RenderNumber::appendAmount(const Decimal& amount, const Currency& currency, const Locale& locale,
                                const NumberStyle& style, StringBufferBase& out)
{
    appendAmount(amount, currency, currency.getPreferredNegativeTag(), locale, style, out);
}

void RenderNumber::appendAmount(const Decimal& amount, const Currency& currency, const String& negativeTag,
                                const Locale& locale, const NumberStyle& style, StringBufferBase& out)
{
    const Decimal shown = withDigits(amount, style.m_nDigits < 0 ? currency.getDefaultDigits() : style.m_nDigits);
    const Separators separators =
        separatorsOf(locale, Locale::kMonetaryThousandsSeparator, Locale::kMonetaryDecimalSeparator,
                     style.m_bGrouping && currency.useThousandsSeparator());
    TextWriter writer(out);
    View picture = currency.getFormat().view();
    if (showsSign(shown)) {
        const View negative = negativePicture(currency, negativeTag);
        if (negative.empty()) {
            writer.put(L'-');
        } else {
            picture = negative;
        }
    }
    putAmount(writer, picture, currency.getCurrencySymbol().view(), shown, separators);
    writer.flush();
}

}  // namespace vel
