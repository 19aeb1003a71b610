#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogues.h"
#include "eightthreads.h"
#include "printers.h"
#include "vel/messages/messagetable.h"
#include "webi18n/languagelists.h"
#include "webi18n/localemapping.h"

// Requests on eight threads over one catalogue. Expectations are counted, as they are not made on the threads.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::String;

constexpr int kRounds = 2000;

/// One user's request: mapped, adapted by own overrides, read, forgotten.
int faultsOfRequest(const vel::LocaleMapping& mapping, const String& own)
{
    Locale mine = mapping.mapLocale(L"fr-CA,fr;q=0.9", L"").first;
    const Locale before = mine;
    mine.setOverridingDateFormat(own);
    mine.setOverridingDateInputFormat(own, Locale::kYMD);
    mine.setOverridingThousandsSeparator(own);
    Locale another = mine;
    another.clearOverridingDateFormat();
    int faults = 0;
    faults += mine.getInfoAsString(Locale::kDateShortFormat) == own ? 0 : 1;
    faults += mine.getInfoAsString(Locale::kDateSeparator) == own ? 0 : 1;
    faults += another.getInfoAsString(Locale::kDateShortFormat) == L"dd/MM/yyyy" ? 0 : 1;
    faults += before.getInfoAsString(Locale::kDateSeparator) == L"/" ? 0 : 1;
    faults += mine.getNameAsString(Locale::kDay, 0) == L"lundi" ? 0 : 1;
    faults += allNames(mine, Locale::kDateTimeFormats).size() == 1 ? 0 : 1;
    return faults;
}

TEST(LocaleThreads, MapCopyAndOverrideWithoutSeeingEachOther)
{
    const Catalogue catalogue;
    catalogue.load(definition("fr-fr", property("dateShortFormat", "dd/MM/yyyy") + property("dateSeparator", "/") +
                                           listProperty("dayNames", {"lundi"}) + listProperty("dateFormats", {"d"}) +
                                           listProperty("timeFormats", {"t"})),
                   L"fr-fr");
    vel::LocaleMapping mapping(catalogue.handle());
    mapping.loadMappings(
        catalogue.write("<m><localeMapping name=\"httpAcceptLanguage\"><choose><when matches=\"fr*\">"
                        "<localeDefinition name=\"fr-fr\"/></when></choose></localeMapping></m>",
                        "mapping.xml"));
    const std::size_t shares = catalogue.find(L"fr-fr").shareCount();
    EXPECT_EQ(0, faultsOf([&](int thread) {
                  int faults = 0;
                  const String own(std::wstring(static_cast<std::size_t>(thread) + 1, L'#'));
                  for (int i = 0; i < kRounds; ++i) {
                      faults += faultsOfRequest(mapping, own);
                  }
                  return faults;
              }));
    EXPECT_EQ(shares, catalogue.find(L"fr-fr").shareCount());
}

TEST(LocaleThreads, CopiesOfOneLocaleAreChangedAtOnce)
{
    // Each thread owns a copy from the start; the last one to let go of the shared data destroys it.
    for (int round = 0; round < 200; ++round) {
        std::vector<Locale> copies(kThreads, localeOf(property("am", "shared")));
        EXPECT_EQ(0, faultsOf([&](int thread) {
                      Locale& mine = copies[static_cast<std::size_t>(thread)];
                      mine.setOverridingTimeFormat(thread % 2 == 0 ? L"even" : L"odd");
                      mine.setOverridingCurrencyTag(mine.overridingTimeFormat());
                      const bool right = mine.getInfoAsString(Locale::kAM) == L"shared" && mine.shareCount() == 1 &&
                                         mine.overridingCurrencyTag() == (thread % 2 == 0 ? L"even" : L"odd");
                      return right ? 0 : 1;
                  }));
    }
}

TEST(LocaleThreads, DefinitionsAreAppliedToCopiesAtOnce)
{
    const vel::XmlDocument document =
        vel::XmlDocument::parse(definition("derived", property("am", "x") + listProperty("dateFormats", {"d"})));
    EXPECT_EQ(0, faultsOf([&](int) {
                  int faults = 0;
                  for (int i = 0; i < 200; ++i) {
                      Locale mine = i % 2 == 0 ? Locale::kUSA : Locale();
                      mine.applyXmlDefinition(document.root());
                      faults += mine.getInfoAsString(Locale::kAM) == L"x" ? 0 : 1;
                      faults += Locale::kUSA.getInfoAsString(Locale::kAM) == L"AM" ? 0 : 1;
                  }
                  return faults;
              }));
}

TEST(LocaleThreads, FirstCallersOfTheSingletonGetTheSame)
{
    const vel::LocaleTagLookup* seen[kThreads] = {};
    EXPECT_EQ(0, faultsOf([&](int thread) {
                  seen[thread] = &vel::LocaleTagLookup::getInstance();
                  Locale locale;
                  return seen[thread]->findLocaleByDefinitionName(L"en-us", locale) ? 1 : 0;
              }));
    for (const vel::LocaleTagLookup* each : seen) {
        EXPECT_EQ(seen[0], each);
    }
}

TEST(LocaleThreads, ListsAndMessagesAreReadAtOnce)
{
    const vel::Handle<vel::MemoryConfigReader> config = vel::makeHandle<vel::MemoryConfigReader>();
    config->set(L"Localization/AllowedLanguages", L"en,fr");
    vel::LanguageLists lists;
    lists.loadConfig(*config, vel::kConfigInitialize);
    const vel::Handle<vel::MessageTable> table = vel::makeHandle<vel::MessageTable>(L"en");
    table->set(L"kmsgLocaleName_enUS", L"English");
    EXPECT_EQ(0, faultsOf([&](int) {
                  int faults = 0;
                  for (int i = 0; i < kRounds; ++i) {
                      std::vector<String> languages;
                      lists.getLanguageList(languages, L"Supported");
                      faults += languages.size() == 2 ? 0 : 1;
                      faults += Locale::kUSA.getLocaleMessage(table).toString() == L"English" ? 0 : 1;
                  }
                  return faults;
              }));
}

}  // namespace
