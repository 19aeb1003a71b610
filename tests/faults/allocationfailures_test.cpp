#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <vector>

#include "catalogues.h"
#include "faileverywhere.h"
#include "printers.h"
#include "webi18n/languagelists.h"
#include "webi18n/localemapping.h"

// Memory that runs out at every possible moment of the operations that change something: nothing leaks, what is stated
// holds afterwards, and the next attempt works.

namespace {

using namespace testsupport;
using vel::Locale;
using vel::LocaleTagLookup;
using vel::String;

const std::string kRich =
    property("am", "a text that is too long to stand inside a string") + property("dateSeparator", ". ") +
    listProperty("monthNames", {"a month with a very long name", "February", "March"}) +
    listProperty("dateFormats", {"dddd, dd MMMM yyyy", "yyyy-MM-dd"}) + listProperty("timeFormats", {"HH:mm:ss"}) +
    "<property name=\"scaleFactors\"><property name=\"K\">1000</property></property>" + property("dateOrder", "x") +
    property("thousandsSeparator", "a separator that is too long to stand inside");

TEST(AllocationFailures, ApplyingADefinitionLeavesTheLocale)
{
    const vel::XmlDocument document = vel::XmlDocument::parse(definition("rich", kRich));
    localeOf(kRich, Locale::kUSA);  // what is built once is built
    Locale locale = Locale::kUSA;
    const std::size_t shares = locale.shareCount();
    const std::ptrdiff_t before = outstandingBlocks();
    failEverywhere([&] { locale.applyXmlDefinition(document.root()); },
                   [&] {
                       EXPECT_EQ(before, outstandingBlocks());
                       EXPECT_EQ(shares, locale.shareCount());
                       EXPECT_EQ(&Locale::kUSA.definitionName(), &locale.definitionName());
                   });
    EXPECT_EQ(String(L"rich"), locale.definitionName());
    EXPECT_EQ(1U, locale.shareCount());
    locale = Locale::kUSA;
    EXPECT_EQ(before, outstandingBlocks());
}

TEST(AllocationFailures, ApplyingADefinitionLeavesAnInvalidLocaleInvalid)
{
    const vel::XmlDocument document = vel::XmlDocument::parse(definition("rich", kRich));
    localeOf(kRich);
    Locale locale;
    const std::ptrdiff_t before = outstandingBlocks();
    failEverywhere([&] { locale.applyXmlDefinition(document.root()); },
                   [&] {
                       EXPECT_EQ(before, outstandingBlocks());
                       EXPECT_FALSE(locale.isValid());
                   });
    EXPECT_EQ(String(L"rich"), locale.definitionName());
}

struct Setter
{
    const char* m_pName;
    std::function<void(Locale&, const String&)> m_fSet;
    std::function<String(const Locale&)> m_fGet;
};

const std::vector<Setter>& setters()
{
    static const std::vector<Setter> kSetters = {
        {"currency tag", [](Locale& l, const String& v) { l.setOverridingCurrencyTag(v); },
         [](const Locale& l) { return l.overridingCurrencyTag(); }},
        {"date format", [](Locale& l, const String& v) { l.setOverridingDateFormat(v); },
         [](const Locale& l) { return l.getInfoAsString(Locale::kDateShortFormat); }},
        {"time format", [](Locale& l, const String& v) { l.setOverridingTimeFormat(v); },
         [](const Locale& l) { return l.getInfoAsString(Locale::kTimeFormat); }},
        {"decimal separator", [](Locale& l, const String& v) { l.setOverridingDecimalSeparator(v); },
         [](const Locale& l) { return l.getInfoAsString(Locale::kDecimalSeparator); }},
        {"thousands separator", [](Locale& l, const String& v) { l.setOverridingThousandsSeparator(v); },
         [](const Locale& l) { return l.getInfoAsString(Locale::kThousandsSeparator); }},
        {"date input format", [](Locale& l, const String& v) { l.setOverridingDateInputFormat(v, Locale::kYMD); },
         [](const Locale& l) {
             return l.overridingDateSeparator() + L"|" + l.getInfoAsString(Locale::kDateInputFormat) + L"|" +
                    Locale::getDateOrderString(l.getDateOrder());
         }},
        {"time input format", [](Locale& l, const String& v) { l.setOverridingTimeInputFormat(v, Locale::kIs24HR); },
         [](const Locale& l) {
             return l.overridingTimeSeparator() + L"|" + l.getInfoAsString(Locale::kTimeInputFormat) +
                    (l.is24Hours() ? L"|24" : L"|12");
         }},
    };
    return kSetters;
}

TEST(AllocationFailures, AnOverrideOnACopyLeavesBothCopies)
{
    const String value = L"a value that is too long to stand inside a string";
    for (const Setter& each : setters()) {
        SCOPED_TRACE(each.m_pName);
        const Locale kept = localeOf(kRich, Locale::kUSA);
        const String old = each.m_fGet(kept);
        Locale changed = kept;
        const std::ptrdiff_t before = outstandingBlocks();
        failEverywhere([&] { each.m_fSet(changed, value); },
                       [&] {
                           EXPECT_EQ(before, outstandingBlocks());
                           EXPECT_EQ(2U, kept.shareCount());
                           EXPECT_EQ(old, each.m_fGet(changed));
                       });
        EXPECT_EQ(1U, kept.shareCount());
        EXPECT_EQ(old, each.m_fGet(kept));
        EXPECT_NE(old, each.m_fGet(changed));
    }
}

TEST(AllocationFailures, AnOverrideOnASoleOwnerLeavesItsValue)
{
    const String value = L"a value that is too long to stand inside a string";
    for (const Setter& each : setters()) {
        SCOPED_TRACE(each.m_pName);
        Locale locale = localeOf(kRich, Locale::kUSA);
        const String old = each.m_fGet(locale);
        const std::ptrdiff_t before = outstandingBlocks();
        failEverywhere([&] { each.m_fSet(locale, value); },
                       [&] {
                           EXPECT_EQ(before, outstandingBlocks());
                           EXPECT_EQ(old, each.m_fGet(locale));
                       });
        EXPECT_NE(old, each.m_fGet(locale));
    }
}

/// A catalogue of two definitions, the first of them allowed, and a file that redefines and adds.
class CatalogueAllocationFailures : public testing::Test
{
protected:
    void SetUp() override
    {
        const std::string first = definition("a", property("am", "1") + listProperty("dateFormats", {"kept"}));
        m_tCatalogue.load(first + definition("b", "", "a"), L"a");
        m_sMore = m_tCatalogue.write(
            definitionsFile(definition("b", kRich, "a") + definition("c", kRich) + definition("d", "", "c")),
            "more.xml");
        m_sLists = m_tCatalogue.write(
            "<l><localeList name=\"supported\"><localeDefinition name=\"b\"/>"
            "<localeDefinition name=\"a\"/></localeList></l>",
            "lists.xml");
    }
    std::vector<String> allowedNames() const { return m_tCatalogue.allowedNames(); }

