#include "vel/core/handle.h"

#include <gtest/gtest.h>

#include <thread>
#include <type_traits>
#include <vector>

#include "assertioncapture.h"
#include "vel/core/nonowningptr.h"

namespace coretest {

struct Thing : vel::RefCounted
{
    explicit Thing(int value, bool* destroyed = nullptr) : m_nValue(value), m_pDestroyed(destroyed) {}
    Thing(const Thing&) = default;
    Thing& operator=(const Thing&) = default;
    ~Thing() override
    {
        if (m_pDestroyed != nullptr) {
            *m_pDestroyed = true;
        }
    }
    int m_nValue;
    bool* m_pDestroyed;
};

struct SpecialThing : Thing
{
    using Thing::Thing;
};

}  // namespace coretest

namespace {

using coretest::SpecialThing;
using coretest::Thing;
using testsupport::AssertionCapture;
using vel::Handle;
using vel::makeHandle;
using vel::NonOwningPtr;

static_assert(std::is_convertible_v<Handle<SpecialThing>, Handle<Thing>>);
static_assert(std::is_convertible_v<Handle<Thing>, Handle<const Thing>>);
static_assert(!std::is_convertible_v<Handle<const Thing>, Handle<Thing>>);
static_assert(!std::is_convertible_v<Handle<Thing>, Handle<SpecialThing>>);
static_assert(!std::is_convertible_v<Thing*, Handle<Thing>>, "taking a share is said, not implied");

template <typename Function>
void expectInvalidHandle(Function function, const char* what)
{
    try {
        function();
    } catch (const vel::InvalidHandleException& exception) {
        EXPECT_STREQ(exception.what(), what);
        return;
    }
    ADD_FAILURE() << "nothing was thrown";
}

TEST(Handle, NullThrowsAndNamesTheType)
{
    const Handle<Thing> null;
    EXPECT_TRUE(null.isNull());
    EXPECT_FALSE(static_cast<bool>(null));
    EXPECT_EQ(null.get(), nullptr);
    expectInvalidHandle([&] { null->m_nValue = 1; }, "Invalid handle: coretest::Thing*");
    expectInvalidHandle([&] { (*null).m_nValue = 1; }, "Invalid handle: coretest::Thing*");
    expectInvalidHandle([] { (void)Handle<const SpecialThing>(nullptr)->m_nValue; },
                        "Invalid handle: coretest::SpecialThing const*");
}

TEST(Handle, CountsItsShares)
{
    bool destroyed = false;
    Handle<Thing> a = makeHandle<Thing>(3, &destroyed);
    EXPECT_EQ(a->referenceCount(), 1U);
    {
        const Handle<Thing> b = a;
        EXPECT_EQ(b, a);
        EXPECT_EQ(a->referenceCount(), 2U);
    }
    EXPECT_EQ(a->referenceCount(), 1U);
    EXPECT_FALSE(destroyed);
    a = Handle<Thing>();
    EXPECT_TRUE(destroyed);
}

TEST(Handle, MovingLeavesNull)
{
    Handle<Thing> a = makeHandle<Thing>(3);
    Thing* object = a.get();
    Handle<Thing> b = std::move(a);
    EXPECT_TRUE(a.isNull());  // NOLINT(bugprone-use-after-move): the moved-from state is promised
    EXPECT_EQ(b.get(), object);
    EXPECT_EQ(b->referenceCount(), 1U);
    a = std::move(b);
    EXPECT_EQ(a.get(), object);
    EXPECT_EQ(a->referenceCount(), 1U);
}

TEST(Handle, AssigningReleasesTheOldObject)
{
    bool destroyed = false;
    Handle<Thing> a = makeHandle<Thing>(1, &destroyed);
    const Handle<Thing> b = makeHandle<Thing>(2);
    a = b;
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(b->referenceCount(), 2U);
    Handle<Thing>& same = a;
    a = same;
    EXPECT_EQ(a->m_nValue, 2);
    EXPECT_EQ(b->referenceCount(), 2U);
}

TEST(Handle, SwapExchanges)
{
    Handle<Thing> a = makeHandle<Thing>(1);
    Handle<Thing> b;
    a.swap(b);
    EXPECT_TRUE(a.isNull());
    EXPECT_EQ(b->m_nValue, 1);
}

TEST(Handle, ConvertsToBaseAndToConst)
{
    bool destroyed = false;
    Handle<SpecialThing> special = makeHandle<SpecialThing>(4, &destroyed);
    Handle<const Thing> base = special;
    EXPECT_EQ(special->referenceCount(), 2U);
    special = nullptr;
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(base->m_nValue, 4);
    base = Handle<const Thing>();
    EXPECT_TRUE(destroyed);
    EXPECT_TRUE(Handle<const Thing>(Handle<SpecialThing>()).isNull());
}

TEST(Handle, MakesConstObjects)
{
    const Handle<const Thing> made = makeHandle<const Thing>(6);
    EXPECT_EQ(made->m_nValue, 6);
}

TEST(RefCounted, CountIsNotCopiedWithTheObject)
{
    const Handle<Thing> a = makeHandle<Thing>(1);
    const Handle<Thing> again = a;
    Handle<Thing> copy = makeHandle<Thing>(*a);
    EXPECT_EQ(copy->referenceCount(), 1U);
    Thing onStack(9);
    EXPECT_EQ(onStack.referenceCount(), 0U);
    *copy = *a;
    EXPECT_EQ(copy->referenceCount(), 1U);
    EXPECT_EQ(a->referenceCount(), 2U);
}

TEST(Handle, SharesAreCountedAcrossThreads)
{
    bool destroyed = false;
    {
        const Handle<Thing> shared = makeHandle<Thing>(1, &destroyed);
        std::vector<std::thread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([&shared] {
                for (int round = 0; round < 10000; ++round) {
                    const Handle<Thing> mine = shared;
                    const Handle<const Thing> another = mine;
                }
            });
        }
        for (std::thread& each : threads) {
            each.join();
        }
        EXPECT_EQ(shared->referenceCount(), 1U);
        EXPECT_FALSE(destroyed);
    }
    EXPECT_TRUE(destroyed);
}

