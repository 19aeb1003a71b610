#include "rendering.h"

#include <limits>
#include <stdexcept>

#include "locales.h"
#include "packlocales.h"

namespace rendering {

namespace {

using vel::Decimal;
using vel::Locale;

std::string utf8(const vel::StringBufferBase& buffer)
{
    return vel::toUtf8Lossy(buffer.view());
}

}  // namespace

const std::vector<Locale>& pack()
{
    static const std::vector<Locale> kLocales = testsupport::packLocales(WEBI18N_PACK);
    return kLocales;
}

Locale packLocale(std::string_view name)
{
    for (const Locale& each : pack()) {
        if (testsupport::nameOf(each) == name) {
            return each;
        }
    }
    throw std::runtime_error("the pack has no locale " + std::string(name));
}

std::string date(std::wstring_view picture, const vel::DateTime& moment, const Locale& locale)
{
    vel::StringBuffer<63> compiled;
    vel::StringBuffer<63> once;
    vel::DatePicture(picture).append(moment, locale, compiled);
    vel::DatePicture::append(picture, moment, locale, once);
    if (compiled.view() != once.view()) {
        throw std::runtime_error("compiled " + utf8(compiled) + ", once " + utf8(once));
    }
    return utf8(compiled);
}

Decimal decimal(std::string_view text)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    if (text == "inf" || text == "-inf") {
        return Decimal::ofDouble(text == "inf" ? kInfinity : -kInfinity, 0);
    }
    if (text == "nan") {
        return Decimal::ofDouble(std::numeric_limits<double>::quiet_NaN(), 0);
    }
    const std::optional<Decimal> value = Decimal::ofText(vel::stringFromUtf8(text).value());
    if (!value) {
        throw std::runtime_error("no number: " + std::string(text));
    }
    return *value;
}

std::string show(const Decimal& number)
{
    if (number.kind() == Decimal::kNotANumber) {
        return number.isNegative() ? "-nan" : "nan";
    }
    std::string text(number.isNegative() ? "-" : "");
    if (number.kind() == Decimal::kInfinite) {
        return text + "inf";
    }
    text += number.integerDigits().empty() ? "0" : number.integerDigits();
    return number.fractionDigits().empty() ? text : text.append(".").append(number.fractionDigits());
}

std::string number(const Decimal& value, const Locale& locale, int digits, bool grouping)
{
    vel::StringBuffer<63> out;
    vel::RenderNumber::append(value, locale, {digits, grouping}, out);
    return utf8(out);
}

std::string percent(const Decimal& value, const Locale& locale, int digits)
{
    vel::StringBuffer<63> out;
    vel::RenderNumber::appendPercent(value, locale, {digits, true}, out);
    return utf8(out);
}

Locale usaWith(const std::string& properties)
{
    return testsupport::localeOf(properties, Locale::kUSA);
}

}  // namespace rendering