    Catalogue m_tCatalogue;
    String m_sMore;
    String m_sLists;
};

TEST_F(CatalogueAllocationFailures, LoadConfigLeavesTheAllowedLocales)
{
    for (const vel::Handle<vel::MemoryConfigReader>& config : {allowing(L"b,a,B,nothing"), allowing(L"", m_sLists)}) {
        m_tCatalogue.lookup().loadConfig(*config, vel::kConfigReload);
        m_tCatalogue.allow(L"a");
        const std::ptrdiff_t before = outstandingBlocks();
        failEverywhere([&] { m_tCatalogue.lookup().loadConfig(*config, vel::kConfigReload); },
                       [&] {
                           EXPECT_EQ(before, outstandingBlocks());
                           EXPECT_THAT(allowedNames(), testing::ElementsAre(String(L"a")));
                       });
        EXPECT_THAT(allowedNames(), testing::ElementsAre(String(L"a"), String(L"b")));
    }
}

TEST_F(CatalogueAllocationFailures, LoadingDefinitionsKeepsTheAllowedLocalesAndWhatWasStored)
{
    const vel::Handle<vel::MemoryConfigReader> config = allowing(L"a,b,c,d");
    // Each attempt has a catalogue of its own, since a failed one may have stored definitions.
    std::size_t nth = 0;
    for (bool failed = true; failed; ++nth) {
        const std::ptrdiff_t before = outstandingBlocks();
        {
            const Catalogue catalogue;
            catalogue.load(definition("a", property("am", "1")) + definition("b", "", "a"), L"a");
            failed = failsAt(nth, [&] { catalogue.lookup().loadLocaleDefinitions(*config, m_sMore); });
            if (failed) {
                ASSERT_THAT(catalogue.allowedNames(), testing::ElementsAre(String(L"a")));
                ASSERT_EQ(String(L"1"), catalogue.find(L"a").getInfoAsString(Locale::kAM));
                ASSERT_FALSE(catalogue.lookup().isValidDataFormat(L"kept"));
                catalogue.allow(L"a,b");
                ASSERT_EQ(2U, catalogue.allowedNames().size()) << "a definition from before is gone";
            }
            catalogue.lookup().loadLocaleDefinitions(*config, m_sMore);
            ASSERT_EQ(4U, catalogue.allowedNames().size());
            ASSERT_TRUE(catalogue.lookup().isValidDataFormat(L"[DDD]"));
            ASSERT_TRUE(catalogue.lookup().isValidDataFormat(L"yyyy-MM-dd"));
        }
        ASSERT_EQ(before, outstandingBlocks()) << "at allocation " << nth;
    }
    EXPECT_LT(50U, nth);
}

TEST_F(CatalogueAllocationFailures, LoadingMappingsLeavesTheRules)
{
    std::string whens = "<when matches=\"a pattern that is long enough*\"><localeDefinition name=\"b\"/></when>";
    for (int i = 0; i < 40; ++i) {
        whens += "<when matches=\"" + std::to_string(i) + "\"/>";
    }
    const auto file = [](const std::string& rules) {
        return "<m><localeMapping name=\"httpAcceptLanguage\"><choose>" + rules + "</choose></localeMapping></m>";
    };
    vel::LocaleMapping mapping(m_tCatalogue.handle());
    const String first =
        m_tCatalogue.write(file("<when matches=\"*\"><localeDefinition name=\"a\"/></when>"), "first.xml");
    const String second = m_tCatalogue.write(file(whens), "second.xml");
    m_tCatalogue.allow(L"a,b");
    mapping.loadMappings(second);
    mapping.loadMappings(first);
    const std::ptrdiff_t before = outstandingBlocks();
    failEverywhere([&] { mapping.loadMappings(second); },
                   [&] {
                       EXPECT_EQ(before, outstandingBlocks());
                       EXPECT_EQ(String(L"a"), mapping.mapLocale(L"7", L"x").first.definitionName());
                   });
    EXPECT_EQ(String(L"en-us"), mapping.mapLocale(L"7", L"x").first.definitionName());
    EXPECT_EQ(String(L"b"), mapping.mapLocale(L"a pattern that is long enough!", L"x").first.definitionName());
}

TEST_F(CatalogueAllocationFailures, QueriesLeakNothingAndWorkAgain)
{
    m_tCatalogue.allow(L"a,b");
    std::string whens;
    for (std::size_t length = 1; length <= 40; ++length) {
        whens += "<when matches=\"" + std::string(length, 'x') + "*\"/>";
    }
    vel::LocaleMapping mapping(m_tCatalogue.handle());
    mapping.loadMappings(m_tCatalogue.write(
        "<m><localeMapping name=\"httpAcceptLanguage\"><choose>" + whens + "</choose></localeMapping></m>", "m.xml"));
    const String header(std::wstring(40, L'x'));
    const String language = L"a language that is too long to stand inside";
    const Locale rich = localeOf(kRich);
    const std::ptrdiff_t before = outstandingBlocks();
    const auto check = [&] { EXPECT_EQ(before, outstandingBlocks()); };
    failEverywhere([&] { mapping.mapLocale(header, language); }, check);
    failEverywhere([&] { mapping.explainLocale(header, language); }, check);
    failEverywhere([&] { allNames(rich, Locale::kDateTimeFormats); }, check);
    failEverywhere([&] { rich.getInfoAsString(Locale::kAM); }, check);
    failEverywhere([&] { rich.getNameAsString(Locale::kNominitiveMonth, 0); }, check);
    failEverywhere([&] { m_tCatalogue.allowedNames(); }, check);
    failEverywhere([&] { rich.getLocaleMessage({}); }, check);
    check();
}

TEST(AllocationFailures, CreatingACatalogueOrAMappingLeaksNothing)
{
    const Catalogue catalogue;
    {
        const vel::LocaleMapping warm(catalogue.handle());
    }
    const std::ptrdiff_t before = outstandingBlocks();
    const auto check = [&] { EXPECT_EQ(before, outstandingBlocks()); };
    failEverywhere([] { vel::makeHandle<LocaleTagLookup>(); }, check);
    failEverywhere([&] { const vel::LocaleMapping mapping(catalogue.handle()); }, check);
    check();
}

TEST(AllocationFailures, LoadingLanguagesLeavesTheList)
{
    const vel::Handle<vel::MemoryConfigReader> config = vel::makeHandle<vel::MemoryConfigReader>();
    vel::LanguageLists lists;
    config->set(L"Localization/AllowedLanguages", L"en");
    lists.loadConfig(*config, vel::kConfigInitialize);
    config->set(L"Localization/AllowedLanguages", L"a language of many letters,fr,another long one,,x");
    const std::ptrdiff_t before = outstandingBlocks();
    failEverywhere([&] { lists.loadConfig(*config, vel::kConfigReload); },
                   [&] {
                       EXPECT_EQ(before, outstandingBlocks());
                       std::vector<String> out;
                       lists.getSupportedLanguageList(out);
                       EXPECT_THAT(out, testing::ElementsAre(String(L"en")));
                   });
    std::vector<String> out;
    lists.getSupportedLanguageList(out);
    EXPECT_EQ(5U, out.size());
}

}  // namespace
