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

TEST(NlsEnvironment, AThreadContextThatOutlivesTheLastGuardEndsWithoutAReport)
{
    CountingService service;
    const testsupport::AssertionCapture capture(testsupport::AssertionCapture::kThrow);
    Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
    auto late = std::make_unique<NLSThreadContext>(NLSEnvironment::getDefaultEnvironment());
    guard = nullptr;
    EXPECT_EQ(service.m_nOpenLoadContexts, 1);
    late.reset();
    EXPECT_THAT(capture.texts(), IsEmpty());
    EXPECT_EQ(service.m_nOpenThreadContexts, 0);
    EXPECT_EQ(service.m_nOpenLoadContexts, 0);
}

TEST(NlsEnvironment, OnlyAnEnvironmentThatHasStartedIsTheDefault)
{
    CountingService service;
    service.m_tOnCall = [] { EXPECT_TRUE(NLSEnvironment::getDefaultEnvironment().isNull()); };
    const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
    EXPECT_EQ(service.calls(kInitThreadContext), 1);
    service.m_tOnCall = nullptr;
    EXPECT_EQ(NLSEnvironment::getDefaultEnvironment().get(), guard.get());
}

TEST(NlsEnvironment, TheEndOfAnotherEnvironmentLeavesTheDefault)
{
    const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
    {
        const Handle<NLSEnvironmentImpl> other = vel::makeHandle<NLSEnvironmentImpl>();
        other->initialize();
    }
    EXPECT_EQ(NLSEnvironment::getDefaultEnvironment().get(), guard.get());
}

TEST(NlsEnvironment, ANullLibraryOrEnvironmentIsReportedAndThrows)
{
    const testsupport::AssertionCapture capture;
    EXPECT_THROW(NLSGlobals(NonOwningPtr<NLSLibrary>()), vel::InvalidHandleException);
    EXPECT_THROW(NLSThreadContext(NonOwningPtr<NLSEnvironment>()), vel::InvalidHandleException);
    EXPECT_THAT(capture.texts(), ElementsAre("m_p != 0", "m_p != 0"));
}

TEST(NlsEnvironment, ALibraryThatWasNotLoadedIsReportedAndThrowsError)
{
    NLSLibrary library;
    const testsupport::AssertionCapture capture;
    EXPECT_EQ(thrownBy([&] { const NLSGlobals none{NonOwningPtr<NLSLibrary>(&library)}; }), L"error");
    EXPECT_THAT(capture.texts(), ElementsAre("m_pLibrary->isLoaded()"));
}

TEST(NlsLibrary, LoadingSucceedsAlsoWhereTheServiceCannotBeInitialised)
{
    CountingService service;
    const testsupport::AssertionCapture capture;
    for (const vel::EOnError onError : {vel::kOnErrorThrow, vel::kOnErrorReturn}) {
        service.fail(kInitializeProcess);
        NLSLibrary library;
        EXPECT_TRUE(library.loadLibrary(L"zephnls12", onError));
        EXPECT_NE(library.entryPoints().m_pMakeSortKey, nullptr);
    }
    EXPECT_THAT(capture.texts(), ElementsAre("bSuccess", "bSuccess"));
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
