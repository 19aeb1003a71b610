#include "webi18n-render/decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace vel {

namespace {

bool areDigits(std::wstring_view text) noexcept
{
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

bool areZeros(std::string_view digits) noexcept
{
    return digits.find_first_not_of('0') == std::string_view::npos;
}

/// Where what is cut off lies between the last digit that stays (0) and the next one: below the middle, in it, above.
enum Cut
{
    kBelowMiddle = 0,
    kInTheMiddle = 1,
    kAboveMiddle = 2
};

Cut cutOf(std::string_view digits) noexcept
{
    if (digits.empty() || digits[0] < '5') {
        return kBelowMiddle;
    }
    return digits[0] == '5' && areZeros(digits.substr(1)) ? kInTheMiddle : kAboveMiddle;
}

/// The same for a division: a remainder of the divisor, and the digits that were not divided any more.
Cut cutOf(std::uint64_t remainder, std::uint64_t divisor, std::string_view digits) noexcept
{
    if (remainder * 2 == divisor) {
        return areZeros(digits) ? kInTheMiddle : kAboveMiddle;
    }
    if (remainder * 2 + 1 == divisor) {
        return cutOf(digits);
    }
    return remainder * 2 < divisor ? kBelowMiddle : kAboveMiddle;
}

bool roundsUp(Cut cut, char lastDigit) noexcept
{
    return cut == kAboveMiddle || (cut == kInTheMiddle && lastDigit % 2 == 1);
}

}  // namespace

Decimal::Decimal(const Decimal& other) noexcept
    : m_nInteger(other.m_nInteger),
      m_nFraction(other.m_nFraction),
      m_eKind(other.m_eKind),
      m_bNegative(other.m_bNegative)
{
    std::copy_n(other.m_aDigits, other.m_nInteger + other.m_nFraction, m_aDigits);
}

Decimal& Decimal::operator=(const Decimal& other) noexcept
{
    if (this == &other) {
        return *this;
    }
    std::copy_n(other.m_aDigits, other.m_nInteger + other.m_nFraction, m_aDigits);
    m_nInteger = other.m_nInteger;
    m_nFraction = other.m_nFraction;
    m_eKind = other.m_eKind;
    m_bNegative = other.m_bNegative;
    return *this;
}

Decimal Decimal::ofInteger(std::int64_t value, unsigned fractionDigits) noexcept
{
    Decimal result;
    result.m_bNegative = value < 0;
    result.setUnsigned(value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value));
    if (fractionDigits <= result.m_nInteger) {
        result.m_nInteger = static_cast<std::uint16_t>(result.m_nInteger - fractionDigits);
        result.m_nFraction = static_cast<std::uint16_t>(fractionDigits);
        return result;
    }
    // The digits move behind zeros; from so many zeros on, nothing but zeros is left of them.
    const unsigned digits = result.m_nInteger;
    const unsigned zeros = std::min(fractionDigits - digits, kMaxFractionDigits + 1);
    std::copy_backward(result.m_aDigits, result.m_aDigits + digits, result.m_aDigits + digits + zeros);
    std::fill_n(result.m_aDigits, zeros, '0');
    result.m_nInteger = 0;
    result.m_nFraction = static_cast<std::uint16_t>(digits + zeros);
    if (result.m_nFraction > kMaxFractionDigits) {
        result.cutFraction(kMaxFractionDigits);
    }
    return result;
}

Decimal Decimal::ofDouble(double value, unsigned fractionDigits) noexcept
{
    const bool isNegative = std::signbit(value);
    if (std::isnan(value)) {
        return special(kNotANumber, false);
    }
    if (std::isinf(value)) {
        return special(kInfinite, isNegative);
    }
    const unsigned places = std::min(fractionDigits, kMaxFractionDigits);
    Decimal result;
    char* const end = std::to_chars(result.m_aDigits, result.m_aDigits + kCapacity, std::fabs(value),
                                    std::chars_format::fixed, static_cast<int>(places))
                          .ptr;
    char* const point = end - places - (places > 0 ? 1 : 0);
    if (places > 0) {
        std::copy(point + 1, end, point);
    }
    result.m_nInteger = static_cast<std::uint16_t>(point - result.m_aDigits);
    result.m_nFraction = static_cast<std::uint16_t>(places);
    result.m_bNegative = isNegative;
    result.dropLeadingZeros();
    return result;
}

std::optional<Decimal> Decimal::ofText(std::wstring_view text) noexcept
{
    Decimal result;
    if (!text.empty() && (text[0] == L'-' || text[0] == L'+')) {
        result.m_bNegative = text[0] == L'-';
        text.remove_prefix(1);
    }
    const std::size_t point = std::min(text.find(L'.'), text.size());
    const std::wstring_view fraction = text.substr(std::min(point + 1, text.size()));
    std::wstring_view integer = text.substr(0, point);
    if ((integer.empty() && fraction.empty()) || !areDigits(integer) || !areDigits(fraction)) {
        return std::nullopt;
    }
    integer.remove_prefix(std::min(integer.find_first_not_of(L'0'), integer.size()));
    return result.readDigits(integer, fraction) ? std::optional<Decimal>(result) : std::nullopt;
}

bool Decimal::isZero() const noexcept
{
    return m_eKind == kFinite && m_nInteger == 0 && areZeros(fractionDigits());
}

