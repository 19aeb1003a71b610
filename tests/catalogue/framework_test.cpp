#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "catalogues.h"
#include "printers.h"
#include "vel/config/config.h"

// The catalogue as an object of the configuration framework.

namespace {

using namespace testsupport;
using testing::ElementsAre;
using testing::IsEmpty;
using vel::ConfigBase;
using vel::String;

/// Counts how often the allowed locales are read from it; throws when told to.
class CountingReader final : public vel::ConfigReader
{
public:
    enum Failure
    {
        kNone,
        kStandard,
        kOwn
    };

    String getString(const String& key, const String&) const override
    {
        EXPECT_EQ(String(L"Localization/AllowedLocales"), key);
        ++m_nReads;
        if (m_eFailure == kStandard) {
            throw std::runtime_error("standard");
        }
        if (m_eFailure == kOwn) {
            throw vel::Exception(vel::Message::text(L"own"));
        }
        return L"a";
    }
    vel::FilePath getFilePath(const String& key) const override
    {
        EXPECT_EQ(String(L"Localization/AllowedLocalesFile"), key);
        return {};
    }

    mutable int m_nReads = 0;
    Failure m_eFailure = kNone;
};

class CatalogueInFramework : public testing::Test
{
protected:
    void TearDown() override { ConfigBase::setGlobalReader({}); }

    vel::Handle<CountingReader> m_hReader = vel::makeHandle<CountingReader>();
};

TEST_F(CatalogueInFramework, CreationLoadsFromTheGlobalReaderOnceWhileNothingIsDefined)
{
    ConfigBase::setGlobalReader(m_hReader);
    const Catalogue catalogue;
    EXPECT_EQ(1, m_hReader->m_nReads);
    EXPECT_THAT(catalogue.allowedNames(), IsEmpty());
}

TEST_F(CatalogueInFramework, CreationWithoutAGlobalReaderLoadsNothing)
{
    const Catalogue catalogue;
    EXPECT_THAT(catalogue.allowedNames(), IsEmpty());
}

TEST_F(CatalogueInFramework, TheFirstFrameworkLoadRebuildsTheAllowedLocalesAndLaterOnesDoNothing)
{
    ConfigBase::setGlobalReader(m_hReader);
    const Catalogue catalogue;
    catalogue.load(definition("a", "") + definition("b", ""), L"b");
    ConfigBase::loadAll(*m_hReader);
    EXPECT_EQ(2, m_hReader->m_nReads);
    EXPECT_THAT(catalogue.allowedNames(), ElementsAre(String(L"a")));
    catalogue.allow(L"b");
    ConfigBase::loadAll(*m_hReader);
    ConfigBase::loadAll(*m_hReader);
    EXPECT_EQ(2, m_hReader->m_nReads);
    EXPECT_THAT(catalogue.allowedNames(), ElementsAre(String(L"b")));
}

std::vector<String>& reported()
{
    static std::vector<String> texts;
    return texts;
}

TEST_F(CatalogueInFramework, AFailingFirstLoadIsReportedPassedOnAndTriedAgain)
{
    const ConfigBase::ExceptionReport before =
        ConfigBase::setExceptionReport([](const vel::Message& message) { reported().push_back(message.toString()); });
    const Catalogue catalogue;
    catalogue.load(definition("a", "") + definition("b", ""), L"b");
    m_hReader->m_eFailure = CountingReader::kStandard;
    EXPECT_THROW(ConfigBase::loadAll(*m_hReader), std::runtime_error);
    m_hReader->m_eFailure = CountingReader::kOwn;
    EXPECT_THROW(ConfigBase::loadAll(*m_hReader), vel::Exception);
    EXPECT_THAT(reported(), ElementsAre(String(L"standard"), String(L"own")));
    EXPECT_THAT(catalogue.allowedNames(), ElementsAre(String(L"b")));
    m_hReader->m_eFailure = CountingReader::kNone;
    ConfigBase::loadAll(*m_hReader);
    EXPECT_THAT(catalogue.allowedNames(), ElementsAre(String(L"a")));
    EXPECT_EQ(3, m_hReader->m_nReads);
    ConfigBase::setExceptionReport(before);
}

TEST_F(CatalogueInFramework, AConstructorThatFailsLeavesNothingRegistered)
{
    m_hReader->m_eFailure = CountingReader::kOwn;
    ConfigBase::setGlobalReader(m_hReader);
    EXPECT_THROW(vel::makeHandle<vel::LocaleTagLookup>(), vel::Exception);
    EXPECT_EQ(1, m_hReader->m_nReads);
    ConfigBase::loadAll(*m_hReader);
    EXPECT_EQ(1, m_hReader->m_nReads);
}

TEST_F(CatalogueInFramework, ADestroyedCatalogueIsNotLoaded)
{
    {
        const Catalogue catalogue;
    }
    ConfigBase::loadAll(*m_hReader);
    EXPECT_EQ(0, m_hReader->m_nReads);
}

}  // namespace
