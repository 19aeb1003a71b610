#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

#include "temporaryfolder.h"
#include "vel/config/config.h"
#include "vel/config/configreader.h"
#include "webi18n/localemapping.h"
#include "webi18n/localetaglookup.h"

// The process's one catalogue. The tests tell one story and run in this order.

namespace {

using vel::ConfigBase;
using vel::LocaleTagLookup;
using vel::String;

class SingletonReader final : public vel::ConfigReader
{
public:
    explicit SingletonReader(bool fails) : m_bFails(fails) {}
    String getString(const String&, const String& defaultValue) const override { return defaultValue; }
    vel::FilePath getFilePath(const String&) const override
    {
        ++m_nReads;
        if (m_bFails) {
            throw std::runtime_error("not configured yet");
        }
        return {};
    }

    mutable std::atomic<int> m_nReads{0};

private:
    bool m_bFails;
};

TEST(CatalogueSingleton, ACreationThatFailedIsTriedAgain)
{
    const vel::Handle<SingletonReader> reader = vel::makeHandle<SingletonReader>(true);
    ConfigBase::setGlobalReader(reader);
    EXPECT_THROW(LocaleTagLookup::getInstanceHandle(), std::runtime_error);
    EXPECT_THROW(LocaleTagLookup::getInstance(), std::runtime_error);
    EXPECT_EQ(2, reader->m_nReads);
}

TEST(CatalogueSingleton, EightFirstCallersGetOneCatalogueThatWasLoadedOnce)
{
    const vel::Handle<SingletonReader> reader = vel::makeHandle<SingletonReader>(false);
    ConfigBase::setGlobalReader(reader);
    std::atomic<int> waiting{8};
    std::vector<const LocaleTagLookup*> seen(8);
    std::vector<std::thread> threads;
    for (const LocaleTagLookup*& each : seen) {
        threads.emplace_back([&each, &waiting] {
            for (--waiting; waiting > 0;) {}
            each = LocaleTagLookup::getInstanceHandle().get();
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    EXPECT_EQ(1U, std::set<const LocaleTagLookup*>(seen.begin(), seen.end()).size());
    EXPECT_NE(nullptr, seen.front());
    EXPECT_EQ(1, reader->m_nReads);
    EXPECT_EQ(seen.front(), &LocaleTagLookup::getInstance());
    EXPECT_EQ(seen.front(), &LocaleTagLookup::getInstanceForLoading());
    ConfigBase::setGlobalReader({});
}

TEST(CatalogueSingleton, IsTheCatalogueOfAMappingThatIsGivenNone)
{
    const vel::LocaleMapping plain;
    const vel::LocaleMapping withNull{vel::Handle<const LocaleTagLookup>()};
    EXPECT_EQ(&LocaleTagLookup::getInstance(), plain.getLocaleTagLookup().get());
    EXPECT_EQ(&LocaleTagLookup::getInstance(), withNull.getLocaleTagLookup().get());
}

/// A mapping file of one rule that every text matches.
String mappingFile(const testsupport::TemporaryFolder& folder)
{
    return folder
        .write("mapping.xml",
               "<localeMappings><localeMapping name=\"httpAcceptLanguage\"><choose><when matches=\"*\">"
               "<localeDefinition name=\"xx\"/></when></choose></localeMapping></localeMappings>")
        .toString();
}

TEST(CatalogueSingleton, ResolvesTheRulesOfAMappingThatIsGivenNone)
{
    const testsupport::TemporaryFolder folder;
    vel::MemoryConfigReader config;
    config.set(L"Localization/AllowedLocales", L"xx");
    LocaleTagLookup::getInstanceForLoading().loadLocaleDefinitions(
        config, folder.write("definitions.xml", "<any><localeDefinition name=\"xx\"/></any>").toString());
    vel::LocaleMapping mapping{vel::Handle<const LocaleTagLookup>()};
    mapping.loadMappings(mappingFile(folder));
    EXPECT_EQ(String(L"xx"), mapping.mapLocale(L"anything", L"").first.definitionName());
}

TEST(CatalogueSingleton, AMappingWithoutACatalogueThrowsWhenARuleMatchesAndNamesTheClass)
{
    const testsupport::TemporaryFolder folder;
    vel::Handle<const LocaleTagLookup> kept;
    kept.swap(LocaleTagLookup::getInstanceHandle());
    vel::LocaleMapping mapping{vel::Handle<const LocaleTagLookup>()};
    kept.swap(LocaleTagLookup::getInstanceHandle());
    EXPECT_EQ(String(L"en-us"), mapping.mapLocale(L"xx", L"").first.definitionName()) << "no rule asks for it";
    mapping.loadMappings(mappingFile(folder));
    try {
        mapping.mapLocale(L"xx", L"");
        ADD_FAILURE() << "an empty handle was dereferenced";
    } catch (const vel::InvalidHandleException& exception) {
        EXPECT_THAT(exception.what(), testing::HasSubstr("vel::LocaleTagLookup"));
    }
}

TEST(CatalogueSingleton, AHandleThatTheHostEmptiedThrowsAndNamesTheClass)
{
    vel::Handle<const LocaleTagLookup> kept;
    kept.swap(LocaleTagLookup::getInstanceHandle());
    try {
        LocaleTagLookup::getInstance();
        ADD_FAILURE() << "an empty handle was dereferenced";
    } catch (const vel::InvalidHandleException& exception) {
        EXPECT_THAT(exception.what(), testing::HasSubstr("vel::LocaleTagLookup"));
    }
    EXPECT_THROW(LocaleTagLookup::getInstanceForLoading(), vel::InvalidHandleException);
    EXPECT_TRUE(LocaleTagLookup::getInstanceHandle().isNull());
    kept.swap(LocaleTagLookup::getInstanceHandle());
    EXPECT_NO_THROW(LocaleTagLookup::getInstance());
}

}  // namespace
