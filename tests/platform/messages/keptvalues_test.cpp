#include "vel/messages/keptvalues.h"

#include <gtest/gtest.h>

#include "eightthreads.h"
#include "failingallocator.h"
#include "printers.h"
#include "vel/messages/messagetable.h"

namespace {

using vel::GDVariant;
using vel::KeptValues;

GDVariant number(int value)
{
    return GDVariant::number(value);
}

void expectKept(int value, const KeptValues& values, const KeptValues::Key& key)
{
    const GDVariant* const found = values.find(key);
    ASSERT_NE(nullptr, found) << value;
    EXPECT_EQ(number(value), *found);
}

TEST(KeptValues, AnEmptyOneFindsNothingAndNeedsNoMemory)
{
    const testsupport::AllocationCount allocations;
    const KeptValues values;
    EXPECT_EQ(nullptr, values.find({1, 1}));
    EXPECT_EQ(0U, allocations.value());
}

TEST(KeptValues, AValueIsFoundUnderItsOwnerAndStateOnly)
{
    KeptValues values;
    values.keep({5, 7}, number(1));
    expectKept(1, values, {5, 7});
    EXPECT_EQ(nullptr, values.find({5, 8}));
    EXPECT_EQ(nullptr, values.find({6, 7}));
    EXPECT_EQ(nullptr, values.find({5 + KeptValues::kPlaces, 7}));
}

TEST(KeptValues, OfOneKeyTheFirstValueStays)
{
    KeptValues values;
    values.keep({5, 7}, number(1));
    values.keep({5, 7}, number(2));
    values.keep({5, 8}, number(3));
    expectKept(1, values, {5, 7});
    EXPECT_EQ(nullptr, values.find({5, 8}));
}

TEST(KeptValues, OfOwnersWithOnePlaceTheFirstHasIt)
{
    KeptValues values;
    values.keep({5 + KeptValues::kPlaces, 7}, number(1));
    values.keep({5, 7}, number(2));
    expectKept(1, values, {5 + KeptValues::kPlaces, 7});
    EXPECT_EQ(nullptr, values.find({5, 7}));
}

TEST(KeptValues, AsManyOwnersAsThereArePlacesEachHaveOne)
{
    KeptValues values;
    for (std::size_t i = 0; i < KeptValues::kPlaces; ++i) {
        values.keep({77 + i, 1}, number(static_cast<int>(i)));
    }
    for (std::size_t i = 0; i < KeptValues::kPlaces; ++i) {
        expectKept(static_cast<int>(i), values, {77 + i, 1});
    }
}

TEST(KeptValues, NothingIsKeptForOwnerZero)
{
    KeptValues values;
    values.keep({0, 7}, number(1));
    EXPECT_EQ(nullptr, values.find({0, 7}));
    values.keep({KeptValues::kPlaces, 7}, number(2));
    expectKept(2, values, {KeptValues::kPlaces, 7});
    EXPECT_EQ(nullptr, values.find({0, 7}));
}

TEST(KeptValues, ClearingForgetsAllAndGivesTheMemoryBack)
{
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    KeptValues values;
    values.keep({5, 7}, GDVariant::string(L"a text that lies on the heap"));
    EXPECT_LT(before, testsupport::outstandingBlocks());
    values.clear();
    EXPECT_EQ(before, testsupport::outstandingBlocks());
    EXPECT_EQ(nullptr, values.find({5, 7}));
    values.keep({5, 8}, number(2));
    expectKept(2, values, {5, 8});
}

TEST(KeptValues, WithoutMemoryNothingIsKept)
{
    KeptValues values;
    {
        const testsupport::FailingAllocations failing(0);
        values.keep({5, 7}, number(1));
        EXPECT_TRUE(failing.hasFailed());
    }
    EXPECT_EQ(nullptr, values.find({5, 7}));
    values.keep({5, 7}, number(1));
    expectKept(1, values, {5, 7});
}

TEST(KeptValues, ThreadsFindWhatOthersKeep)
{
    for (int round = 0; round < 50; ++round) {
        KeptValues values;
        EXPECT_EQ(0, testsupport::faultsOf([&](int thread) {
                      int faults = 0;
                      for (int i = 0; i < 64; ++i) {
                          // Every thread begins elsewhere.
                          const int owner = (i + thread * 8) % 64;
                          const KeptValues::Key key{static_cast<std::uint64_t>(owner) + 1, 9};
                          values.keep(key, GDVariant::string(vel::decimalString(static_cast<unsigned>(owner))));
                          const GDVariant* const found = values.find(key);
                          // Another thread may be about to put the same value there.
                          faults +=
                              found == nullptr || found->toString() == vel::decimalString(static_cast<unsigned>(owner))
                                  ? 0
                                  : 1;
                      }
                      return faults;
                  }));
        for (std::uint64_t owner = 1; owner <= 64; ++owner) {
            ASSERT_NE(nullptr, values.find({owner, 9}));
            EXPECT_EQ(vel::decimalString(owner - 1), values.find({owner, 9})->toString());
        }
    }
}

TEST(KeptValues, EveryChangeOfATableClearsItsOwn)
{
    const vel::Handle<vel::MessageTable> table = vel::makeHandle<vel::MessageTable>(L"en");
    const KeptValues::Key key{5, 7};
    table->kept().keep(key, number(1));
    table->set(L"kmsgA", L"a");
    EXPECT_EQ(nullptr, table->kept().find(key));
    table->kept().keep(key, number(2));
    table->setReference(L"kmsgB", L"kmsgA");
    EXPECT_EQ(nullptr, table->kept().find(key));
    table->kept().keep(key, number(3));
    table->set(L"kmsgA", L"another");
    EXPECT_EQ(nullptr, table->kept().find(key));
}

}  // namespace
