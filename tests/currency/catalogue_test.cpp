#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <type_traits>

#include "currencies.h"
#include "temporaryfolder.h"
#include "vel/xml/xmlexception.h"

// The catalogue: which elements count, what is found, and what a second load does.

namespace {

using namespace testsupport;
using testing::ElementsAre;
using vel::Currency;
using vel::CurrencyLookup;
using vel::Handle;
using vel::String;

std::vector<String> listedTags(const CurrencyLookup& lookup)
{
    std::vector<String> tags;
    for (const Handle<const Currency>& each : lookup.getCurrencyList()) {
        tags.push_back(each->getTag());
    }
    return tags;
}

String symbolOf(const Handle<const Currency>& record)
{
    return record.isNull() ? String(L"(none)") : record->getCurrencySymbol();
}

// Usable while other static objects are built.
const std::size_t g_sizeBeforeMain = CurrencyLookup::getInstance().getCurrencyList().size();
const bool g_foundBeforeMain = !CurrencyLookup::getInstance().lookupCurrencyTag(L"EUR").isNull();

TEST(CurrencyCatalogue, TheSingleInstanceIsThereEmptyBeforeMain)
{
    EXPECT_EQ(0U, g_sizeBeforeMain);
    EXPECT_FALSE(g_foundBeforeMain);
    EXPECT_EQ(&CurrencyLookup::getInstance(), &CurrencyLookup::getInstance());
    EXPECT_TRUE(CurrencyLookup::getInstance().getCurrencyMap().empty());
}

TEST(CurrencyCatalogue, TheSingleInstanceLoads)
{
    const MemoryFile file;
    CurrencyLookup::getInstance().loadCurrencies(file.write(currenciesFile(currency("EUR", "international"))));
    EXPECT_FALSE(CurrencyLookup::getInstance().lookupCurrencyTag(L"EUR").isNull());
    EXPECT_EQ(1U, CurrencyLookup::getInstance().getCurrencyList().size());
}

TEST(CurrencyCatalogue, ANewOneIsEmpty)
{
    const CurrencyLookup lookup;
    EXPECT_TRUE(lookup.getCurrencyMap().empty());
    EXPECT_TRUE(lookup.getCurrencyList().empty());
    EXPECT_TRUE(lookup.lookupCurrencyTag(L"EUR").isNull());
    EXPECT_TRUE(lookup.lookupCurrencySymbol(L"").isNull());
    EXPECT_FALSE(std::is_copy_constructible_v<CurrencyLookup>);
    EXPECT_FALSE(std::is_copy_assignable_v<CurrencyLookup>);
}

TEST(CurrencyCatalogue, ListsInTheOrderOfTheFileAndMapsByTag)
{
    const CurrencyLookup lookup =
        loaded(currency("USD", "international", "symbol=\"$\"") + currency("EUR", "international", "symbol=\"E\"") +
               currency("loc:de-de", "local", "symbol=\"e\""));
    EXPECT_THAT(listedTags(lookup), ElementsAre(String(L"USD"), String(L"EUR"), String(L"loc:de-de")));
    ASSERT_EQ(3U, lookup.getCurrencyMap().size());
    EXPECT_EQ(String(L"EUR"), lookup.getCurrencyMap().begin()->first);
    // List, map and both look-ups share one record.
    const Handle<const Currency> euro = lookup.getCurrencyList()[1];
    EXPECT_TRUE(euro == lookup.getCurrencyMap().at(L"EUR"));
    EXPECT_TRUE(euro == lookup.lookupCurrencyTag(L"EUR"));
    EXPECT_TRUE(euro == lookup.lookupCurrencySymbol(L"E"));
}

TEST(CurrencyCatalogue, LookUpsAreExact)
{
    const CurrencyLookup lookup = loaded(currency("EUR", "international", "symbol=\"kr\""));
    for (const wchar_t* tag : {L"eur", L"EU", L"EURO", L" EUR", L"EUR ", L"", L"kr"}) {
        EXPECT_TRUE(lookup.lookupCurrencyTag(tag).isNull()) << vel::toUtf8Lossy(tag);
    }
    for (const wchar_t* symbol : {L"KR", L"k", L"kr.", L"", L"EUR"}) {
        EXPECT_TRUE(lookup.lookupCurrencySymbol(symbol).isNull()) << vel::toUtf8Lossy(symbol);
    }
    EXPECT_TRUE(lookup.lookupCurrencyTag(String(L"EUR\0", 4)).isNull());
}

TEST(CurrencyCatalogue, EveryOneOfAThousandIsFound)
{
    std::string elements;
    for (int i = 0; i < 1000; ++i) {
        elements += currency("t" + std::to_string(i), "local", "symbol=\"s" + std::to_string(i) + "\"");
    }
    const CurrencyLookup lookup = loaded(elements);
    for (int i = 0; i < 1000; ++i) {
        const Handle<const Currency>& expected = lookup.getCurrencyList()[static_cast<std::size_t>(i)];
        ASSERT_TRUE(expected == lookup.lookupCurrencyTag(L"t" + std::to_wstring(i)));
        ASSERT_TRUE(expected == lookup.lookupCurrencySymbol(L"s" + std::to_wstring(i)));
        ASSERT_TRUE(lookup.lookupCurrencyTag(L"s" + std::to_wstring(i)).isNull());
    }
}

TEST(CurrencyCatalogue, OfOneTagTheSecondIsFoundAndBothAreListed)
{
    const CurrencyLookup lookup =
        loaded(currency("EUR", "local", "symbol=\"1\"") + currency("x", "local", "symbol=\"x\"") +
               currency("EUR", "local", "symbol=\"2\""));
    EXPECT_EQ(String(L"2"), symbolOf(lookup.lookupCurrencyTag(L"EUR")));
    EXPECT_THAT(listedTags(lookup), ElementsAre(String(L"EUR"), String(L"x"), String(L"EUR")));
    EXPECT_EQ(String(L"1"), symbolOf(lookup.getCurrencyList()[0]));
    EXPECT_EQ(2U, lookup.getCurrencyMap().size());
    // The first one stays found by its symbol.
    EXPECT_TRUE(lookup.getCurrencyList()[0] == lookup.lookupCurrencySymbol(L"1"));
}

TEST(CurrencyCatalogue, OfOneSymbolTheLastIsFound)
{
    const CurrencyLookup lookup =
        loaded(currency("USD", "international", "symbol=\"$\"") + currency("loc:en-us", "local", "symbol=\"$\"") +
               currency("a", "local") + currency("b", "local", "symbol=\"\""));
    EXPECT_EQ(String(L"loc:en-us"), lookup.lookupCurrencySymbol(L"$")->getTag());
    EXPECT_EQ(String(L"b"), lookup.lookupCurrencySymbol(L"")->getTag());
    EXPECT_TRUE(lookup.lookupCurrencyTag(L"").isNull());
}

TEST(CurrencyCatalogue, ASecondLoadAddsAndReplacesInTheMaps)
{
    const MemoryFile file;
    CurrencyLookup lookup(file.write(
        currenciesFile(currency("EUR", "local", "symbol=\"1\"") + currency("USD", "local", "symbol=\"$\""))));
    const Handle<const Currency> old = lookup.lookupCurrencyTag(L"EUR");
    lookup.loadCurrencies(file.write(
        currenciesFile(currency("GBP", "local", "symbol=\"$\"") + currency("EUR", "local", "symbol=\"2\""))));
    EXPECT_THAT(listedTags(lookup), ElementsAre(String(L"EUR"), String(L"USD"), String(L"GBP"), String(L"EUR")));
    EXPECT_EQ(String(L"2"), symbolOf(lookup.lookupCurrencyTag(L"EUR")));
    EXPECT_EQ(String(L"$"), symbolOf(lookup.lookupCurrencyTag(L"USD")));
    EXPECT_EQ(String(L"GBP"), lookup.lookupCurrencySymbol(L"$")->getTag());
    EXPECT_EQ(3U, lookup.getCurrencyMap().size());
    // Who holds a record keeps it.
    EXPECT_EQ(String(L"1"), symbolOf(old));
    EXPECT_TRUE(old == lookup.getCurrencyList()[0]);
}

TEST(CurrencyCatalogue, ThousandLoadsOfOneFileListItAThousandTimes)
{
    const MemoryFile file;
    const String path = file.write(currenciesFile(currency("EUR", "local") + currency("USD", "local")));
    CurrencyLookup lookup;
    for (int i = 0; i < 1000; ++i) {
        lookup.loadCurrencies(path);
    }
    EXPECT_EQ(2000U, lookup.getCurrencyList().size());
    EXPECT_EQ(2U, lookup.getCurrencyMap().size());
    EXPECT_TRUE(lookup.getCurrencyList()[1998] == lookup.lookupCurrencyTag(L"EUR"));
}

TEST(CurrencyCatalogue, RecordsOutliveTheCatalogue)
{
    EXPECT_EQ(String(L"EUR"), recordOf(currency("EUR", "local"))->getTag());
    EXPECT_EQ(1U, recordOf(currency("EUR", "local"))->referenceCount());
}

TEST(CurrencyCatalogue, AnEmptyRootLoadsNothing)
{
    EXPECT_TRUE(loadedFile("<Currencies/>").getCurrencyList().empty());
    EXPECT_TRUE(loaded(" text <!-- c --><other/>").getCurrencyList().empty());
}

TEST(CurrencyCatalogue, ARootOfAnotherNameLoadsNothing)
{
    const std::string element = currency("EUR", "local");
    for (const std::string& file :
         {"<currencies>" + element + "</currencies>", "<x>" + element + "</x>", element,
          "<x>" + currenciesFile(element) + "</x>", currenciesFile(currenciesFile(element))}) {
        EXPECT_TRUE(loadedFile(file).getCurrencyList().empty()) << file;
    }
}

TEST(CurrencyCatalogue, OnlyChildrenOfTheRootCount)
{
    const CurrencyLookup lookup =
        loaded("<group>" + currency("a", "local") + "</group>" + currency("b", "local", "", currency("c", "local")) +
               "<currency tag=\"d\" type=\"local\"/>" + "<v:Currency xmlns:v=\"u\" tag=\"e\" type=\"local\"/>");
    EXPECT_THAT(listedTags(lookup), ElementsAre(String(L"b"), String(L"e")));
}

TEST(CurrencyCatalogue, ReadsTheEncodingsOfTheByteOrderMarks)
{
    const std::string xml = currenciesFile(currency("EUR", "local"));
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char each : xml) {
        little.append({each, '\0'});
        big.append({'\0', each});
    }
    for (const std::string& file : {xml, "\xEF\xBB\xBF" + xml, little, big}) {
        EXPECT_THAT(listedTags(loadedFile(file)), ElementsAre(String(L"EUR")));
    }
}

TEST(CurrencyCatalogue, AFileThatCannotBeReadThrowsAndLeavesTheCatalogue)
{
    const TemporaryFolder folder;
    const String bad = folder.write("bad.xml", "<Currencies>" + currency("USD", "local")).toString();
    const String missing = folder.path().join(vel::FilePath(L"missing.xml")).toString();
    CurrencyLookup lookup(folder.write("good.xml", currenciesFile(currency("EUR", "local"))).toString());
    const String before = outline(lookup);
    for (const String& file : {bad, missing, folder.path().toString(), String(L""), String(L"/dev/zero")}) {
        EXPECT_THROW(lookup.loadCurrencies(file), vel::XmlException) << testing::PrintToString(file);
        EXPECT_EQ(before, outline(lookup));
        EXPECT_THROW(CurrencyLookup another(file), vel::XmlException) << testing::PrintToString(file);
    }
}

}  // namespace
