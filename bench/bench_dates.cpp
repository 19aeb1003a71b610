#include <time.h>
#include <unicode/smpdtfmt.h>

#include <iomanip>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "rows.h"
#include "webi18n/parsedatetime.h"

// Typed and XML dates beside general parsers, which are told the exact format, and beside readers that know nothing but
// that format: the floor.

namespace bench {

namespace {

using vel::DateTime;
using vel::Locale;
using vel::ParseDateTime;

constexpr std::size_t kLongText = 1'000'000;
constexpr std::size_t kShortText = 32;

/// A text in one format, in the forms that the parsers take.
struct Sample
{
    const char* m_sText;
    const wchar_t* m_sWide;
    const char* m_sIcuPattern;
    const char* m_sTimePattern;
    const wchar_t* m_sWideTimePattern;
    DateTime m_tValue;
};

constexpr Sample kTypedUSA = {"12/31/2005 3:15:20 PM", L"12/31/2005 3:15:20 PM", "MM/dd/yyyy h:mm:ss a",
                              "%m/%d/%Y %I:%M:%S %p",  L"%m/%d/%Y %I:%M:%S %p",  {2005, 12, 31, 15, 15, 20, 0}};
constexpr Sample kTypedGermany = {"31.12.2005", L"31.12.2005", "dd.MM.yyyy",
                                  "%d.%m.%Y",   L"%d.%m.%Y",   {2005, 12, 31, 0, 0, 0, 0}};
constexpr Sample kXml = {"2005-12-31T23:59:59.123Z",
                         L"2005-12-31T23:59:59.123Z",
                         "yyyy-MM-dd'T'HH:mm:ss.SSSX",
                         nullptr,
                         nullptr,
                         {2005, 12, 31, 23, 59, 59, 123'000'000}};
// strptime reads no fraction.
constexpr Sample kXmlWithoutFraction = {"2005-12-31T23:59:59Z", L"2005-12-31T23:59:59Z", "yyyy-MM-dd'T'HH:mm:ssX",
                                        "%Y-%m-%dT%H:%M:%SZ",   L"%Y-%m-%dT%H:%M:%SZ",   {2005, 12, 31, 23, 59, 59, 0}};

/// What a row measures must be right first.
void require(bool correct, const char* what)
{
    if (!correct) {
        throw std::runtime_error(std::string(what) + " does not read its text");
    }
}

bool isSameMoment(const std::tm& parts, const DateTime& value)
{
    return parts.tm_year + 1900 == value.m_nYear && parts.tm_mon + 1 == value.m_nMonth &&
           parts.tm_mday == value.m_nDay && parts.tm_hour == value.m_nHour && parts.tm_min == value.m_nMinute &&
           parts.tm_sec == value.m_nSecond;
}

// ------------------------------------------------------------------------------------------------------------ ours

Batch typedOurs(const Sample& sample, const Locale& locale)
{
    DateTime value;
    ParseDateTime::parse(sample.m_sWide, locale, ParseDateTime::kTimeStamp, value);
    require(value == sample.m_tValue, "ParseDateTime::parse");
    return repeated([text = std::wstring(sample.m_sWide), locale] {
        DateTime out;
        keep(text);
        keep(ParseDateTime::parse(text, locale, ParseDateTime::kTimeStamp, out));
        keep(out);
    });
}

Batch xmlOurs(const Sample& sample)
{
    const std::wstring text = sample.m_sWide;
    DateTime value;
    ParseDateTime::parseXmlDateTime(text.data(), text.data() + text.size(), value);
    require(value == sample.m_tValue, "ParseDateTime::parseXmlDateTime");
    return repeated([text] {
        DateTime out;
        keep(text);
        keep(ParseDateTime::parseXmlDateTime(text.data(), text.data() + text.size(), out));
        keep(out);
    });
}

// ----------------------------------------------------------------------------------------------------------- peers

Batch icuPeer(const Sample& sample, const icu::Locale& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto format =
        std::make_shared<icu::SimpleDateFormat>(icu::UnicodeString(sample.m_sIcuPattern), locale, status);
    const icu::UnicodeString text(sample.m_sText);
    keep(format->parse(text, status));
    require(U_SUCCESS(status), "icu::SimpleDateFormat");
    return repeated([format, text] {
        UErrorCode ignored = U_ZERO_ERROR;
        keep(format->parse(text, ignored));
    });
}

Batch strptimePeer(const Sample& sample)
{
    std::tm parts{};
    const char* end = strptime(sample.m_sText, sample.m_sTimePattern, &parts);
    require(end != nullptr && *end == '\0' && isSameMoment(parts, sample.m_tValue), "strptime");
    return repeated([text = std::string(sample.m_sText), pattern = sample.m_sTimePattern] {
        std::tm out{};
        keep(text);
        keep(strptime(text.c_str(), pattern, &out));
        keep(out);
    });
}

Batch getTimePeer(const Sample& sample)
{
    const auto stream = std::make_shared<std::wistringstream>(sample.m_sWide);
    std::tm parts{};
    *stream >> std::get_time(&parts, sample.m_sWideTimePattern);
    require(!stream->fail() && isSameMoment(parts, sample.m_tValue), "std::get_time");
    return repeated([stream, pattern = sample.m_sWideTimePattern] {
        std::tm out{};
        stream->clear();
        stream->seekg(0);
        *stream >> std::get_time(&out, pattern);
        keep(out);
    });
}

// ----------------------------------------------------------------------------------------------------------- floor

/// Takes what stands at the start of a text; every reading fails at the end of the text and for anything else.
class FixedReader
{
public:
    explicit FixedReader(std::wstring_view text) : m_pNext(text.data()), m_pEnd(text.data() + text.size()) {}

