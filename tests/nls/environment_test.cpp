#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "assertioncapture.h"
#include "countingservice.h"
#include "faileverywhere.h"
#include "nlsenvironmentimpl.h"
#include "vel/core/exception.h"

namespace nlstest {

using testing::ElementsAre;
using testing::IsEmpty;
using vel::Handle;
using vel::NonOwningPtr;
using vel::i18n::NLSEnvironment;
using vel::i18n::NLSEnvironmentImpl;
using vel::i18n::NLSThreadContext;
using vel::nls_internal_wrapper::NLSGlobals;
using vel::nls_internal_wrapper::NLSLibrary;

TEST(NlsEnvironment, ThereIsNoDefaultBeforeAnyGuardAndAfterTheLastIsReleased)
{
    EXPECT_TRUE(NLSEnvironment::getDefaultEnvironment().isNull());
    Handle<NLSEnvironment> first = NLSEnvironment::getEnvironmentGuard();
    Handle<NLSEnvironment> second = NLSEnvironment::getEnvironmentGuard();
    EXPECT_EQ(NLSEnvironment::getDefaultEnvironment().get(), first.get());
    first = nullptr;
    EXPECT_FALSE(NLSEnvironment::getDefaultEnvironment().isNull());
    second = nullptr;
    EXPECT_TRUE(NLSEnvironment::getDefaultEnvironment().isNull());
}

TEST(NlsEnvironment, TwoSuccessiveGuardsAreOneEnvironmentInitialisedOnce)
{
    CountingService service;
    const Handle<NLSEnvironment> first = NLSEnvironment::getEnvironmentGuard();
    const Handle<NLSEnvironment> second = NLSEnvironment::getEnvironmentGuard();
    EXPECT_EQ(first, second);
    EXPECT_EQ(service.calls(kInitializeProcess), 1);
    EXPECT_EQ(service.calls(kCreateLoadContext), 1);
}

TEST(NlsEnvironment, ItsLifeIsASequenceOfCalls)
{
    CountingService service;
    {
        const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
        EXPECT_THAT(service.m_tOrder,
                    ElementsAre("initializeProcess", "createLoadContext", "createGlobalArea", "initThreadContext"));
        service.m_tOrder.clear();
    }
    EXPECT_THAT(service.m_tOrder, ElementsAre("terminateThreadContext", "freeLoadContext"));
}

TEST(NlsEnvironment, AfterTheLastGuardTheNextOneBuildsAFreshEnvironment)
{
    CountingService service;
    NLSEnvironment::getEnvironmentGuard();
    EXPECT_EQ(service.m_nOpenLoadContexts, 0);
    NLSEnvironment::getEnvironmentGuard();
    EXPECT_EQ(service.calls(kInitializeProcess), 2);
    EXPECT_EQ(service.m_nOpenLoadContexts, 0);
    EXPECT_EQ(service.m_nOpenThreadContexts, 0);
}

TEST(NlsEnvironment, AFailingProcessInitialisationIsReportedAndGoesOn)
{
    CountingService service;
    service.fail(kInitializeProcess);
    const testsupport::AssertionCapture capture;
    const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
    EXPECT_FALSE(guard.isNull());
    EXPECT_THAT(capture.texts(), ElementsAre("bSuccess"));
}

TEST(NlsEnvironment, WithAHandlerThatThrowsNothingIsPublished)
{
    CountingService service;
    service.fail(kInitializeProcess);
    const testsupport::AssertionCapture capture(testsupport::AssertionCapture::kThrow);
    EXPECT_THROW(NLSEnvironment::getEnvironmentGuard(), testsupport::ThrownByAssertion);
    EXPECT_TRUE(NLSEnvironment::getDefaultEnvironment().isNull());
}

TEST(NlsEnvironment, AFailingLoadContextThrowsErrorAndPublishesNothing)
{
    CountingService service;
    service.fail(kCreateLoadContext);
    EXPECT_EQ(thrownBy([] { NLSEnvironment::getEnvironmentGuard(); }), L"error");
    EXPECT_TRUE(NLSEnvironment::getDefaultEnvironment().isNull());
    EXPECT_EQ(service.calls(kFreeLoadContext), 0);
    EXPECT_FALSE(NLSEnvironment::getEnvironmentGuard().isNull());
}

TEST(NlsEnvironment, AFailingGlobalAreaFreesTheLoadContextOnceAndThrowsError)
{
    CountingService service;
    service.fail(kCreateGlobalArea);
    EXPECT_EQ(thrownBy([] { NLSEnvironment::getEnvironmentGuard(); }), L"error");
    EXPECT_EQ(service.calls(kFreeLoadContext), 1);
    EXPECT_EQ(service.calls(kTerminateThreadContext), 0);
    EXPECT_EQ(service.m_nOpenLoadContexts, 0);
    EXPECT_TRUE(NLSEnvironment::getDefaultEnvironment().isNull());
}

TEST(NlsEnvironment, AThreadContextFailsByItself)
{
    CountingService service;
    const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
    for (const Operation each : {kCreateLoadContext, kCreateGlobalArea}) {
        service.fail(each);
        EXPECT_EQ(thrownBy([] { const NLSThreadContext context(NLSEnvironment::getDefaultEnvironment()); }), L"error");
        EXPECT_EQ(service.m_nOpenLoadContexts, 1) << "the environment's own stays";
    }
}

TEST(NlsEnvironment, InitialisingAgainReleasesTheContextBefore)
{
    CountingService service;
    const Handle<NLSEnvironmentImpl> environment = vel::makeHandle<NLSEnvironmentImpl>();
    EXPECT_EQ(service.calls(kInitializeProcess), 0);
    environment->initialize();
    environment->initialize();
    EXPECT_EQ(service.m_nOpenThreadContexts, 1);
    EXPECT_TRUE(NLSEnvironment::getDefaultEnvironment().isNull()) << "only a guard makes a default";
}

/// Destroys a thread context whose environment is gone, and gives back what it then leaves behind.
void destroyLate(CountingService& service)
{
    Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
    auto late = std::make_unique<NLSThreadContext>(NLSEnvironment::getDefaultEnvironment());
    guard = nullptr;
    const NonOwningPtr<NLSGlobals> left = late->getInternalNlsGlobals();
    late.reset();
    service.real().m_pTerminateThreadContext(left->contextRecord());
    service.real().m_pFreeLoadContext(service.m_tLoadContexts.back());
    operator delete(left.get());
}

TEST(NlsEnvironment, AThreadContextThatOutlivesTheLastGuardIsReported)
{
    CountingService service;
    const testsupport::AssertionCapture capture;
    destroyLate(service);
    EXPECT_THAT(capture.texts(), ElementsAre("NLSEnvironment::isAlive(m_spEnv)"));
    EXPECT_EQ(service.calls(kTerminateThreadContext), 1) << "the environment's own: the other's library is gone";
}

TEST(NlsEnvironment, NorDoesAThrowingHandlerEndTheProcessThen)
{
    CountingService service;
    const testsupport::AssertionCapture capture(testsupport::AssertionCapture::kThrow);
    destroyLate(service);
    EXPECT_EQ(capture.texts().size(), 1U);
}

TEST(NlsEnvironment, ANullLibraryOrEnvironmentIsReportedAndThrows)
{
    const testsupport::AssertionCapture capture;
    EXPECT_THROW(NLSGlobals(NonOwningPtr<NLSLibrary>()), vel::InvalidHandleException);
    EXPECT_THROW(NLSThreadContext(NonOwningPtr<NLSEnvironment>()), vel::InvalidHandleException);
    EXPECT_THAT(capture.texts(), ElementsAre("m_p != 0", "m_p != 0"));
}

TEST(NlsLibrary, LoadingFillsTheTableWhateverTheNameAndTheMode)
{
    CountingService service;
    NLSLibrary library;
    EXPECT_EQ(library.entryPoints().m_pMakeSortKey, nullptr);
    EXPECT_TRUE(library.loadLibrary(nullptr, vel::kOnErrorReturn));
    EXPECT_EQ(library.entryPoints().m_pCreateLoadContext, service.table().m_pCreateLoadContext);
    EXPECT_EQ(library.entryPoints().m_pMakeSortKey, service.table().m_pMakeSortKey);
    EXPECT_EQ(service.calls(kInitializeProcess), 1);
}

TEST(NlsEnvironment, NothingIsLostWhereverMemoryRunsOut)
{
    NLSEnvironment::getEnvironmentGuard();  // what stays for the life of the process is made once
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    const auto work = [] {
        try {
            const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
            const NLSThreadContext context(NLSEnvironment::getDefaultEnvironment());
        } catch (const wchar_t*) {
            throw std::bad_alloc();  // the service's null
        }
    };
    testsupport::failEverywhere(work, [&] {
        EXPECT_EQ(testsupport::outstandingBlocks(), before);
        EXPECT_TRUE(NLSEnvironment::getDefaultEnvironment().isNull());
    });
}

}  // namespace nlstest
