#include <gtest/gtest.h>

#include "catalogues.h"
#include "currencies.h"
#include "eightthreads.h"
#include "vel/messages/messageformatter.h"

// Readers on eight threads over one catalogue. Expectations are counted, as they are not made on the threads.

namespace {

using namespace testsupport;
using vel::Currency;
using vel::GDVariant;
using vel::Handle;
using vel::String;

int faultsOfReader(const vel::CurrencyLookup& lookup, const Handle<const vel::MessageTable>& table)
{
    int faults = 0;
    const Handle<const Currency> local = lookup.lookupCurrencyTag(L"loc:de-de");
    const Handle<const Currency> euro = lookup.lookupCurrencySymbol(L"E");
    GDVariant out;
    local->getResolvedCurrencyDisplayMessage(table, out);
    faults += vel::MessageFormatter(table).format(*out.asMessage()) == L"e of German" ? 0 : 1;
    euro->getResolvedCurrencyDisplayName(table, out);
    faults += vel::MessageFormatter(table).format(*out.asMessage()) == L"Euro" ? 0 : 1;
    faults += lookup.lookupCurrencyTag(L"XXX").isNull() ? 0 : 1;
    faults += lookup.getCurrencyMap().at(L"EUR") == euro && lookup.getCurrencyList().size() == 2 ? 0 : 1;
    const Handle<Currency> mine(local->clone());
    mine->setLocaleDefinitionName(L"xx");
    mine->getResolvedCurrencyDisplayMessage(table, out);
    faults += out.toString() == L"e" && local->getLocaleDefinitionName() == L"de-de" ? 0 : 1;
    return faults;
}

TEST(CurrencyThreads, ReadersDoNotDisturbEachOther)
{
    const MemoryFile file;
    vel::LocaleTagLookup::getInstanceForLoading().loadLocaleDefinitions(
        *allowing(L"de-de"),
        file.write(definitionsFile(definition("de-de", property("localeDisplayMessage", "kmsgGerman")))));
    const vel::CurrencyLookup lookup =
        loaded(currency("EUR", "international", "symbol=\"E\" displayName=\"kmsgEuro\"") +
               currency("loc:de-de", "local", "symbol=\"e\" locale=\"de-de\""));
    const Handle<vel::MessageTable> table = vel::makeHandle<vel::MessageTable>(L"en");
    table->set(L"kmsgCurrencyFormatLocaleCurrencyHeading", L"%1 of %2");
    table->set(L"kmsgGerman", L"German");
    table->set(L"kmsgEuro", L"Euro");
    EXPECT_EQ(0, faultsOf([&](int) {
                  int faults = 0;
                  for (int i = 0; i < 2000; ++i) {
                      faults += faultsOfReader(lookup, table);
                  }
                  return faults;
              }));
    // Every handle was given back: the list, the map by tag and its index, and the two by symbol.
    const Handle<const Currency> euro = lookup.lookupCurrencyTag(L"EUR");
    EXPECT_EQ(lookup.getCurrencyList().back()->referenceCount() + 1, euro->referenceCount());
}

}  // namespace
