#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <mutex>
#include <thread>

#include "datestesting.h"

// Every short text over an alphabet that reaches every branch of the parsers, each compared with the slow twin.

namespace {

using datestesting::brokenLaw;
using datestesting::describe;
using datestesting::show;
using vel::DateTime;
using vel::Locale;
using vel::ParseDateTime;

constexpr std::wstring_view kAlphabet = L"0139/.:-TZpm ";
/// Texts of seven characters are sixty million.
constexpr std::size_t kLongest = datestesting::isSanitized() ? 4 : datestesting::kOptimized ? 7 : 5;

/// Returns what is wrong with a text; empty for nothing.
using Check = std::function<std::string(std::wstring_view)>;

class Findings
{
public:
    void add(const std::string& text)
    {
        const std::lock_guard<std::mutex> lock(m_tMutex);
        if (m_vTexts.size() < kMost) {
            m_vTexts.push_back(text);
        }
    }
    std::string all() const
    {
        std::string result;
        for (const std::string& each : m_vTexts) {
            result += each + "\n";
        }
        return result;
    }

private:
    static constexpr std::size_t kMost = 20;
    std::mutex m_tMutex;
    std::vector<std::string> m_vTexts;
};

/// Steps to the next text of the same length whose first character stays; false behind the last.
bool step(std::wstring& text, std::vector<std::size_t>& places)
{
    for (std::size_t i = text.size(); i-- > 1;) {
        places[i] = (places[i] + 1) % kAlphabet.size();
        text[i] = kAlphabet[places[i]];
        if (places[i] != 0) {
            return true;
        }
    }
    return false;
}

template <typename CheckText>
std::size_t checkTextsFrom(wchar_t first, std::size_t length, const CheckText& check, Findings& findings)
{
    std::wstring text(length, kAlphabet[0]);
    std::vector<std::size_t> places(length, 0);
    text[0] = first;
    std::size_t count = 0;
    do {
        ++count;
        if (const std::string problem = check(text); !problem.empty()) {
            findings.add(show(text) + ": " + problem);
        }
    } while (step(text, places));
    return count;
}

/// All texts of 1 to `longest` characters, shared among the processors.
template <typename CheckText>
std::size_t checkAll(std::size_t longest, const CheckText& check, Findings& findings)
{
    std::atomic<std::size_t> next{0};
    std::atomic<std::size_t> count{0};
    const auto work = [&] {
        for (std::size_t job = next++; job < longest * kAlphabet.size(); job = next++) {
            count +=
                checkTextsFrom(kAlphabet[job % kAlphabet.size()], longest - job / kAlphabet.size(), check, findings);
        }
    };
    std::vector<std::thread> threads(std::max(1U, std::thread::hardware_concurrency()));
    for (std::thread& each : threads) {
        each = std::thread(work);
    }
    for (std::thread& each : threads) {
        each.join();
    }
    return count;
}

std::size_t textsUpTo(std::size_t longest)
{
    std::size_t total = 0;
    std::size_t ofLength = 1;
    for (std::size_t length = 1; length <= longest; ++length) {
        ofLength *= kAlphabet.size();
        total += ofLength;
    }
    return total;
}

std::string compareTyped(std::wstring_view text, const Locale& locale, const reference::Conventions& conventions,
                         unsigned expected)
{
    DateTime value;
    const unsigned found = ParseDateTime::parse(text, locale, static_cast<ParseDateTime::Fields>(expected), value);
    const reference::TypedAnswer slow = reference::parseTyped(text, conventions, expected);
    if (found != slow.m_nFound || value != slow.m_tValue) {
        return describe(found, value) + ", slow: " + describe(slow.m_nFound, slow.m_tValue);
    }
    return found == 0 ? "" : brokenLaw(found, value, slow.m_bOddFraction);
}

std::string compareXml(std::wstring_view text)
{
    datestesting::XmlParsed parsed;
    parsed.m_tValue.m_nMonth = 77;
    parsed.m_eForm = ParseDateTime::parseXmlDateTime(text.data(), text.data() + text.size(), parsed.m_tValue);
    parsed.m_bUntouched = parsed.m_tValue.m_nMonth == 77;
    const reference::XmlAnswer slow = reference::parseXml(text);
    if (parsed.m_eForm != slow.m_eForm || parsed.m_bUntouched != slow.m_bUntouched) {
        return describe(parsed) + ", slow: " + describe({slow.m_eForm, slow.m_tValue, slow.m_bUntouched});
    }
    if (parsed.m_eForm == ParseDateTime::kInvalid) {
        return "";
    }
    if (parsed.m_tValue != slow.m_tValue) {
        return describe(parsed) + ", slow: " + describe({slow.m_eForm, slow.m_tValue, slow.m_bUntouched});
    }
    const unsigned fields = datestesting::fieldsOf(parsed.m_eForm, parsed.m_tValue);
    if (parsed.m_tValue.m_nHour > 23) {
        return "hour 24";
    }
    return brokenLaw(fields, parsed.m_tValue, false);
}

void expectTypedAgrees(const reference::Conventions& conventions, unsigned expected, std::size_t longest)
{
    const Locale locale = datestesting::makeLocale(conventions);
    Findings findings;
    const std::size_t count = checkAll(
        longest, [&](std::wstring_view text) { return compareTyped(text, locale, conventions, expected); }, findings);
    EXPECT_EQ(count, textsUpTo(longest));
    EXPECT_EQ(findings.all(), "");
}

TEST(ExhaustiveXml, EveryShortTextAgreesWithTheSlowParser)
{
    Findings findings;
    EXPECT_EQ(checkAll(kLongest, compareXml, findings), textsUpTo(kLongest));
    EXPECT_EQ(findings.all(), "");
}

TEST(ExhaustiveTyped, MonthFirst)
{
    expectTypedAgrees({Locale::kMDY, L"AM", L"PM", L":", L"/"}, ParseDateTime::kTimeStamp, kLongest);
}

TEST(ExhaustiveTyped, DayFirst)
{
    expectTypedAgrees({Locale::kDMY, L"AM", L"PM", L":", L"."}, ParseDateTime::kTimeStamp, kLongest);
}

TEST(ExhaustiveTyped, YearFirst)
{
    expectTypedAgrees({Locale::kYMD, L"AM", L"PM", L":", L"-"}, ParseDateTime::kTimeStamp, kLongest);
}

// A text that is a character or two shorter reaches every branch here too: what differs is the table and the first
// slot.
TEST(ExhaustiveTyped, OtherExpectations)
{
    for (const Locale::DateOrder order : {Locale::kMDY, Locale::kDMY, Locale::kYMD}) {
        for (const unsigned expected : {ParseDateTime::kTime, ParseDateTime::kYearMonth, ParseDateTime::kMonthDay}) {
            expectTypedAgrees({order, L"AM", L"PM", L":", L"/"}, expected, kLongest - 2);
        }
    }
}

TEST(ExhaustiveTyped, OtherSeparatorsAndMarkers)
{
    const reference::Conventions rows[] = {
        {Locale::kDMY, L"m", L"p", L".", L"."},     {Locale::kDMY, L"pm", L"p", L"", L""},
        {Locale::kMDY, L"", L"", L"", L"/"},        {Locale::kMDY, L"p", L"pm", L":", L""},
        {Locale::kYMD, L"p.m", L"m:", L"T", L"Z"},  {Locale::kMDY, L"1", L"mp", L". ", L"T "},
        {Locale::kDMY, L"p m", L".p", L"::", L"--"}};
    for (const reference::Conventions& conventions : rows) {
        expectTypedAgrees(conventions, ParseDateTime::kTimeStamp, kLongest - 2);
        expectTypedAgrees(conventions, ParseDateTime::kTime, kLongest - 2);
    }
}

}  // namespace
