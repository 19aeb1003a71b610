#include <gtest/gtest.h>

#include "catalogues.h"
#include "currencies.h"
#include "faileverywhere.h"
#include "vel/log/logger.h"
#include "vel/messages/messageformatter.h"
#include "webi18n/localetaglookup.h"

// Memory that runs out at every possible moment: nothing leaks, the catalogue is as before, and the next attempt works.

namespace {

using namespace testsupport;
using vel::Currency;
using vel::CurrencyLookup;
using vel::GDVariant;
using vel::Handle;
using vel::String;

const std::string kMore = currenciesFile(
    currency("a tag that is too long to stand inside a string", "local",
             "symbol=\"a symbol that is too long to stand inside\" format=\"a picture that is long: # $\" "
             "digits=\"2\" locale=\"a locale with a name that is long\" displayMessage=\"kmsgCaptionThatIsLong\" "
             "displayName=\"kmsgNameThatIsLong\"",
             negative("a negative tag that is long", "a negative picture that is long") + negative("red", "[#]")) +
    "<Currency symbol=\"skipped\"/>" + currency("EUR", "international") + currency("EUR", "local") +
    currency("x", "national"));

class CurrencyAllocations : public testing::Test
{
protected:
    void SetUp() override
    {
        m_tLookup.loadCurrencies(m_tFirst.write(
            currenciesFile(currency("EUR", "local", "symbol=\"old\"") + currency("USD", "local", "symbol=\"$\""))));
        m_sMore = m_tSecond.write(kMore);
        m_sBefore = outline(m_tLookup);
    }
    void expectLoadingIsAllOrNothing()
    {
        CurrencyLookup warm(m_sMore);  // what is built once is built
        const std::ptrdiff_t before = outstandingBlocks();
        failEverywhere([&] { m_tLookup.loadCurrencies(m_sMore); },
                       [&] {
                           EXPECT_EQ(before, outstandingBlocks());
                           EXPECT_EQ(m_sBefore, outline(m_tLookup));
                           EXPECT_EQ(nullptr, vel::ScopedLogSource::current());
                           EXPECT_EQ(nullptr, vel::ScopedLogProperty::current());
                       });
        EXPECT_EQ(5U, m_tLookup.getCurrencyList().size());
        EXPECT_TRUE(m_tLookup.getCurrencyList()[4] == m_tLookup.lookupCurrencyTag(L"EUR"));
        EXPECT_EQ(String(L"EUR"), m_tLookup.lookupCurrencySymbol(L"old")->getTag());
    }

    MemoryFile m_tFirst;
    MemoryFile m_tSecond;
    CurrencyLookup m_tLookup;
    String m_sMore;
    String m_sBefore;
};

TEST_F(CurrencyAllocations, LoadingIsAllOrNothing)
{
    expectLoadingIsAllOrNothing();
}

/// Reads the record's text and forgets it: what a sink keeps would count as a leak.
class ForgettingSink final : public vel::LogSink
{
public:
    vel::LogSeverity leastSeverity() const noexcept override { return vel::kLogInformation; }
    void write(const vel::LogRecord& record) override { static_cast<void>(record.m_tMessage.toString()); }
};

TEST_F(CurrencyAllocations, LoadingWithALogIsAllOrNothing)
{
    vel::Logger::setSink(vel::makeHandle<ForgettingSink>());
    expectLoadingIsAllOrNothing();
    vel::Logger::setSink({});
}

TEST_F(CurrencyAllocations, TheLoadingConstructorLeaksNothing)
{
    const std::ptrdiff_t before = outstandingBlocks();
    failEverywhere([&] { const CurrencyLookup lookup(m_sMore); }, [&] { EXPECT_EQ(before, outstandingBlocks()); });
    EXPECT_EQ(before, outstandingBlocks());
}

TEST_F(CurrencyAllocations, LookUpsAllocateNothing)
{
    const String tag = L"EUR";
    const String symbol = L"$";
    const AllocationCount count;
    const bool found = !m_tLookup.lookupCurrencyTag(tag).isNull() && !m_tLookup.lookupCurrencySymbol(symbol).isNull();
    const bool missed = m_tLookup.lookupCurrencyTag(symbol).isNull();
    EXPECT_EQ(0U, count.value());
    EXPECT_TRUE(found && missed);
}

TEST_F(CurrencyAllocations, ClonesAndCaptionsLeakNothing)
{
    const CurrencyLookup lookup(m_sMore);
    const Handle<const Currency> record = lookup.getCurrencyList().front();
    const Handle<vel::MessageTable> table = vel::makeHandle<vel::MessageTable>(L"en");
    table->set(L"kmsgNameThatIsLong", L"a name that is long when it is read");
    vel::LocaleTagLookup::getInstance();
    GDVariant out;
    record->getResolvedCurrencyDisplayMessage(table, out);
    out = GDVariant();
    const std::ptrdiff_t before = outstandingBlocks();
    const auto check = [&] {
        out = GDVariant();
        EXPECT_EQ(before, outstandingBlocks());
    };
    failEverywhere([&] { const Handle<const Currency> clone(record->clone()); }, check);
    failEverywhere(
        [&] {
            record->getResolvedCurrencyDisplayName(table, out);
            static_cast<void>(vel::MessageFormatter(table).format(*out.asMessage()));
        },
        check);
    check();
}

TEST_F(CurrencyAllocations, CaptionsOfTheTableAllocateNothing)
{
    const CurrencyLookup lookup(m_sMore);
    const Handle<const Currency> record = lookup.getCurrencyList().front();
    const Handle<vel::MessageTable> table = vel::makeHandle<vel::MessageTable>(L"en");
    table->set(L"kmsgCaptionThatIsLong", L"a caption that is long when it is read");
    table->set(L"kmsgNameThatIsLong", L"a name that is long when it is read");
    GDVariant caption;
    GDVariant name;
    vel::StringBuffer<127> text;
    const AllocationCount count;
    record->getResolvedCurrencyDisplayMessage(table, caption);
    record->getResolvedCurrencyDisplayName(table, name);
    vel::MessageFormatter(table).format(*caption.asMessage(), text);
    vel::MessageFormatter(table).format(*name.asMessage(), text);
    EXPECT_EQ(0U, count.value());
    EXPECT_EQ(L"a caption that is long when it is reada name that is long when it is read", text.view());
}

TEST_F(CurrencyAllocations, AHeadingThatWasAskedForBeforeAllocatesNothing)
{
    const MemoryFile definitions;
    vel::LocaleTagLookup::getInstanceForLoading().loadLocaleDefinitions(
        *allowing(L"de-de"), definitions.write(definitionsFile(definition("de-de", ""))));
    const CurrencyLookup lookup = loaded(currency("t", "local", "symbol=\"S\" locale=\"de-de\""));
    const Handle<vel::MessageTable> table = vel::makeHandle<vel::MessageTable>(L"en");
    table->set(L"kmsgCurrencyFormatLocaleCurrencyHeading", L"%1 (%2)");
    GDVariant caption;
    lookup.getCurrencyList().front()->getResolvedCurrencyDisplayMessage(table, caption);
    vel::StringBuffer<127> text;
    const AllocationCount count;
    lookup.getCurrencyList().front()->getResolvedCurrencyDisplayMessage(table, caption);
    vel::MessageFormatter(table).format(*caption.asMessage(), text);
    EXPECT_EQ(0U, count.value());
    EXPECT_EQ(L"S (de-de)", text.view());
}

}  // namespace
