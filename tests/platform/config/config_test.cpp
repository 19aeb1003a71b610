#include "vel/config/config.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

#include "assertioncapture.h"
#include "logcapture.h"
#include "printers.h"

namespace {

using testsupport::AssertionCapture;
using testsupport::LogCapture;
using vel::Config;
using vel::ConfigBase;
using vel::EConfig;
using vel::Exception;
using vel::Handle;
using vel::makeHandle;
using vel::MemoryConfigReader;
using vel::Message;

/// Registered, and records how it was loaded.
class Loaded
{
public:
    enum Failure
    {
        kNone,
        kException,
        kStandard,
        kOther
    };

    explicit Loaded(vel::EConfigReload reload = vel::kConfigDontSupportReload) : m_tConfig(reload) {}

    bool loadConfig(const vel::ConfigReader& reader, EConfig mode)
    {
        m_tModes.push_back(mode);
        m_sValue = reader.getString(L"value", L"(none)");
        if (m_pOrder != nullptr) {
            m_pOrder->push_back(this);
        }
        if (m_eFailure == kException) {
            throw Exception(Message::text(L"no '%1'").insert(1, L"value"));
        }
        if (m_eFailure == kStandard) {
            throw std::runtime_error("caf\xC3\xA9 closed");
        }
        if (m_eFailure == kOther) {
            throw 42;
        }
        return m_bResult;
    }

    std::vector<EConfig> m_tModes;
    vel::String m_sValue;
    Failure m_eFailure = kNone;
    bool m_bResult = true;
    std::vector<Loaded*>* m_pOrder = nullptr;
    Config<Loaded> m_tConfig;
};

using Modes = std::vector<EConfig>;

class ConfigTest : public testing::Test
{
protected:
    ConfigTest() { m_tReader.set(L"value", L"v"); }
    ~ConfigTest() override
    {
        ConfigBase::setGlobalReader({});
        ConfigBase::setExceptionReport(nullptr);
    }

    MemoryConfigReader m_tReader;
};

TEST_F(ConfigTest, InitializeWithoutAGlobalReaderLoadsNothing)
{
    Loaded object;
    object.m_tConfig.initialize(object);
    EXPECT_TRUE(object.m_tModes.empty());
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kCreated);
}

TEST_F(ConfigTest, InitializeLoadsFromTheGlobalReaderAndTheStateStays)
{
    const Handle<MemoryConfigReader> global = makeHandle<MemoryConfigReader>();
    global->set(L"value", L"global");
    ConfigBase::setGlobalReader(global);
    EXPECT_EQ(ConfigBase::globalReader().get(), global.get());
    Loaded object;
    object.m_tConfig.initialize(object);
    EXPECT_EQ(object.m_tModes, Modes{vel::kConfigInitialize});
    EXPECT_EQ(object.m_sValue, L"global");
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kCreated);
    // So the first load of the framework initialises it once more.
    object.m_tConfig.load(m_tReader);
    EXPECT_EQ(object.m_tModes, (Modes{vel::kConfigInitialize, vel::kConfigInitialize}));
    EXPECT_EQ(object.m_sValue, L"v");
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kInitialized);
}

TEST_F(ConfigTest, ExceptionsOfTheFirstLoadPassUnreported)
{
    ConfigBase::setGlobalReader(makeHandle<MemoryConfigReader>());
    const LogCapture log;
    Loaded object;
    object.m_eFailure = Loaded::kException;
    EXPECT_THROW(object.m_tConfig.initialize(object), Exception);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(ConfigTest, TheGlobalReaderIsHeldAndReleased)
{
    EXPECT_TRUE(ConfigBase::globalReader().isNull());
    const Handle<MemoryConfigReader> global = makeHandle<MemoryConfigReader>();
    ConfigBase::setGlobalReader(global);
    EXPECT_EQ(global->referenceCount(), 2U);
    ConfigBase::setGlobalReader({});
    EXPECT_EQ(global->referenceCount(), 1U);
}

TEST_F(ConfigTest, WithoutReloadOnlyTheFirstLoadCounts)
{
    Loaded object(vel::kConfigDontSupportReload);
    EXPECT_EQ(object.m_tConfig.reloadCapability(), vel::kConfigDontSupportReload);
    object.m_tConfig.initialize(object);
    object.m_tConfig.load(m_tReader);
    object.m_tConfig.load(m_tReader);
    EXPECT_EQ(object.m_tModes, Modes{vel::kConfigInitialize});
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kInitialized);
}

