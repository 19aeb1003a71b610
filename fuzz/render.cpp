// Pictures and numbers: whatever the picture and the fields, the renderer agrees with its slow twin, and whatever the
// number and the separators, every digit is where it belongs. The first byte chooses the locale, the second the digits,
// twelve are the fields of a moment; then lines: the picture, a number, and, where they are not empty, a thousands and
// a decimal separator of a user's own.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "../tests/support/exacttext.h"
#include "lines.h"
#include "require.h"
#include "slowdatepicture.h"
#include "vel/xml/xmldocument.h"
#include "webi18n-render/datepicture.h"
#include "webi18n-render/rendernumber.h"
#include "widebytes.h"

namespace {

using fuzzing::require;
using vel::Decimal;
using vel::Locale;

constexpr std::size_t kFieldBytes = 14;

constexpr const char* kDefinitions[] = {
    "<localeDefinition name=\"bare\"/>",
    "<localeDefinition name=\"genitive\"><property name=\"genetiveMonthNames\"><property>of one</property>"
    "<property>of two</property></property><property name=\"dayNames\"><property>first</property></property>"
    "<property name=\"negativeNumberTemplate\">(#)</property></localeDefinition>",
    "<localeDefinition name=\"markers\"><property name=\"am\"/><property name=\"pm\">pp</property>"
    "<property name=\"negativeNumberTemplate\"># less</property><property name=\"percentFormat\">% #</property>"
    "</localeDefinition>"};

std::vector<Locale> makeLocales()
{
    std::vector<Locale> locales = {Locale::kUSA};
    for (const char* const definition : kDefinitions) {
        locales.emplace_back();
        locales.back().applyXmlDefinition(vel::XmlDocument::parse(definition).root());
    }
    return locales;
}

vel::DateTime momentOf(const std::uint8_t* bytes)
{
    const auto field = [bytes](std::size_t index) {
        return static_cast<std::uint16_t>(bytes[2 * index] << 8 | bytes[2 * index + 1]);
    };
    return {static_cast<std::int16_t>(field(0)), field(1), field(2), field(3), field(4), field(5), 0};
}

void renderDate(const std::wstring& picture, const vel::DateTime& moment, const Locale& locale)
{
    const testsupport::ExactText exact(picture);
    vel::StringBuffer<4> compiled;
    vel::StringBuffer<4> once;
    vel::DatePicture(exact.view()).append(moment, locale, compiled);
    vel::DatePicture::append(exact.view(), moment, locale, once);
    const std::wstring slow = reference::renderDate(picture, moment, locale);
    require(compiled.view() == slow);
    require(once.view() == slow);
}

std::wstring wide(std::string_view digits)
{
    return std::wstring(digits.begin(), digits.end());
}

/// The digits of the number with separators, counted from the right.
std::wstring slowDigits(const Decimal& number, const Locale& locale, bool isGrouping)
{
    const std::wstring separator(locale.getInfoView(Locale::kThousandsSeparator));
    std::wstring integer = wide(number.integerDigits());
    integer = integer.empty() ? L"0" : integer;
    for (std::size_t place = integer.size(); isGrouping && place > 3;) {
        place -= 3;
        integer.insert(place, separator);
    }
    const std::wstring point(locale.getInfoView(Locale::kDecimalSeparator));
    return number.fractionDigits().empty() ? integer
                                           : integer + (point.empty() ? L"." : point) + wide(number.fractionDigits());
}

void renderNumber(const Decimal& number, std::int32_t digits, const Locale& locale)
{
    const bool isGrouping = digits % 2 == 0;
    const Decimal shown = digits < 0 ? number : number.rounded(static_cast<unsigned>(digits));
    vel::StringBuffer<4> out;
    vel::RenderNumber::append(number, locale, {digits, isGrouping}, out);
    const std::wstring expected = slowDigits(shown, locale, isGrouping);
    if (shown.isNegative() && !shown.isZero()) {
        require(out.view().find(expected) != std::wstring_view::npos && out.length() > expected.size());
    } else {
        require(out.view() == expected);
    }
    vel::StringBuffer<4> percent;
    vel::RenderNumber::appendPercent(number, locale, {digits, isGrouping}, percent);
    require(percent.view().find(L'%') != std::wstring_view::npos);
    require(number.dividedBy(1, 64).fractionDigits() == number.rounded(64).fractionDigits());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::vector<Locale> kLocales = makeLocales();
    if (size < kFieldBytes) {
        return 0;
    }
    const auto [picture, number, thousands, decimal] =
        fuzzing::linesOf<4>(fuzzing::widen(data + kFieldBytes, size - kFieldBytes));
    Locale locale = kLocales[data[0] % kLocales.size()];
    locale.setOverridingThousandsSeparator(vel::String(thousands));
    locale.setOverridingDecimalSeparator(vel::String(decimal));
    renderDate(picture, momentOf(data + 2), locale);
    if (const std::optional<Decimal> value = Decimal::ofText(number)) {
        renderNumber(*value, static_cast<std::int8_t>(data[1]), locale);
    }
    return 0;
}