Decimal Decimal::rounded(unsigned fractionDigits) const noexcept
{
    Decimal result(*this);
    if (m_eKind != kFinite) {
        return result;
    }
    const unsigned places = std::min(fractionDigits, kMaxFractionDigits);
    if (places < m_nFraction) {
        result.cutFraction(places);
        return result;
    }
    std::fill_n(result.m_aDigits + m_nInteger + m_nFraction, places - m_nFraction, '0');
    result.m_nFraction = static_cast<std::uint16_t>(places);
    return result;
}

Decimal Decimal::dividedBy(std::uint64_t divisor, unsigned fractionDigits) const noexcept
{
    constexpr std::uint64_t kMaxDivisor = 1'000'000'000'000'000'000;  // ten times it fits into 64 bits
    if (m_eKind != kFinite) {
        return *this;
    }
    divisor = std::clamp<std::uint64_t>(divisor, 1, kMaxDivisor);
    Decimal result;
    result.m_bNegative = m_bNegative;
    result.m_nInteger = m_nInteger;
    result.m_nFraction = static_cast<std::uint16_t>(std::min(fractionDigits, kMaxFractionDigits));
    const std::string_view digits(m_aDigits, m_nInteger + m_nFraction);
    const std::size_t wanted = result.m_nInteger + result.m_nFraction;
    std::uint64_t remainder = 0;
    for (std::size_t i = 0; i < wanted; ++i) {
        const std::uint64_t dividend =
            remainder * 10 + (i < digits.size() ? static_cast<unsigned>(digits[i] - '0') : 0U);
        result.m_aDigits[i] = static_cast<char>('0' + dividend / divisor);
        remainder = dividend % divisor;
    }
    const std::string_view rest = digits.substr(std::min(wanted, digits.size()));
    if (roundsUp(cutOf(remainder, divisor, rest), wanted == 0 ? '0' : result.m_aDigits[wanted - 1])) {
        result.addOneAtTheEnd();
    }
    result.dropLeadingZeros();
    return result;
}

Decimal Decimal::special(Kind kind, bool isNegative) noexcept
{
    Decimal result;
    result.m_eKind = kind;
    result.m_bNegative = isNegative;
    return result;
}

// Both are digits, the integer ones without zeros in front.
bool Decimal::readDigits(std::wstring_view integer, std::wstring_view fraction) noexcept
{
    if (integer.size() > kMaxIntegerDigits || fraction.size() > kMaxFractionDigits) {
        return false;
    }
    const auto narrow = [](wchar_t c) { return static_cast<char>(c); };
    std::transform(integer.begin(), integer.end(), m_aDigits, narrow);
    std::transform(fraction.begin(), fraction.end(), m_aDigits + integer.size(), narrow);
    m_nInteger = static_cast<std::uint16_t>(integer.size());
    m_nFraction = static_cast<std::uint16_t>(fraction.size());
    return true;
}

void Decimal::setUnsigned(std::uint64_t value) noexcept
{
    char* const end = value == 0 ? m_aDigits : std::to_chars(m_aDigits, m_aDigits + kCapacity, value).ptr;
    m_nInteger = static_cast<std::uint16_t>(end - m_aDigits);
}

void Decimal::dropLeadingZeros() noexcept
{
    const std::size_t zeros = std::min(integerDigits().find_first_not_of('0'), integerDigits().size());
    if (zeros > 0) {
        std::copy(m_aDigits + zeros, m_aDigits + m_nInteger + m_nFraction, m_aDigits);
        m_nInteger = static_cast<std::uint16_t>(m_nInteger - zeros);
    }
}

void Decimal::dropTrailingZeros() noexcept
{
    while (m_nFraction > 0 && fractionDigits().back() == '0') {
        --m_nFraction;
    }
}

// 999.9 becomes 1000.0.
void Decimal::addOneAtTheEnd() noexcept
{
    const std::size_t count = m_nInteger + m_nFraction;
    std::size_t i = count;
    while (i > 0 && m_aDigits[i - 1] == '9') {
        m_aDigits[--i] = '0';
    }
    if (i > 0) {
        ++m_aDigits[i - 1];
        return;
    }
    std::copy_backward(m_aDigits, m_aDigits + count, m_aDigits + count + 1);
    m_aDigits[0] = '1';
    ++m_nInteger;
}

// `fractionDigits` is below the number of those that are there.
void Decimal::cutFraction(unsigned fractionDigits) noexcept
{
    const Cut cut = cutOf(this->fractionDigits().substr(fractionDigits));
    m_nFraction = static_cast<std::uint16_t>(fractionDigits);
    const std::size_t count = m_nInteger + m_nFraction;
    if (roundsUp(cut, count == 0 ? '0' : m_aDigits[count - 1])) {
        addOneAtTheEnd();
    }
}

// Fills up with zeros or moves the point. An own method of percents, since done again and again it would need more
// room.
Decimal Decimal::timesHundred() const noexcept
{
    constexpr unsigned kPlaces = 2;
    Decimal result = m_nFraction < kPlaces ? rounded(kPlaces) : *this;
    if (m_eKind == kFinite) {
        result.m_nInteger = static_cast<std::uint16_t>(result.m_nInteger + kPlaces);
        result.m_nFraction = static_cast<std::uint16_t>(result.m_nFraction - kPlaces);
        result.dropLeadingZeros();
    }
    return result;
}

}  // namespace vel
