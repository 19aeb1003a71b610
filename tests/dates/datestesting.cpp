#include "datestesting.h"

#include <array>
#include <cstdio>
#include <cstring>

#include "exacttext.h"
#include "vel/xml/xmldocument.h"

namespace datestesting {

namespace {

using vel::DateTime;
using vel::Locale;
using vel::ParseDateTime;

std::wstring escaped(std::wstring_view text)
{
    std::wstring result;
    for (const wchar_t character : text) {
        if (character == L'<' || character == L'&') {
            result += character == L'<' ? L"&lt;" : L"&amp;";
        } else {
            result += character;
        }
    }
    return result;
}

void addProperty(std::wstring& xml, const wchar_t* name, std::wstring_view text)
{
    xml.append(L"<property name=\"").append(name).append(L"\">").append(escaped(text)).append(L"</property>");
}

struct FieldRow
{
    unsigned m_nField;
    char m_cLetter;
    long long m_nValue;
    long long m_nLeast;
    long long m_nMost;
};

/// Hour 24 is accepted in typed texts, year 0 is what a longer year may be cut to.
std::array<FieldRow, 7> rowsOf(const DateTime& value)
{
    return {{{ParseDateTime::kYear, 'Y', value.m_nYear, -32768, 32767},
             {ParseDateTime::kMonth, 'M', value.m_nMonth, 1, 12},
             {ParseDateTime::kDay, 'D', value.m_nDay, 1, 31},
             {ParseDateTime::kHour, 'h', value.m_nHour, 0, 24},
             {ParseDateTime::kMinute, 'm', value.m_nMinute, 0, 59},
             {ParseDateTime::kSecond, 's', value.m_nSecond, 0, 59},
             {ParseDateTime::kNanoseconds, 'f', value.m_nFraction, 0, 999'999'999}}};
}

DateTime filled()
{
    DateTime value;
    value.m_nYear = -1;
    value.m_nMonth = 77;
    value.m_nDay = 77;
    value.m_nHour = 77;
    value.m_nMinute = 77;
    value.m_nSecond = 77;
    value.m_nFraction = 7'777'777;
    return value;
}

}  // namespace

Locale makeLocale(const reference::Conventions& conventions)
{
    std::wstring xml = L"<localeDefinition name=\"test\">";
    addProperty(xml, L"dateOrder", Locale::getDateOrderString(conventions.m_eOrder).view());
    addProperty(xml, L"timeSeparator", conventions.m_sTimeSeparator);
    addProperty(xml, L"dateSeparator", conventions.m_sDateSeparator);
    addProperty(xml, L"am", conventions.m_sAM);
    addProperty(xml, L"pm", conventions.m_sPM);
    xml += L"</localeDefinition>";
    Locale locale;
    locale.applyXmlDefinition(vel::XmlDocument::parse(vel::toUtf8Lossy(xml)).root());
    return locale;
}

Parsed parseTyped(std::wstring_view text, const Locale& locale, unsigned expected)
{
    const testsupport::ExactText copy(text);
    Parsed result{0, filled()};
    result.m_nFound =
        ParseDateTime::parse(copy.view(), locale, static_cast<ParseDateTime::Fields>(expected), result.m_tValue);
    return result;
}

XmlParsed parseXml(std::wstring_view text)
{
    const testsupport::ExactText copy(text);
    XmlParsed result;
    result.m_tValue = filled();
    result.m_eForm = ParseDateTime::parseXmlDateTime(copy.begin(), copy.end(), result.m_tValue);
    result.m_bUntouched = result.m_tValue == filled();
    return result;
}

std::string describe(unsigned fields, const DateTime& value)
{
    std::string result;
    for (const FieldRow& row : rowsOf(value)) {
        if ((fields & row.m_nField) != 0) {
            result += (result.empty() ? "" : " ") + std::string(1, row.m_cLetter) + std::to_string(row.m_nValue);
        }
    }
    return result.empty() ? "error" : result;
}

std::string describe(const XmlParsed& parsed)
{
    static constexpr const char* kNames[] = {"invalid",      "XmlDateTime", "XmlDate",  "XmlTime", "XmlYear",
                                             "XmlYearMonth", "XmlMonthDay", "XmlMonth", "XmlDay"};
    if (parsed.m_eForm == ParseDateTime::kInvalid) {
        return parsed.m_bUntouched ? "untouched" : "invalid";
    }
    return kNames[parsed.m_eForm] + (" " + describe(fieldsOf(parsed.m_eForm, parsed.m_tValue), parsed.m_tValue));
}

std::string show(std::wstring_view text)
{
    std::string result = "\"";
    for (const wchar_t character : text) {
        if (character >= 0x20 && character < 0x7F) {
            result += static_cast<char>(character);
        } else {
            char code[24];
            std::snprintf(code, sizeof code, "\\x{%X}", static_cast<unsigned>(character));
            result += code;
        }
    }
    return result + '"';
}

unsigned fieldsOf(ParseDateTime::XmlType form, const DateTime& value)
{
    static constexpr unsigned kFields[] = {0,
                                           ParseDateTime::kDateTime,
                                           ParseDateTime::kDate,
                                           ParseDateTime::kTime,
                                           ParseDateTime::kYear,
                                           ParseDateTime::kYearMonth,
                                           ParseDateTime::kMonthDay,
                                           ParseDateTime::kMonth,
                                           ParseDateTime::kDay};
    const bool hasFraction = (kFields[form] & ParseDateTime::kTime) != 0 && value.m_nFraction != 0;
    return kFields[form] | (hasFraction ? ParseDateTime::kNanoseconds : 0U);
}

std::string brokenLaw(unsigned found, const DateTime& value, bool anyFraction)
{
    for (const FieldRow& row : rowsOf(value)) {
        if ((found & row.m_nField) == 0) {
            if (row.m_nValue != 0) {
                return std::string(1, row.m_cLetter) + " was not found and is not 0";
            }
        } else if ((row.m_nValue < row.m_nLeast || row.m_nValue > row.m_nMost) &&
                   !(anyFraction && row.m_nField == ParseDateTime::kNanoseconds)) {
            return std::string(1, row.m_cLetter) + " is out of its range";
        }
    }
    return found < 128 ? "" : "a mask of unknown fields";
}

}  // namespace datestesting
