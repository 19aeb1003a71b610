#include <tuple>

#include "locales.h"
#include "printers.h"
#include "rendering.h"

namespace {

using rendering::decimal;
using rendering::packLocale;
using testsupport::property;
using vel::Locale;
using vel::RenderNumber;
using vel::String;

std::string nameFor(const char* number, const Locale& locale)
{
    const RenderNumber::ScaleFactor* factor = RenderNumber::findScaleFactor(decimal(number), locale);
    return factor == nullptr ? "null" : vel::toUtf8Lossy(factor->first.view());
}

std::string scaled(const char* number, const RenderNumber::ScaleFactor& factor, const Locale& locale, int digits)
{
    vel::StringBuffer<63> out;
    RenderNumber::appendScaled(decimal(number), factor, locale, {digits, true}, out);
    return vel::toUtf8Lossy(out.view());
}

std::string named(const char* name, const char* value)
{
    return "<property name=\"" + std::string(name) + "\">" + value + "</property>";
}

TEST(ScaleFactors, OfThePackAreFound)
{
    const Locale usa = packLocale("en-us");
    const std::pair<const char*, const char*> rows[] = {
        {"0", "null"},   {"999", "null"},    {"999.999", "null"}, {"1000", "K"},   {"-2500000", "M"},
        {"999999", "K"}, {"1000000.5", "M"}, {"1e", "T"},         {"inf", "null"}, {"nan", "null"}};
    for (const auto& [number, name] : rows) {
        const std::string text = number == std::string("1e") ? "1" + std::string(30, '0') : number;
        EXPECT_EQ(nameFor(text.c_str(), usa), name) << number;
    }
    EXPECT_EQ(nameFor("100000", packLocale("hi-in")), "लाख");
    EXPECT_EQ(nameFor("9999", packLocale("ja-jp")), "null");
    EXPECT_EQ(nameFor("10000", packLocale("ja-jp")), "万");
    EXPECT_EQ(nameFor("1000000", Locale::kUSA), "null") << "the built-in locale has none";
}

TEST(ScaleFactors, ThatAreNoNumbersArePassedOver)
{
    const Locale locale = testsupport::localeOf(property(
        "scaleFactors", named("zero", "0") + named("word", "k") + named("minus", "-5") + named("broken", "1.5") +
                            named("blank", " 7") + named("ten", "10") + named("again", "10") +
                            named("much", "1000000000000000001") + named("more", "00000000000000000001")));
    EXPECT_EQ(nameFor("9", locale), "null");
    EXPECT_EQ(nameFor("10", locale), "ten");
    EXPECT_EQ(nameFor("99999999999999999999999", locale), "ten");
}

TEST(ScaleFactors, Divide)
{
    const std::tuple<const char*, const wchar_t*, const wchar_t*, int, const char*> rows[] = {
        {"1234567", L"K", L"1000", 1, "1,234.6 K"},
        {"1234567", L"K", L"1000", -1, "1,234.567 K"},
        {"-2500000", L"M", L"1000000", -1, "-2.5 M"},
        {"999999", L"K", L"1000", 0, "1,000 K"},
        {"1", L"k", L"1024", -1, "0.001 k"},
        {"1536", L"k", L"1024", -1, "1.5 k"},
        {"1500.50", L"K", L"1000", -1, "1.5005 K"},
        {"1500", L"", L"1000", -1, "1.5"},
        {"2000", L"K", L"1000", 2, "2.00 K"},
        {"-4", L"K", L"1000", 2, "0.00 K"},
        {"1500", L"K", L"none", -1, "1,500"},
        {"1500", L"K", L"0", -1, "1,500"},
        {"1500", L"K", L"", 1, "1,500.0"},
        {"5", L"x", L"1", -1, "5 x"},
        {"inf", L"K", L"1000", 1, "∞ K"},
    };
    for (const auto& [number, name, value, digits, expected] : rows) {
        EXPECT_EQ(scaled(number, {String(name), String(value)}, Locale::kUSA, digits), expected) << number;
    }
}

TEST(ScaleFactors, StandInTheNegativeTemplate)
{
    const Locale locale = rendering::usaWith(property("negativeNumberTemplate", "(#)"));
    EXPECT_EQ(scaled("-2500000", {L"M", L"1000000"}, locale, -1), "(2.5 M)");
}

TEST(ScaleFactors, OfAGermanNumber)
{
    const Locale german = packLocale("de-de");
    const RenderNumber::ScaleFactor* factor = RenderNumber::findScaleFactor(decimal("1234567890"), german);
    ASSERT_NE(factor, nullptr);
    EXPECT_EQ(scaled("1234567890", *factor, german, 2), "1,23 Mrd.");
}

}  // namespace