    bool digit(unsigned& value)
    {
        const unsigned digit = m_pNext == m_pEnd ? 10U : static_cast<unsigned>(*m_pNext) - L'0';
        if (digit > 9) {
            return false;
        }
        value = value * 10 + digit;
        ++m_pNext;
        return true;
    }
    template <typename Field>
    bool two(Field& field, unsigned least, unsigned most)
    {
        unsigned value = 0;
        if (!digit(value) || !digit(value) || value < least || value > most) {
            return false;
        }
        field = static_cast<Field>(value);
        return true;
    }
    bool oneOrTwo(std::uint16_t& field, unsigned least, unsigned most)
    {
        unsigned value = 0;
        if (!digit(value)) {
            return false;
        }
        digit(value);
        field = static_cast<std::uint16_t>(value);
        return value >= least && value <= most;
    }
    bool year(std::int16_t& field)
    {
        unsigned value = 0;
        if (!digit(value) || !digit(value) || !digit(value) || !digit(value)) {
            return false;
        }
        field = static_cast<std::int16_t>(value);
        return true;
    }
    bool is(wchar_t character)
    {
        if (m_pNext == m_pEnd || *m_pNext != character) {
            return false;
        }
        ++m_pNext;
        return true;
    }
    bool atEnd() const { return m_pNext == m_pEnd; }

private:
    const wchar_t* m_pNext;
    const wchar_t* m_pEnd;
};

using FixedFormat = bool (*)(std::wstring_view, DateTime&);

[[gnu::noinline]] bool readFixedUSA(std::wstring_view text, DateTime& out)
{
    FixedReader in(text);
    out.clear();
    if (!in.two(out.m_nMonth, 1, 12) || !in.is(L'/') || !in.two(out.m_nDay, 1, 31) || !in.is(L'/') ||
        !in.year(out.m_nYear) || !in.is(L' ') || !in.oneOrTwo(out.m_nHour, 1, 12) || !in.is(L':') ||
        !in.two(out.m_nMinute, 0, 59) || !in.is(L':') || !in.two(out.m_nSecond, 0, 59) || !in.is(L' ')) {
        return false;
    }
    const bool isPM = in.is(L'P');
    if ((!isPM && !in.is(L'A')) || !in.is(L'M')) {
        return false;
    }
    out.m_nHour = static_cast<std::uint16_t>(out.m_nHour % 12 + (isPM ? 12 : 0));
    return in.atEnd();
}

[[gnu::noinline]] bool readFixedGermany(std::wstring_view text, DateTime& out)
{
    FixedReader in(text);
    out.clear();
    return in.two(out.m_nDay, 1, 31) && in.is(L'.') && in.two(out.m_nMonth, 1, 12) && in.is(L'.') &&
           in.year(out.m_nYear) && in.atEnd();
}

[[gnu::noinline]] bool readFixedXml(std::wstring_view text, DateTime& out)
{
    FixedReader in(text);
    out.clear();
    if (!in.year(out.m_nYear) || !in.is(L'-') || !in.two(out.m_nMonth, 1, 12) || !in.is(L'-') ||
        !in.two(out.m_nDay, 1, 31) || !in.is(L'T') || !in.two(out.m_nHour, 0, 23) || !in.is(L':') ||
        !in.two(out.m_nMinute, 0, 59) || !in.is(L':') || !in.two(out.m_nSecond, 0, 59) || !in.is(L'.')) {
        return false;
    }
    unsigned fraction = 0;
    if (!in.digit(fraction) || !in.digit(fraction) || !in.digit(fraction)) {
        return false;
    }
    out.m_nFraction = fraction * 1'000'000;
    return in.is(L'Z') && in.atEnd();
}

Batch floorPeer(const Sample& sample, FixedFormat read)
{
    DateTime value;
    require(read(sample.m_sWide, value) && value == sample.m_tValue, "the fixed-format reader");
    return repeated([text = std::wstring(sample.m_sWide), read] {
        DateTime out;
        keep(text);
        keep(read(text, out));
        keep(out);
    });
}

// ---------------------------------------------------------------------------------------------------- long texts

Batch perCharacter(wchar_t character, std::size_t length)
{
    return repeated(
        [text = std::wstring(length, character), locale = Locale::kUSA] {
            DateTime out;
            keep(ParseDateTime::parse(text, locale, ParseDateTime::kTimeStamp, out));
            keep(out);
        },
        length);
}

Batch perXmlCharacter(wchar_t character, std::size_t length)
{
    return repeated(
        [text = std::wstring(length, character)] {
            DateTime out;
            keep(ParseDateTime::parseXmlDateTime(text.data(), text.data() + text.size(), out));
            keep(out);
        },
        length);
}

void addLinearRows(std::vector<Situation>& rows)
{
    const struct
    {
        const char* m_sName;
        wchar_t m_cCharacter;
    } kinds[] = {{"digits", L'1'}, {"letters", L'x'}, {"separators", L'/'}};
    for (const auto& kind : kinds) {
        rows.push_back({std::string("a million ") + kind.m_sName + ", each",
                        "32 of them, each",
                        {Target::kRatioAtLeast, 1 / 1.5},
                        [character = kind.m_cCharacter] {
                            return Contest{perCharacter(character, kLongText), perCharacter(character, kShortText)};
                        }});
    }
    rows.push_back({"a million XML digits, each", "32 of them, each", {Target::kRatioAtLeast, 1 / 1.5}, [] {
                        return Contest{perXmlCharacter(L'1', kLongText), perXmlCharacter(L'1', kShortText)};
                    }});
}

Locale packLocale(const Data& data, const wchar_t* name)
{
    Locale locale;
    const vel::Handle<const vel::ConfigReader> config = packConfiguration(data);
    require(loadCatalogue(data, *config)->findLocaleByDefinitionName(name, locale), "the catalogue");
    return locale;
}

void addTypedRows(std::vector<Situation>& rows, const Sample& sample, const std::string& localeName,
                  const std::function<Locale()>& locale, const icu::Locale& icuLocale, FixedFormat fixed)
{
    const std::string name = "parse \"" + std::string(sample.m_sText) + "\" " + localeName;
    rows.push_back({name, "icu::SimpleDateFormat::parse", {Target::kRatioAtLeast, 50}, [=] {
                        return Contest{typedOurs(sample, locale()), icuPeer(sample, icuLocale)};
                    }});
    rows.push_back({name, "strptime", {Target::kRatioAtLeast, 1}, [=] {
                        return Contest{typedOurs(sample, locale()), strptimePeer(sample)};
                    }});
    rows.push_back({name, "std::get_time, reused stream", {Target::kRatioAtLeast, 5}, [=] {
                        return Contest{typedOurs(sample, locale()), getTimePeer(sample)};
                    }});
    rows.push_back({name, "fixed-format reader", {Target::kRatioAtLeast, 1 / 4.0}, [=] {
                        return Contest{typedOurs(sample, locale()), floorPeer(sample, fixed)};
                    }});
}

void addXmlRows(std::vector<Situation>& rows)
{
    const std::string name = "parseXmlDateTime \"" + std::string(kXml.m_sText) + "\"";
    rows.push_back({name, "icu::SimpleDateFormat::parse", {Target::kRatioAtLeast, 100}, [] {
                        return Contest{xmlOurs(kXml), icuPeer(kXml, icu::Locale::getRoot())};
                    }});
    rows.push_back({"parseXmlDateTime \"" + std::string(kXmlWithoutFraction.m_sText) + "\"",
                    "strptime",
                    {Target::kRatioAtLeast, 3},
                    [] {
                        return Contest{xmlOurs(kXmlWithoutFraction), strptimePeer(kXmlWithoutFraction)};
                    }});
    rows.push_back({name, "fixed-format reader", {Target::kRatioAtLeast, 1 / 2.5}, [] {
                        return Contest{xmlOurs(kXml), floorPeer(kXml, readFixedXml)};
                    }});
}

}  // namespace

void addDateRows(std::vector<Situation>& rows, const Data& data)
{
    addTypedRows(
        rows, kTypedUSA, "en-us", [] { return Locale::kUSA; }, icu::Locale::getUS(), readFixedUSA);
    addTypedRows(
        rows, kTypedGermany, "de-de", [data] { return packLocale(data, L"de-de"); }, icu::Locale::getGermany(),
        readFixedGermany);
    addXmlRows(rows);
    addLinearRows(rows);
}

}  // namespace bench
