#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <stdexcept>

#include "casefile.h"
#include "datestesting.h"

// The case files, each row through the parser and through its slow twin.

namespace {

using datestesting::CaseRow;
using datestesting::describe;
using datestesting::quotedText;
using datestesting::readCases;
using vel::Locale;
using vel::ParseDateTime;

constexpr std::size_t kFewestCases = 250;
constexpr std::size_t kFewestLocales = 20;
const std::string ksData = WEBI18N_SOURCE_DIR "/data/";

struct KnownLocale
{
    reference::Conventions m_tConventions;
    Locale m_tLocale;
};
using KnownLocales = std::map<std::string, KnownLocale>;

void needColumns(const CaseRow& row, std::size_t count)
{
    if (row.m_vColumns.size() != count) {
        throw std::runtime_error(row.m_sPlace + ": a row of " + std::to_string(row.m_vColumns.size()) + " columns");
    }
}

template <typename Map>
typename Map::mapped_type lookUp(const CaseRow& row, const Map& map, const std::string& key)
{
    const auto found = map.find(key);
    if (found == map.end()) {
        throw std::runtime_error(row.m_sPlace + ": an unknown name: " + key);
    }
    return found->second;
}

unsigned expectedOf(const CaseRow& row)
{
    static const std::map<std::string, unsigned> kNames = {{"stamp", ParseDateTime::kTimeStamp},
                                                           {"datetime", ParseDateTime::kDateTime},
                                                           {"date", ParseDateTime::kDate},
                                                           {"time", ParseDateTime::kTime},
                                                           {"fraction", ParseDateTime::kTimeFraction},
                                                           {"hourminute", ParseDateTime::kHourMinute},
                                                           {"yearmonth", ParseDateTime::kYearMonth},
                                                           {"monthday", ParseDateTime::kMonthDay},
                                                           {"year", ParseDateTime::kYear},
                                                           {"month", ParseDateTime::kMonth},
                                                           {"day", ParseDateTime::kDay},
                                                           {"none", ParseDateTime::kParseError}};
    return lookUp(row, kNames, row.m_vColumns[1]);
}

void addLocale(const CaseRow& row, KnownLocales& locales)
{
    needColumns(row, 7);
    static const std::map<std::string, Locale::DateOrder> kOrders = {
        {"mdy", Locale::kMDY}, {"dmy", Locale::kDMY}, {"ymd", Locale::kYMD}};
    const auto& columns = row.m_vColumns;
    const reference::Conventions conventions{lookUp(row, kOrders, columns[2]), quotedText(row, columns[5]),
                                             quotedText(row, columns[6]), quotedText(row, columns[3]),
                                             quotedText(row, columns[4])};
    locales[columns[1]] = {conventions, datestesting::makeLocale(conventions)};
}

void checkTyped(const CaseRow& row, const KnownLocales& locales)
{
    needColumns(row, 5);
    EXPECT_FALSE(row.m_vColumns[4].empty()) << row.m_sPlace << ": no reason";
    const KnownLocale locale = lookUp(row, locales, row.m_vColumns[0]);
    const std::wstring text = quotedText(row, row.m_vColumns[2]);
    const unsigned expected = expectedOf(row);
    const datestesting::Parsed parsed = datestesting::parseTyped(text, locale.m_tLocale, expected);
    EXPECT_EQ(describe(parsed.m_nFound, parsed.m_tValue), row.m_vColumns[3]) << row.m_sPlace;
    const reference::TypedAnswer slow = reference::parseTyped(text, locale.m_tConventions, expected);
    EXPECT_EQ(describe(slow.m_nFound, slow.m_tValue), row.m_vColumns[3]) << row.m_sPlace << " (slow)";
}

void checkXml(const CaseRow& row)
{
    needColumns(row, 3);
    EXPECT_FALSE(row.m_vColumns[2].empty()) << row.m_sPlace << ": no reason";
    const std::wstring text = quotedText(row, row.m_vColumns[0]);
    EXPECT_EQ(describe(datestesting::parseXml(text)), row.m_vColumns[1]) << row.m_sPlace;
    const reference::XmlAnswer slow = reference::parseXml(text);
    EXPECT_EQ(describe(datestesting::XmlParsed{slow.m_eForm, slow.m_tValue, slow.m_bUntouched}), row.m_vColumns[1])
        << row.m_sPlace << " (slow)";
}

TEST(CaseFile, Typed)
{
    KnownLocales locales;
    std::size_t cases = 0;
    for (const CaseRow& row : readCases(ksData + "typed.txt")) {
        if (row.m_vColumns[0] == "locale") {
            addLocale(row, locales);
        } else {
            checkTyped(row, locales);
            ++cases;
        }
    }
    EXPECT_GE(cases, kFewestCases);
    EXPECT_GE(locales.size(), kFewestLocales);
}

TEST(CaseFile, Xml)
{
    std::size_t cases = 0;
    for (const CaseRow& row : readCases(ksData + "xml.txt")) {
        checkXml(row);
        ++cases;
    }
    EXPECT_GE(cases, kFewestCases);
}

TEST(CaseFile, ThatIsMissingFails)
{
    EXPECT_THROW(readCases(ksData + "missing.txt"), std::runtime_error);
}

}  // namespace
