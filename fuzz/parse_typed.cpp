// Typed dates and times: whatever the text and the locale's separators, the parser agrees with its slow twin. The first
// byte is what is expected, the second chooses the locale; then lines: the text, and, where they are not empty, a time
// and a date separator of a user's own.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "../tests/support/exacttext.h"
#include "lines.h"
#include "require.h"
#include "slowparsedatetime.h"
#include "vel/xml/xmldocument.h"
#include "webi18n/parsedatetime.h"
#include "widebytes.h"

namespace {

using vel::Locale;

struct LocaleRow
{
    const char* m_sOrder;
    const char* m_sTimeSeparator;
    const char* m_sDateSeparator;
    const char* m_sAM;
    const char* m_sPM;
};

constexpr LocaleRow kLocaleRows[] = {{"mdy", ":", "/", "AM", "PM"},
                                     {"dmy", ":", ".", "a. m.", "p. m."},
                                     {"ymd", ":", ". ", "\xEC\x98\xA4\xEC\xA0\x84", "\xEC\x98\xA4\xED\x9B\x84"},
                                     {"dmy", "", "", "", ""},
                                     {"mdy", "", "/", "am", "pm"},
                                     {"ymd", ":", "", "am", "pm"},
                                     {"dmy", " h ", " of ", "early", "late"},
                                     {"mdy", "/", ":", "pm", "am"},
                                     {"ymd", ".", ".", "xy", "x"},
                                     {"dmy", "-", ":", "\xF0\x9E\xA4\x80\xF0\x9E\xA4\x8E", "1p"}};

Locale makeLocale(const LocaleRow& row)
{
    const auto property = [](const char* name, const char* text) {
        return "<property name=\"" + std::string(name) + "\">" + text + "</property>";
    };
    const std::string xml = "<localeDefinition name=\"fuzz\">" + property("dateOrder", row.m_sOrder) +
                            property("timeSeparator", row.m_sTimeSeparator) +
                            property("dateSeparator", row.m_sDateSeparator) + property("am", row.m_sAM) +
                            property("pm", row.m_sPM) + "</localeDefinition>";
    Locale locale;
    locale.applyXmlDefinition(vel::XmlDocument::parse(xml).root());
    return locale;
}

std::vector<Locale> makeLocales()
{
    std::vector<Locale> locales;
    for (const LocaleRow& row : kLocaleRows) {
        locales.push_back(makeLocale(row));
    }
    return locales;
}

void compare(const std::wstring& text, const Locale& locale, unsigned expected)
{
    const testsupport::ExactText copy(text);
    vel::DateTime value;
    value.m_nMonth = 77;
    const unsigned found =
        vel::ParseDateTime::parse(copy.view(), locale, static_cast<vel::ParseDateTime::Fields>(expected), value);
    const reference::TypedAnswer slow = reference::parseTyped(text, reference::Conventions::of(locale), expected);
    fuzzing::require(found == slow.m_nFound && value == slow.m_tValue);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::vector<Locale> kLocales = makeLocales();
    if (size < 2) {
        return 0;
    }
    const auto [text, timeSeparator, dateSeparator] = fuzzing::linesOf<3>(fuzzing::widen(data + 2, size - 2));
    Locale locale = kLocales[data[1] % kLocales.size()];
    if (!timeSeparator.empty()) {
        locale.setOverridingTimeInputFormat(vel::String(timeSeparator), Locale::kNotDefined24HR);
    }
    if (!dateSeparator.empty()) {
        locale.setOverridingDateInputFormat(vel::String(dateSeparator), Locale::kDateOrderEnd_);
    }
    compare(text, locale, data[0]);
    return 0;
}