TEST(Handle, LastShareOfAnyThreadDestroysOnce)
{
    for (int round = 0; round < 200; ++round) {
        bool destroyed = false;
        std::vector<Handle<Thing>> shares(8, makeHandle<Thing>(round, &destroyed));
        std::vector<std::thread> threads;
        for (Handle<Thing>& share : shares) {
            threads.emplace_back([&share] { share = nullptr; });
        }
        for (std::thread& each : threads) {
            each.join();
        }
        ASSERT_TRUE(destroyed);
    }
}

TEST(NonOwningPtr, ReachesItsObjectAndOwnsNothing)
{
    Thing thing(5);
    const NonOwningPtr<Thing> pointer(&thing);
    EXPECT_FALSE(pointer.isNull());
    EXPECT_EQ(pointer->m_nValue, 5);
    EXPECT_EQ(&*pointer, &thing);
    EXPECT_EQ(pointer.get(), &thing);
    EXPECT_EQ(thing.referenceCount(), 0U);
    EXPECT_EQ(pointer, NonOwningPtr<Thing>(&thing));
    EXPECT_NE(pointer, NonOwningPtr<Thing>());
}

TEST(NonOwningPtr, NullIsReportedThenThrown)
{
    const AssertionCapture capture;
    const NonOwningPtr<Thing> null;
    EXPECT_TRUE(null.isNull());
    expectInvalidHandle([&] { null->m_nValue = 1; }, "Invalid handle: coretest::Thing");
    expectInvalidHandle([&] { (*null).m_nValue = 1; }, "Invalid handle: coretest::Thing");
    EXPECT_EQ(capture.texts(), (std::vector<std::string>{"m_p != 0", "m_p != 0"}));
}

TEST(NonOwningPtr, ThrowingHandlerPasses)
{
    const AssertionCapture capture(AssertionCapture::kThrow);
    EXPECT_THROW(*NonOwningPtr<Thing>(), testsupport::ThrownByAssertion);
}

}  // namespace
