#include "captionmemory.h"

#include <gtest/gtest.h>

#include "eightthreads.h"

// What one currency remembers of its captions.

namespace {

using testsupport::faultsOf;
using vel::GDVariant;
using vel::Handle;
using vel::i18n_details::CaptionMemory;

GDVariant number(std::uint64_t value)
{
    return GDVariant::number(static_cast<double>(value));
}

/// The number that was kept under the key; -1 for none.
double found(const Handle<CaptionMemory>& memory, const CaptionMemory::Key& key)
{
    GDVariant out = number(77);
    if (!memory->find(key, out)) {
        EXPECT_TRUE(out == number(77));
        return -1;
    }
    return std::stod(out.toString().standard());
}

TEST(CaptionMemory, FindsACaptionUnderItsKeyOnly)
{
    const Handle<CaptionMemory> memory = vel::makeHandle<CaptionMemory>();
    EXPECT_EQ(-1, found(memory, {1, 2}));
    memory->keep({1, 2}, number(3));
    EXPECT_EQ(3, found(memory, {1, 2}));
    for (const CaptionMemory::Key& key :
         {CaptionMemory::Key{2, 1}, CaptionMemory::Key{1, 1}, CaptionMemory::Key{2, 2}}) {
        EXPECT_EQ(-1, found(memory, key));
    }
}

TEST(CaptionMemory, OfOneKeyTheFirstStays)
{
    const Handle<CaptionMemory> memory = vel::makeHandle<CaptionMemory>();
    memory->keep({1, 2}, number(3));
    memory->keep({1, 2}, number(4));
    EXPECT_EQ(3, found(memory, {1, 2}));
}

TEST(CaptionMemory, ForACaptionTooManyTheOldestGoes)
{
    const Handle<CaptionMemory> memory = vel::makeHandle<CaptionMemory>();
    for (std::uint64_t i = 1; i <= CaptionMemory::kMostCaptions + 2; ++i) {
        memory->keep({i, 5}, number(i));
    }
    EXPECT_EQ(-1, found(memory, {1, 5}));
    EXPECT_EQ(-1, found(memory, {2, 5}));
    for (std::uint64_t i = 3; i <= CaptionMemory::kMostCaptions + 2; ++i) {
        EXPECT_EQ(static_cast<double>(i), found(memory, {i, 5}));
    }
}

TEST(CaptionMemory, ThreadsFindTheCaptionOfTheirKeyOrNone)
{
    const Handle<CaptionMemory> memory = vel::makeHandle<CaptionMemory>();
    const auto work = [&memory](int thread) {
        int wrong = 0;
        for (int i = 0; i < 5000; ++i) {
            const CaptionMemory::Key key{static_cast<std::uint64_t>(1 + (thread + i) % 12), 1};
            GDVariant out;
            if (memory->find(key, out)) {
                wrong += out == number(key.m_nMessages) ? 0 : 1;
            } else {
                memory->keep(key, number(key.m_nMessages));
            }
        }
        return wrong;
    };
    EXPECT_EQ(0, faultsOf(work));
}

}  // namespace
