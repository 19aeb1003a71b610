#include <gtest/gtest.h>

#include <random>

#include "datestesting.h"

// Longer texts, put together at random from what the parsers look for, compared with the slow twins.

namespace {

using datestesting::describe;
using datestesting::show;
using vel::Locale;
using vel::ParseDateTime;

constexpr int kTexts = datestesting::isSanitized() ? 30'000 : 300'000;

class TextMaker
{
public:
    TextMaker(unsigned seed, std::vector<std::wstring> pieces) : m_tRandom(seed), m_vPieces(std::move(pieces)) {}

    std::wstring make()
    {
        std::wstring text;
        for (unsigned i = below(24); i > 0; --i) {
            text += below(2) == 0 ? digits() : m_vPieces[below(static_cast<unsigned>(m_vPieces.size()))];
        }
        return text;
    }
    unsigned below(unsigned end) { return static_cast<unsigned>(m_tRandom() % end); }

private:
    /// One or two mostly, so that texts are not refused at once.
    std::wstring digits()
    {
        static constexpr unsigned kLengths[] = {1, 1, 1, 1, 2, 2, 2, 2, 2, 4, 4, 9, 11, 3};
        std::wstring result;
        for (unsigned i = kLengths[below(14)]; i > 0; --i) {
            // The first of two is low, as in months and hours.
            result += static_cast<wchar_t>(L'0' + (i == 2 ? below(4) : below(10)));
        }
        return result;
    }

    std::mt19937 m_tRandom;
    std::vector<std::wstring> m_vPieces;
};

const reference::Conventions kLocales[] = {
    {Locale::kMDY, L"AM", L"PM", L":", L"/"},
    {Locale::kDMY, L"a. m.", L"p. m.", L":", L"."},
    {Locale::kYMD, L"오전", L"오후", L":", L". "},
    {Locale::kDMY, L"", L"", L"", L""},
    {Locale::kMDY, L"AM", L"PM", L"", L"/"},
    {Locale::kYMD, L"AM", L"PM", L":", L""},
    {Locale::kDMY, L"early", L"late", L" h ", L" of "},
    {Locale::kMDY, L"π.μ.", L"μ.μ.", L".", L"."},
    {Locale::kYMD, L"xy", L"x", L"/", L":"},
    {Locale::kDMY, L"\x1E900\x1E90E", L"\x1E907\x1E90E", L"\x1F600", L"\x6642"},
};

std::vector<std::wstring> piecesFor(const reference::Conventions& conventions)
{
    std::vector<std::wstring> pieces = {L":", L":",    L"/",     L"-",       L".",      L",",     L" ",   L" ",
                                        L"T", L"Z",    L"PM",    L"am",      L"p.m.",   L"A.M.",  L"p.m", L"amber",
                                        L"x", L"\xE9", L"\x3B1", L"\x1F600", L"\x2028", L"\xFF11"};
    for (const std::wstring* own :
         {&conventions.m_sAM, &conventions.m_sPM, &conventions.m_sTimeSeparator, &conventions.m_sDateSeparator}) {
        pieces.insert(pieces.end(), 4, *own);
        pieces.push_back(own->substr(0, own->size() / 2));
    }
    pieces.emplace_back(1, L'\0');
    pieces.emplace_back(1, static_cast<wchar_t>(0x110000));
    pieces.emplace_back(1, static_cast<wchar_t>(-1));
    return pieces;
}

TEST(RandomTyped, LongTextsAgreeWithTheSlowParser)
{
    static constexpr unsigned kExpected[] = {127, 127, 127, 7, 56, 3, 6, 24, 120, 0};
    unsigned seed = 20051231;
    int accepted = 0;
    for (const reference::Conventions& conventions : kLocales) {
        const Locale locale = datestesting::makeLocale(conventions);
        TextMaker maker(++seed, piecesFor(conventions));
        for (int i = 0; i < kTexts; ++i) {
            const std::wstring text = maker.make();
            const unsigned expected = kExpected[maker.below(10)];
            const datestesting::Parsed parsed = datestesting::parseTyped(text, locale, expected);
            const reference::TypedAnswer slow = reference::parseTyped(text, conventions, expected);
            ASSERT_EQ(parsed.m_nFound, slow.m_nFound) << show(text) << " expecting " << expected;
            ASSERT_EQ(parsed.m_tValue, slow.m_tValue) << show(text) << " expecting " << expected;
            if (parsed.m_nFound != 0) {
                ++accepted;
                ASSERT_EQ(datestesting::brokenLaw(parsed.m_nFound, parsed.m_tValue, slow.m_bOddFraction), "")
                    << show(text);
            }
        }
    }
    EXPECT_GT(accepted, kTexts) << "too few texts were read to the end";
}

TEST(RandomXml, LongTextsAgreeWithTheSlowParser)
{
    TextMaker maker(19991231, {L"-",     L"-",        L"-",           L"-",    L":",      L":",   L":", L"T",
                               L"Z",     L".",        L" ",           L"\t",   L"\x2028", L"x",   L"+", L"10:20:30",
                               L"2005-", L"2005-12-", L"2005-12-31T", L"--12", L"---",    L"\xA0"});
    int accepted = 0;
    for (int i = 0; i < kTexts * 10; ++i) {
        const std::wstring text = maker.make();
        const datestesting::XmlParsed parsed = datestesting::parseXml(text);
        const reference::XmlAnswer slow = reference::parseXml(text);
        ASSERT_EQ(parsed.m_eForm, slow.m_eForm) << show(text);
        ASSERT_EQ(parsed.m_bUntouched, slow.m_bUntouched) << show(text);
        if (parsed.m_eForm != ParseDateTime::kInvalid) {
            ++accepted;
            ASSERT_EQ(parsed.m_tValue, slow.m_tValue) << show(text);
        }
    }
    EXPECT_GT(accepted, kTexts / 10) << "too few texts were read to the end";
}

}  // namespace