TEST_F(ConfigTest, WithReloadEveryFurtherLoadReloads)
{
    Loaded object(vel::kConfigSupportReload);
    EXPECT_EQ(object.m_tConfig.reloadCapability(), vel::kConfigSupportReload);
    object.m_tConfig.initialize(object);
    object.m_tConfig.load(m_tReader);
    object.m_tConfig.load(m_tReader);
    object.m_tConfig.load(m_tReader);
    EXPECT_EQ(object.m_tModes, (Modes{vel::kConfigInitialize, vel::kConfigReload, vel::kConfigReload}));
}

TEST_F(ConfigTest, TheResultOfLoadConfigIsNoFailure)
{
    Loaded object;
    object.m_bResult = false;
    object.m_tConfig.initialize(object);
    object.m_tConfig.load(m_tReader);
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kInitialized);
}

TEST_F(ConfigTest, WithoutARecordedObjectAReportAndNothingElse)
{
    const AssertionCapture capture;
    Loaded object;
    object.m_tConfig.load(m_tReader);
    EXPECT_EQ(capture.texts(), std::vector<std::string>{"m_pObject != 0"});
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kCreated);
    object.m_tConfig.initialize(object);
    object.m_tConfig.load(m_tReader);
    EXPECT_EQ(object.m_tModes, Modes{vel::kConfigInitialize});
}

TEST_F(ConfigTest, AThrowingHandlerOfThatReportPasses)
{
    const AssertionCapture capture(AssertionCapture::kThrow);
    Loaded object;
    EXPECT_THROW(object.m_tConfig.load(m_tReader), testsupport::ThrownByAssertion);
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kCreated);
}

TEST_F(ConfigTest, ExceptionsAreLoggedAndPassedOnAndTheStateStays)
{
    const LogCapture log;
    Loaded object;
    object.m_tConfig.initialize(object);
    object.m_eFailure = Loaded::kException;
    EXPECT_THROW(object.m_tConfig.load(m_tReader), Exception);
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kCreated);
    object.m_eFailure = Loaded::kStandard;
    EXPECT_THROW(object.m_tConfig.load(m_tReader), std::runtime_error);
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kCreated);
    ASSERT_EQ(log.records().size(), 2U);
    EXPECT_EQ(log.records()[0].m_eSeverity, vel::kLogWarning);
    EXPECT_EQ(log.records()[0].text(), L"Loading the configuration of an object failed: no 'value'");
    EXPECT_EQ(log.records()[1].text(), L"Loading the configuration of an object failed: caf\u00E9 closed");
    object.m_eFailure = Loaded::kNone;
    object.m_tConfig.load(m_tReader);
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kInitialized);
    EXPECT_EQ(object.m_tModes, Modes(3, vel::kConfigInitialize));
}

TEST_F(ConfigTest, AFailedReloadIsPassedOnAndTheStateStaysInitialized)
{
    Loaded object(vel::kConfigSupportReload);
    object.m_tConfig.initialize(object);
    object.m_tConfig.load(m_tReader);
    object.m_eFailure = Loaded::kStandard;
    EXPECT_THROW(object.m_tConfig.load(m_tReader), std::runtime_error);
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kInitialized);
}

TEST_F(ConfigTest, WhatIsNoStandardExceptionPassesUnreported)
{
    const LogCapture log;
    Loaded object;
    object.m_tConfig.initialize(object);
    object.m_eFailure = Loaded::kOther;
    EXPECT_THROW(object.m_tConfig.load(m_tReader), int);
    EXPECT_TRUE(log.records().empty());
    EXPECT_EQ(object.m_tConfig.state(), ConfigBase::kCreated);
}

std::vector<vel::String> g_tReported;

TEST_F(ConfigTest, TheReportIsReplaceable)
{
    const ConfigBase::ExceptionReport report = [](const Message& message) {
        g_tReported.push_back(message.toString());
    };
    const ConfigBase::ExceptionReport initial = ConfigBase::setExceptionReport(report);
    EXPECT_NE(initial, nullptr);
    const LogCapture log;
    Loaded object;
    object.m_tConfig.initialize(object);
    object.m_eFailure = Loaded::kException;
    EXPECT_THROW(object.m_tConfig.load(m_tReader), Exception);
    EXPECT_EQ(g_tReported, std::vector<vel::String>{L"no 'value'"});
    EXPECT_TRUE(log.records().empty());
    EXPECT_EQ(ConfigBase::setExceptionReport(nullptr), report);
    EXPECT_EQ(ConfigBase::setExceptionReport(nullptr), initial);
    EXPECT_THROW(object.m_tConfig.load(m_tReader), Exception);
    EXPECT_EQ(log.records().size(), 1U);
}

