#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "currencies.h"
#include "logcapture.h"
#include "vel/xml/xmlexception.h"

// What loading writes to the log.

namespace {

using namespace testsupport;
using testing::ElementsAre;
using testing::Pair;
using vel::CurrencyLookup;
using vel::String;

constexpr const wchar_t* kSource = L"vel.i18n.currencyLookup.loadCurrencies";

/// Loads the file under a capture; returns its records, the path and what the catalogue holds.
struct LoggedLoad
{
    explicit LoggedLoad(const std::string& bytes, vel::LogSeverity least = vel::kLogInformation)
    {
        const LogCapture log(least);
        m_sPath = m_tFile.write(bytes);
        try {
            m_tLookup.loadCurrencies(m_sPath);
        } catch (const vel::XmlException&) {
            m_bThrew = true;
        }
        m_vRecords = log.records();
    }
    String loading() const { return String(L"Loading currencies file '").append(m_sPath).append(L"'."); }

    MemoryFile m_tFile;
    String m_sPath;
    CurrencyLookup m_tLookup;
    std::vector<StoredRecord> m_vRecords;
    bool m_bThrew = false;
};

void expectNothingCurrent()
{
    EXPECT_EQ(nullptr, vel::ScopedLogSource::current());
    EXPECT_EQ(nullptr, vel::ScopedLogProperty::current());
}

TEST(CurrencyLog, AnEmptyRootLogsTheInformationLineOnly)
{
    const LoggedLoad load("<Currencies/>");
    ASSERT_EQ(1U, load.m_vRecords.size());
    const StoredRecord& record = load.m_vRecords.front();
    EXPECT_EQ(vel::kLogInformation, record.m_eSeverity);
    EXPECT_EQ(kSource, record.m_sSource);
    EXPECT_EQ(load.loading(), record.text());
    EXPECT_THAT(record.m_tProperties, ElementsAre(Pair(L"currenciesFile", load.m_sPath.standard())));
    EXPECT_TRUE(load.m_tLookup.getCurrencyList().empty());
    expectNothingCurrent();
}

TEST(CurrencyLog, AnElementWithoutTagOrTypeIsAWarningWithItsText)
{
    const LoggedLoad load(currenciesFile("<Currency type='local' symbol='&lt;'>" + negative("a", "b") +
                                         "</Currency><Currency tag='x'/><Currency tag=\"y\" type=\"\" />" +
                                         currency("EUR", "international")));
    ASSERT_EQ(4U, load.m_vRecords.size());
    const wchar_t* const texts[] = {
        (L"Skipping element with blank tag or type: <Currency type=\"local\" symbol=\"&lt;\">"
         L"<negative tag=\"a\" format=\"b\"/></Currency>"),
        L"Skipping element with blank tag or type: <Currency tag=\"x\"/>",
        L"Skipping element with blank tag or type: <Currency tag=\"y\" type=\"\"/>"};
    for (std::size_t i = 0; i < 3; ++i) {
        const StoredRecord& record = load.m_vRecords[i + 1];
        EXPECT_EQ(vel::kLogWarning, record.m_eSeverity);
        EXPECT_EQ(kSource, record.m_sSource);
        EXPECT_EQ(String(texts[i]), record.text());
        EXPECT_THAT(record.m_tProperties, ElementsAre(Pair(L"currenciesFile", load.m_sPath.standard())));
    }
    EXPECT_EQ(1U, load.m_tLookup.getCurrencyList().size());
}

TEST(CurrencyLog, AnElementOfAnUnknownTypeIsDroppedWithoutARecord)
{
    const LoggedLoad load(currenciesFile(currency("a", "national") + currency("b", " ") + currency("c", "local ")));
    EXPECT_EQ(1U, load.m_vRecords.size());
    EXPECT_TRUE(load.m_tLookup.getCurrencyList().empty());
}

TEST(CurrencyLog, WhatIsSkippedOrReadAsNothingElseIsSilent)
{
    const LoggedLoad load(currenciesFile(
        currency("a", "local", "digits=\"x\" display=\"maybe\" colour=\"red\"", negative("", "x") + negative("x", "")) +
        currency("a", "local") + "<other/>"));
    EXPECT_EQ(1U, load.m_vRecords.size());
    EXPECT_EQ(2U, load.m_tLookup.getCurrencyList().size());
}

TEST(CurrencyLog, InsertsAndPerCentSignsOfAFileAreShownAsTheyStand)
{
    const LoggedLoad load(currenciesFile("<Currency type=\"local\" symbol=\"%1 %% %2\"/>"));
    ASSERT_EQ(2U, load.m_vRecords.size());
    EXPECT_EQ(String(L"Skipping element with blank tag or type: <Currency type=\"local\" symbol=\"%1 %% %2\"/>"),
              load.m_vRecords[1].text());
}

TEST(CurrencyLog, AFileThatCannotBeReadLogsTheInformationLineAndRemovesSourceAndProperty)
{
    for (const char* bytes : {"", "<Currencies>", "<Currencies><Currency/></Currencies", "\xFF"}) {
        const LoggedLoad load(bytes);
        EXPECT_TRUE(load.m_bThrew) << bytes;
        ASSERT_EQ(1U, load.m_vRecords.size()) << bytes;
        EXPECT_EQ(load.loading(), load.m_vRecords.front().text());
        expectNothingCurrent();
    }
}

TEST(CurrencyLog, ASinkForWarningsGetsNoInformation)
{
    const LoggedLoad load(currenciesFile("<Currency/>"), vel::kLogWarning);
    ASSERT_EQ(1U, load.m_vRecords.size());
    EXPECT_EQ(String(L"Skipping element with blank tag or type: <Currency/>"), load.m_vRecords.front().text());
}

TEST(CurrencyLog, TheSourceAndPropertyAreInnermostDuringTheLoad)
{
    static constexpr vel::LogSource kOuter(L"host.start");
    const vel::ScopedLogSource source(kOuter);
    const vel::ScopedLogProperty property(L"step", L"7");
    const LoggedLoad load("<Currencies/>");
    ASSERT_EQ(1U, load.m_vRecords.size());
    EXPECT_EQ(kSource, load.m_vRecords.front().m_sSource);
    EXPECT_THAT(load.m_vRecords.front().m_tProperties,
                ElementsAre(Pair(L"step", L"7"), Pair(L"currenciesFile", load.m_sPath.standard())));
    EXPECT_EQ(&kOuter, vel::ScopedLogSource::current());
    EXPECT_EQ(&property, vel::ScopedLogProperty::current());
}

TEST(CurrencyLog, TheConstructorLogsAsTheLoadDoes)
{
    const LogCapture log;
    loaded("<Currency/>");
    EXPECT_EQ(2U, log.records().size());
    expectNothingCurrent();
}

/// A host's sink that fails at warnings.
class ThrowingSink final : public vel::LogSink
{
public:
    vel::LogSeverity leastSeverity() const noexcept override { return vel::kLogWarning; }
    void write(const vel::LogRecord&) override { throw std::runtime_error("the disk is full"); }
};

TEST(CurrencyLog, ASinkThatThrowsLeavesTheCatalogueAndTheScopes)
{
    const MemoryFile file;
    CurrencyLookup lookup(file.write(currenciesFile(currency("EUR", "local"))));
    const String before = outline(lookup);
    vel::Logger::setSink(vel::makeHandle<ThrowingSink>());
    EXPECT_THROW(lookup.loadCurrencies(file.write(currenciesFile(currency("USD", "local") + "<Currency/>"))),
                 std::runtime_error);
    vel::Logger::setSink({});
    EXPECT_EQ(before, outline(lookup));
    expectNothingCurrent();
}

}  // namespace
