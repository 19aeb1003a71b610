#include <gtest/gtest.h>

#include "eightthreads.h"
#include "webi18n/collator.h"

namespace {

using vel::Handle;
using vel::String;
using namespace vel::i18n;

constexpr const wchar_t* kSorts[] = {L"sv", L"de-u-co-phonebk", L"en-u-ka-shifted", L"binary"};

/// Keys by a collator of the thread's own; how often they were not in Swedish order.
int faultsWithOwnContext(int thread)
{
    NLSThreadContext context(NLSEnvironment::getDefaultEnvironment());
    int faults = 0;
    for (int round = 0; round < 8; ++round) {
        Collator collator(context, String(kSorts[(thread + round) % 4]), kCollationStrengthDefault);
        const CollationKey a = collator.createCollationKey(L"a", 1);
        const CollationKey b = collator.createCollationKey(L"b", 1);
        faults += a.compare(b) == -1 && collator.compare(L"a", L"b") == -1 ? 0 : 1;
    }
    return faults;
}

TEST(CollatorThreads, SixteenThreadsHitTheTablesAtOnce)
{
    const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
    EXPECT_EQ(testsupport::faultsOf(faultsWithOwnContext, 16), 0);
}

TEST(CollatorThreads, ContextsComeAndGoWhileOthersWork)
{
    const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
    const auto severalContexts = [](int thread) {
        int faults = 0;
        for (int round = 0; round < 4; ++round) {
            faults += faultsWithOwnContext(thread + round);
        }
        return faults;
    };
    EXPECT_EQ(testsupport::faultsOf(severalContexts), 0);
}

}  // namespace
