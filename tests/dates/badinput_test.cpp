#include <gtest/gtest.h>

#include <thread>

#include "datestesting.h"

// Texts that nobody types: none crashes, hangs, or makes a parser read past its end. Every text stands in a block of
// exactly its size, which a sanitizer watches.

namespace {

using datestesting::describe;
using datestesting::parseTyped;
using datestesting::parseXml;
using vel::DateTime;
using vel::Locale;
using vel::ParseDateTime;

constexpr std::size_t kLongText = 10'000'000;

const reference::Conventions kConventions[] = {
    {Locale::kMDY, L"AM", L"PM", L":", L"/"},
    {Locale::kYMD, L"오전 시간", L"오후 시간", L"시 ", L"년 "},
    {Locale::kDMY, L"", L"", L"", L""},
    {Locale::kDMY, L"a. m.", L"p. m.", L"h. ", L". "},
};

std::string readTyped(std::wstring_view text, const Locale& locale)
{
    const datestesting::Parsed parsed = parseTyped(text, locale, ParseDateTime::kTimeStamp);
    return describe(parsed.m_nFound, parsed.m_tValue);
}

TEST(BadInput, OneCharacterOfEveryClass)
{
    const wchar_t characters[] = {L'\0',
                                  L'\1',
                                  L'\t',
                                  L' ',
                                  L'/',
                                  L':',
                                  L'-',
                                  L'.',
                                  L',',
                                  L'T',
                                  L'Z',
                                  L'a',
                                  L'p',
                                  L'\x7F',
                                  L'\x80',
                                  L'\xE9',
                                  L'\x3B1',
                                  L'\x661',
                                  L'\x2028',
                                  L'\x2029',
                                  L'\x4E0A',
                                  static_cast<wchar_t>(0xD800),
                                  static_cast<wchar_t>(0xDFFF),
                                  L'\xFFFE',
                                  L'\x1F600',
                                  static_cast<wchar_t>(0x10FFFF),
                                  static_cast<wchar_t>(0x110000),
                                  static_cast<wchar_t>(0x7FFFFFFF),
                                  static_cast<wchar_t>(-1),
                                  static_cast<wchar_t>(-2147483647 - 1)};
    for (const reference::Conventions& conventions : kConventions) {
        const Locale locale = datestesting::makeLocale(conventions);
        for (const wchar_t character : characters) {
            const std::wstring text(1, character);
            EXPECT_EQ(readTyped(text, locale), "error") << datestesting::show(text);
            EXPECT_EQ(parseXml(text).m_eForm, ParseDateTime::kInvalid) << datestesting::show(text);
        }
    }
}

/// Every start of a text that is read whole, each at the end of its block.
TEST(BadInput, TextsThatAreCutOffAnywhere)
{
    const std::wstring_view texts[] = {L"12/31/2005 10:30:15.123456789 P.M.",
                                       L"31. 12. 05 3h. 15h. 20,5 p. m.",
                                       L"2005년 12년 31 오후 시간 3시 15시 20",
                                       L"2005-12-31T23:59:59.123456789 Z",
                                       L"- - --12-31Z ",
                                       L"---31 Z "};
    for (const reference::Conventions& conventions : kConventions) {
        const Locale locale = datestesting::makeLocale(conventions);
        for (const std::wstring_view text : texts) {
            for (std::size_t length = 0; length <= text.size(); ++length) {
                const std::wstring_view cut = text.substr(0, length);
                const datestesting::Parsed parsed = parseTyped(cut, locale, ParseDateTime::kTimeStamp);
                const reference::TypedAnswer slow = reference::parseTyped(cut, conventions, ParseDateTime::kTimeStamp);
                EXPECT_EQ(parsed.m_nFound, slow.m_nFound) << datestesting::show(cut);
                EXPECT_EQ(parsed.m_tValue, slow.m_tValue) << datestesting::show(cut);
                EXPECT_EQ(parseXml(cut).m_eForm, reference::parseXml(cut).m_eForm) << datestesting::show(cut);
            }
        }
    }
}

TEST(BadInput, SeparatorsOnly)
{
    for (const reference::Conventions& conventions : kConventions) {
        const Locale locale = datestesting::makeLocale(conventions);
        for (const wchar_t* text : {L"/", L"//////", L"::::", L"....", L"----", L",,,,", L"/:.-,", L" \t\n"}) {
            EXPECT_EQ(readTyped(text, locale), "error");
            EXPECT_EQ(parseXml(text).m_eForm, ParseDateTime::kInvalid);
        }
    }
}

TEST(BadInput, TenMillionCharacters)
{
    const Locale locale = datestesting::makeLocale(kConventions[0]);
    EXPECT_EQ(readTyped(std::wstring(kLongText, L'0'), locale), "Y0");
    EXPECT_EQ(readTyped(std::wstring(kLongText, L'x'), locale), "error");
    EXPECT_EQ(readTyped(std::wstring(kLongText, L'p'), locale), "error");
    EXPECT_EQ(readTyped(std::wstring(kLongText, L'/'), locale), "error");
    EXPECT_EQ(readTyped(std::wstring(kLongText, L'\0'), locale), "error");
    EXPECT_EQ(readTyped(L"1:2:3." + std::wstring(kLongText, L'0'), locale), "error");
    EXPECT_EQ(readTyped(std::wstring(kLongText, L' ') + L"12/31/2005", locale), "Y2005 M12 D31");
}

TEST(BadInput, TenMillionCharactersOfXml)
{
    EXPECT_EQ(describe(parseXml(std::wstring(kLongText, L'0'))), "invalid");
    EXPECT_EQ(describe(parseXml(std::wstring(kLongText, L' '))), "untouched");
    EXPECT_EQ(describe(parseXml(std::wstring(kLongText, L'-'))), "invalid");
    EXPECT_EQ(describe(parseXml(std::wstring(kLongText, L':'))), "invalid");
    EXPECT_EQ(describe(parseXml(std::wstring(kLongText, L' ') + L"2005" + std::wstring(kLongText, L'\n'))),
              "XmlYear Y2005");
    EXPECT_EQ(describe(parseXml(L"10:00:00." + std::wstring(kLongText, L'0'))), "invalid");
}

TEST(BadInput, MarkersOfTheLocaleThatTheTextCutsOff)
{
    const Locale locale = datestesting::makeLocale(kConventions[1]);
    const std::wstring marker = L"오후 시간";
    for (std::size_t length = 0; length < marker.size(); ++length) {
        EXPECT_EQ(readTyped(L"3시 15 " + marker.substr(0, length), locale), "h3 m15");
    }
    EXPECT_EQ(readTyped(L"3시 15 " + marker, locale), "h15 m15");
}

TEST(BadInput, AnInvalidLocaleIsRefused)
{
    DateTime value{2005, 12, 31, 1, 2, 3, 4};
    EXPECT_THROW(ParseDateTime::parse(L"12/31/2005", Locale(), ParseDateTime::kDate, value),
                 vel::InvalidHandleException);
    EXPECT_EQ(value, DateTime()) << "cleared first, always";
}

TEST(BadInput, ANullTextIsAnEmptyOne)
{
    const Locale locale = datestesting::makeLocale(kConventions[0]);
    const wchar_t* const nothing = nullptr;
    DateTime value{2005, 12, 31, 1, 2, 3, 4};
    EXPECT_EQ(ParseDateTime::parse(nothing, locale, ParseDateTime::kDate, value), ParseDateTime::kParseError);
    EXPECT_EQ(value, DateTime());
    EXPECT_EQ(ParseDateTime::explain(nothing, locale, ParseDateTime::kDate).m_eFound, ParseDateTime::kParseError);
    EXPECT_THROW(ParseDateTime::parse(nothing, Locale(), ParseDateTime::kDate, value), vel::InvalidHandleException);
}

TEST(BadInput, ATextByItsPointerEndsAtItsFirstZero)
{
    const Locale locale = datestesting::makeLocale(kConventions[0]);
    const wchar_t* const text = L"12/31/2005\0 10:30";
    DateTime value;
    EXPECT_EQ(ParseDateTime::parse(text, locale, ParseDateTime::kTimeStamp, value), ParseDateTime::kDate);
    EXPECT_EQ(value, (DateTime{2005, 12, 31, 0, 0, 0, 0}));
}

TEST(Threads, ManyParseWithOneLocaleAtOnce)
{
    const Locale locale = datestesting::makeLocale(kConventions[3]);
    std::vector<std::string> answers(4);
    std::vector<std::thread> threads;
    for (std::string& answer : answers) {
        threads.emplace_back([&answer, &locale] {
            for (int i = 0; i < 2000; ++i) {
                answer = readTyped(L"31. 12. 2005 3:15:20.5 P. M.", locale) + ", " +
                         describe(parseXml(L"-2005-12-31T23:59:59.123Z"));
            }
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    for (const std::string& answer : answers) {
        EXPECT_EQ(answer, "Y2005 M12 D31 h15 m15 s20 f500000000, XmlDateTime Y-2005 M12 D31 h23 m59 s59 f123000000");
    }
}

}  // namespace
