#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "vel/core/api.h"

namespace vel {

/// A number in exact decimal digits, as it is to be shown: at most 320 digits before the point, which holds every
/// double, and 64 behind it. Digits behind the point that are 0 belong to it: 1.50 is shown as 1.50. A plain value that
/// allocates nothing; distinct ones are independent.
///
/// Rounding is to the nearest, and from the middle to the even digit: 0.125 to two places -> 0.12, 0.375 -> 0.38.
class WEBI18N_API Decimal
{
public:
    /// What a number is.
    enum Kind : unsigned
    {
        kFinite = 0,
        kInfinite = 1,
        kNotANumber = 2,
        kKindEnd_ = 3
    };

    static constexpr std::size_t kMaxIntegerDigits = 320;
    static constexpr unsigned kMaxFractionDigits = 64;

    /// 0.
    Decimal() noexcept = default;
    Decimal(const Decimal& other) noexcept;
    Decimal& operator=(const Decimal& other) noexcept;
    ~Decimal() = default;

    /// The last `fractionDigits` digits of the integer stand behind the point; places past the 64th are rounded away.
    ///
    ///     123456, 2 -> 1234.56      5, 3 -> 0.005      -7, 0 -> -7      1500, 3 -> 1.500
    ///     5, 1000 -> 0, with 64 digits behind the point
    static Decimal ofInteger(std::int64_t value, unsigned fractionDigits = 0) noexcept;

    /// The exact value of the double, rounded to so many places; more than 64 are taken as 64.
    ///
    ///     1234.5, 2 -> 1234.50      2.5, 0 -> 2      1e22, 0 -> 10000000000000000000000      -0.0, 1 -> -0.0
    ///     1.005, 2 -> 1.00: the double lies below 1.005
    ///     infinity -> kInfinite, with its sign      NaN -> kNotANumber
    static Decimal ofDouble(double value, unsigned fractionDigits) noexcept;

    /// Reads ASCII digits with a point between or at an end of them, and a sign in front; nothing for any other text,
    /// or for one with more digits than the type holds. Zeros in front do not count.
    ///
    ///     -1234.50 -> -1234.50      +7 -> 7      007.0 -> 7.0      .5 -> 0.5      5. -> 5
    ///     "", ".", "-", "1,5", " 1", "1e3", "0x1", "--1", "NaN" -> nothing
    static std::optional<Decimal> ofText(std::wstring_view text) noexcept;

    Kind kind() const noexcept { return m_eKind; }
    /// Whether it has a minus sign; zeros may have one, what is not a number never has.
    bool isNegative() const noexcept { return m_bNegative; }
    /// Whether it is finite and all of its digits are 0.
    bool isZero() const noexcept;
    /// ASCII digits without zeros in front; empty for numbers below 1. Valid until the next change.
    std::string_view integerDigits() const noexcept { return {m_aDigits, m_nInteger}; }
    /// The ASCII digits behind the point. Valid until the next change.
    std::string_view fractionDigits() const noexcept { return {m_aDigits + m_nInteger, m_nFraction}; }

    /// With exactly so many digits behind the point, at most 64: cut by rounding, or filled up with zeros. What is not
    /// finite stays.
    ///
    ///     1234.565 to 2 -> 1234.56      999.96 to 1 -> 1000.0      7 to 2 -> 7.00      -0.4 to 0 -> -0
    Decimal rounded(unsigned fractionDigits) const noexcept;

    /// Divided by an integer and rounded to so many places, at most 64, in one step. A divisor of 0 is taken as 1, one
    /// above 10^18 as 10^18. What is not finite stays.
    ///
    ///     1234567 by 1000 to 1 -> 1234.6      1 by 3 to 4 -> 0.3333      5 by 2 to 0 -> 2
    Decimal dividedBy(std::uint64_t divisor, unsigned fractionDigits) const noexcept;

private:
    friend class RenderNumber;  // moves the point for percents, and drops zeros

    // Rounding may add one digit in front, percents two.
    static constexpr std::size_t kCapacity = kMaxIntegerDigits + 3 + kMaxFractionDigits;

    static Decimal special(Kind kind, bool isNegative) noexcept;
    bool readDigits(std::wstring_view integer, std::wstring_view fraction) noexcept;
    void setUnsigned(std::uint64_t value) noexcept;
    void dropLeadingZeros() noexcept;
    void dropTrailingZeros() noexcept;
    void addOneAtTheEnd() noexcept;
    void cutFraction(unsigned fractionDigits) noexcept;
    Decimal timesHundred() const noexcept;

    // All digits, those behind the point last; the array is not initialised past them.
    char m_aDigits[kCapacity];
    std::uint16_t m_nInteger = 0;
    std::uint16_t m_nFraction = 0;
    Kind m_eKind = kFinite;
    bool m_bNegative = false;
};

}  // namespace vel