TEST_F(ConfigTest, LoadAllTakesTheLivingOnesInTheOrderOfTheirCreation)
{
    std::vector<Loaded*> order;
    std::vector<std::unique_ptr<Loaded>> objects;
    for (int i = 0; i < 4; ++i) {
        objects.push_back(std::make_unique<Loaded>());
        objects.back()->m_pOrder = &order;
    }
    // Recorded in another order than created.
    for (auto each = objects.rbegin(); each != objects.rend(); ++each) {
        (*each)->m_tConfig.initialize(**each);
    }
    objects.erase(objects.begin() + 1);
    ConfigBase::loadAll(m_tReader);
    EXPECT_EQ(order, (std::vector<Loaded*>{objects[0].get(), objects[1].get(), objects[2].get()}));
    ConfigBase::loadAll(m_tReader);
    EXPECT_EQ(order.size(), 3U);
}

TEST_F(ConfigTest, LoadAllStopsAtTheFirstException)
{
    const LogCapture log;
    Loaded first;
    Loaded second;
    Loaded third;
    for (Loaded* each : {&first, &second, &third}) {
        each->m_tConfig.initialize(*each);
    }
    second.m_eFailure = Loaded::kException;
    EXPECT_THROW(ConfigBase::loadAll(m_tReader), Exception);
    EXPECT_EQ(first.m_tConfig.state(), ConfigBase::kInitialized);
    EXPECT_EQ(second.m_tConfig.state(), ConfigBase::kCreated);
    EXPECT_TRUE(third.m_tModes.empty());
    EXPECT_EQ(log.records().size(), 1U);
    second.m_eFailure = Loaded::kNone;
    ConfigBase::loadAll(m_tReader);
    EXPECT_EQ(first.m_tModes.size(), 1U);
    EXPECT_EQ(third.m_tConfig.state(), ConfigBase::kInitialized);
}

/// Creates another object while it is loaded.
struct Maker
{
    bool loadConfig(const vel::ConfigReader&, EConfig)
    {
        m_pMade = std::make_unique<Loaded>();
        m_pMade->m_tConfig.initialize(*m_pMade);
        return true;
    }
    std::unique_ptr<Loaded> m_pMade;
    Config<Maker> m_tConfig{vel::kConfigDontSupportReload};
};

TEST_F(ConfigTest, LoadAllLoadsWhatIsCreatedMeanwhile)
{
    Maker maker;
    maker.m_tConfig.initialize(maker);
    ConfigBase::loadAll(m_tReader);
    ASSERT_NE(maker.m_pMade, nullptr);
    EXPECT_EQ(maker.m_pMade->m_tConfig.state(), ConfigBase::kInitialized);
}

/// Destroys another object while it is loaded.
struct Destroyer
{
    bool loadConfig(const vel::ConfigReader&, EConfig)
    {
        m_pVictim.reset();
        return true;
    }
    Config<Destroyer> m_tConfig{vel::kConfigDontSupportReload};
    std::unique_ptr<Loaded> m_pVictim = std::make_unique<Loaded>();
};

TEST_F(ConfigTest, LoadAllGoesOnWhenAnObjectGoesMeanwhile)
{
    Destroyer destroyer;
    destroyer.m_tConfig.initialize(destroyer);
    destroyer.m_pVictim->m_tConfig.initialize(*destroyer.m_pVictim);
    Loaded last;
    last.m_tConfig.initialize(last);
    ConfigBase::loadAll(m_tReader);
    EXPECT_EQ(last.m_tConfig.state(), ConfigBase::kInitialized);
}

TEST_F(ConfigTest, ObjectsRegisterFromManyThreads)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round < 500; ++round) {
                Loaded object;
                object.m_tConfig.initialize(object);
            }
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    Loaded last;
    last.m_tConfig.initialize(last);
    ConfigBase::loadAll(m_tReader);
    EXPECT_EQ(last.m_tModes, Modes{vel::kConfigInitialize});
}

// Before main: registration works from any static initialiser.
Loaded g_tStatic;
[[maybe_unused]] const bool g_bStaticIsRecorded = (g_tStatic.m_tConfig.initialize(g_tStatic), true);

TEST_F(ConfigTest, ObjectsRegisterFromStaticInitialisers)
{
    ConfigBase::loadAll(m_tReader);
    EXPECT_EQ(g_tStatic.m_tConfig.state(), ConfigBase::kInitialized);
}

}  // namespace
