#include <cmath>
#include <limits>
#include <random>
#include <tuple>

#include "rendering.h"

// Decimals: what is read, how it is rounded, how it is divided.

namespace {

using rendering::decimal;
using rendering::show;
using vel::Decimal;

TEST(Decimal, OfIntegers)
{
    EXPECT_EQ(show(Decimal()), "0");
    EXPECT_EQ(show(Decimal::ofInteger(123456, 2)), "1234.56");
    EXPECT_EQ(show(Decimal::ofInteger(5, 3)), "0.005");
    EXPECT_EQ(show(Decimal::ofInteger(-7)), "-7");
    EXPECT_EQ(show(Decimal::ofInteger(1500, 3)), "1.500");
    EXPECT_EQ(show(Decimal::ofInteger(0, 2)), "0.00");
    EXPECT_EQ(show(Decimal::ofInteger(INT64_MIN)), "-9223372036854775808");
    EXPECT_EQ(show(Decimal::ofInteger(INT64_MAX, 19)), "0.9223372036854775807");
    EXPECT_EQ(show(Decimal::ofInteger(5, 64)), "0." + std::string(63, '0') + "5");
    EXPECT_EQ(show(Decimal::ofInteger(57, 65)), "0." + std::string(63, '0') + "6") << "the 65th place is rounded away";
    EXPECT_EQ(show(Decimal::ofInteger(5, 65)), "0." + std::string(64, '0')) << "the middle, to the even 0";
    EXPECT_EQ(show(Decimal::ofInteger(INT64_MIN, 66)), "-0." + std::string(47, '0') + "92233720368547758");
    EXPECT_EQ(show(Decimal::ofInteger(INT64_MAX, 4294967295U)), "0." + std::string(64, '0'));
}

TEST(Decimal, OfDoubles)
{
    EXPECT_EQ(show(Decimal::ofDouble(1234.5, 2)), "1234.50");
    EXPECT_EQ(show(Decimal::ofDouble(2.5, 0)), "2");
    EXPECT_EQ(show(Decimal::ofDouble(3.5, 0)), "4");
    EXPECT_EQ(show(Decimal::ofDouble(0.125, 2)), "0.12");
    EXPECT_EQ(show(Decimal::ofDouble(1e22, 0)), "10000000000000000000000");
    EXPECT_EQ(show(Decimal::ofDouble(1.005, 2)), "1.00");
    EXPECT_EQ(show(Decimal::ofDouble(-0.0, 1)), "-0.0");
    EXPECT_EQ(show(Decimal::ofDouble(0.1, 20)), "0.10000000000000000555") << "a double is not quite a tenth";
    EXPECT_EQ(show(Decimal::ofDouble(999.999, 2)), "1000.00");
    EXPECT_EQ(show(Decimal::ofDouble(5e-324, 64)), "0." + std::string(64, '0'));
    EXPECT_EQ(show(Decimal::ofDouble(0.5, 4294967295U)), "0.5" + std::string(63, '0'));
    EXPECT_EQ(show(decimal("-inf")), "-inf");
    EXPECT_EQ(show(Decimal::ofDouble(-std::numeric_limits<double>::quiet_NaN(), 2)), "nan");
    const Decimal largest = Decimal::ofDouble(-std::numeric_limits<double>::max(), 64);
    EXPECT_EQ(largest.integerDigits().substr(0, 17), "17976931348623157");
    EXPECT_EQ(largest.integerDigits().size(), 309U);
    EXPECT_EQ(largest.fractionDigits(), std::string(64, '0'));
}

TEST(Decimal, OfTexts)
{
    const std::pair<const wchar_t*, const char*> rows[] = {{L"-1234.50", "-1234.50"},
                                                           {L"+7", "7"},
                                                           {L"007.0", "7.0"},
                                                           {L".5", "0.5"},
                                                           {L"5.", "5"},
                                                           {L"-0", "-0"},
                                                           {L"000", "0"},
                                                           {L"-.0", "-0.0"}};
    for (const auto& [text, expected] : rows) {
        ASSERT_TRUE(Decimal::ofText(text)) << expected;
        EXPECT_EQ(show(*Decimal::ofText(text)), expected);
    }
    for (const wchar_t* const text : {L"", L".", L"-", L"+", L"-.", L"1,5", L" 1", L"1 ", L"1e3", L"0x1", L"--1",
                                      L"NaN", L"inf", L"1.2.3", L"1-", L"\u0661", L"1.\uFF15"}) {
        EXPECT_FALSE(Decimal::ofText(text)) << vel::toUtf8Lossy(text);
    }
}

TEST(Decimal, OfTextsOfTheGreatestLength)
{
    const std::wstring most(Decimal::kMaxIntegerDigits, L'9');
    const std::wstring places(Decimal::kMaxFractionDigits, L'9');
    EXPECT_EQ(show(Decimal::ofText(most + L"." + places).value()), std::string(320, '9') + "." + std::string(64, '9'));
    EXPECT_FALSE(Decimal::ofText(L"1" + most));
    EXPECT_FALSE(Decimal::ofText(L"1." + places + L"0"));
    EXPECT_TRUE(Decimal::ofText(std::wstring(100000, L'0') + most));
    // Rounding up makes one digit more, once and not again.
    const Decimal rounded = Decimal::ofText(most + L"." + places).value().rounded(0);
    EXPECT_EQ(show(rounded), "1" + std::string(320, '0'));
    EXPECT_EQ(show(rounded.rounded(1000)), "1" + std::string(320, '0') + "." + std::string(64, '0'));
    EXPECT_EQ(show(rounded.dividedBy(1, 64)), show(rounded.rounded(64)));
}

TEST(Decimal, IsRoundedToTheNearestOrEven)
{
    const std::tuple<const char*, unsigned, const char*> rows[] = {
        {"1234.565", 2, "1234.56"}, {"1234.575", 2, "1234.58"},
        {"999.96", 1, "1000.0"},    {"7", 2, "7.00"},
        {"-0.4", 0, "-0"},          {"0.5", 0, "0"},
        {"0.51", 0, "1"},           {"1.5", 0, "2"},
        {"0.49999", 0, "0"},        {"-9.5", 0, "-10"},
        {"8.50000", 0, "8"},        {"8.50001", 0, "9"},
        {"0.095", 2, "0.10"},       {"0.05", 1, "0.0"},
        {"0.15", 1, "0.2"},         {"inf", 3, "inf"}};
    for (const auto& [text, digits, expected] : rows) {
        EXPECT_EQ(show(decimal(text).rounded(digits)), expected) << text;
        if (decimal(text).kind() == Decimal::kFinite) {
            EXPECT_EQ(show(decimal(text).dividedBy(1, digits)), expected) << text << " by 1";
        }
    }
}

TEST(Decimal, IsDivided)
{
    const std::tuple<const char*, std::uint64_t, unsigned, const char*> rows[] = {
        {"1234567", 1000, 1, "1234.6"},
        {"1", 3, 4, "0.3333"},
        {"2", 3, 4, "0.6667"},
        {"5", 2, 0, "2"},
        {"7", 2, 0, "4"},
        {"5.0000001", 2, 0, "3"},
        {"-1", 1000, 2, "-0.00"},
        {"0.5", 1, 0, "0"},
        {"1.5", 3, 0, "0"},
        {"1.51", 3, 0, "1"},
        {"1.5000", 1, 2, "1.50"},
        {"99999", 10, 0, "10000"},
        {"4", 0, 1, "4.0"},
        {"1000000000000000000", 1000000000000000000, 0, "1"},
        {"1000000000000000000", UINT64_MAX, 0, "1"},
        {"nan", 7, 2, "nan"},
    };
    for (const auto& [text, divisor, digits, expected] : rows) {
        EXPECT_EQ(show(decimal(text).dividedBy(divisor, digits)), expected) << text << " by " << divisor;
    }
}

/// numerator / (10^scale * divisor) to so many places, in the integers of the processor.
std::string slowQuotient(std::int64_t numerator, unsigned scale, std::uint64_t divisor, unsigned places)
{
    std::uint64_t number = static_cast<std::uint64_t>(numerator < 0 ? -numerator : numerator);
    std::uint64_t by = divisor;
    for (unsigned i = 0; i < places; ++i) {
        number *= 10;
    }
    for (unsigned i = 0; i < scale; ++i) {
        by *= 10;
    }
    std::uint64_t quotient = number / by;
    const std::uint64_t rest = number % by * 2;
    quotient += rest > by || (rest == by && quotient % 2 == 1) ? 1U : 0U;
    std::string digits;
    for (; quotient > 0 || digits.size() <= places; quotient /= 10) {
        digits.insert(digits.begin(), static_cast<char>('0' + quotient % 10));
    }
    if (places > 0) {
        digits.insert(digits.size() - places, ".");
    }
    return (numerator < 0 ? "-" : "") + digits;
}

TEST(Decimal, IsRoundedAndDividedAsIntegersAre)
{
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        // Short numbers, so that the middle is met often.
        const std::int64_t numerator = static_cast<std::int64_t>(random() % 2'000'001) - 1'000'000;
        const unsigned scale = static_cast<unsigned>(random() % 7);
        const unsigned places = static_cast<unsigned>(random() % 7);
        const std::uint64_t divisor = 1 + random() % 40;
        const Decimal number = Decimal::ofInteger(numerator, scale);
        ASSERT_EQ(show(number.rounded(places)), slowQuotient(numerator, scale, 1, places)) << show(number);
        ASSERT_EQ(show(number.dividedBy(divisor, places)), slowQuotient(numerator, scale, divisor, places))
            << show(number) << " by " << divisor;
    }
}

/// A number is one value however it was made, and its text is read back.
TEST(Decimal, IsReadBack)
{
    std::mt19937_64 random(11);
    for (int i = 0; i < 5000; ++i) {
        const Decimal number = Decimal::ofInteger(static_cast<std::int64_t>(random() >> random() % 64), i % 25U);
        EXPECT_EQ(show(decimal(show(number))), show(number));
        const double value = std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 200) - 100);
        const std::string text = show(Decimal::ofDouble(value, 64));
        EXPECT_DOUBLE_EQ(std::stod(text), value < 1e-40 ? 0 : value) << text;
    }
}

TEST(Decimal, IsAValue)
{
    Decimal a = decimal("12.50");
    const Decimal b = a;
    a = decimal("-999999");
    const Decimal& same = a;
    a = same;
    EXPECT_EQ(show(a), "-999999");
    EXPECT_EQ(show(b), "12.50");
    EXPECT_TRUE(decimal("-0.00").isZero());
    EXPECT_TRUE(Decimal().isZero());
    EXPECT_FALSE(decimal("0.01").isZero());
    EXPECT_FALSE(decimal("inf").isZero());
}

}  // namespace
