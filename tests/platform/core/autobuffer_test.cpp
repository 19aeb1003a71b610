#include "vel/core/autobuffer.h"

#include <gtest/gtest.h>

#include <new>

#include "failingallocator.h"

namespace {

using vel::AutoBuffer;

TEST(AutoBuffer, FirstElementsLieInTheObject)
{
    const testsupport::AllocationCount allocations;
    AutoBuffer<int, 4> buffer;
    const char* object = reinterpret_cast<const char*>(&buffer);
    const char* data = reinterpret_cast<const char*>(buffer.data());
    EXPECT_TRUE(data >= object && data < object + sizeof buffer);
    EXPECT_EQ(buffer.capacity(), 4U);
    buffer.ensureCapacity(4);
    EXPECT_EQ(allocations.value(), 0U);
}

TEST(AutoBuffer, GrowingKeepsTheContents)
{
    AutoBuffer<int, 2> buffer;
    buffer[0] = 7;
    buffer[1] = 8;
    buffer.ensureCapacity(3);
    EXPECT_EQ(buffer.capacity(), 3U);
    buffer[2] = 9;
    buffer.ensureCapacity(100);
    EXPECT_EQ(buffer.capacity(), 100U);
    const AutoBuffer<int, 2>& reading = buffer;
    EXPECT_EQ(reading[0], 7);
    EXPECT_EQ(reading.data()[1], 8);
    EXPECT_EQ(reading[2], 9);
}

TEST(AutoBuffer, NeverShrinks)
{
    AutoBuffer<char, 2> buffer;
    buffer.ensureCapacity(10);
    const char* before = buffer.data();
    buffer.ensureCapacity(0);
    buffer.ensureCapacity(9);
    EXPECT_EQ(buffer.capacity(), 10U);
    EXPECT_EQ(buffer.data(), before);
}

TEST(AutoBuffer, TheBaseTakesEveryInlineCapacity)
{
    AutoBuffer<unsigned char, 64> buffer;
    vel::AutoBufferBase<unsigned char>& base = buffer;
    EXPECT_EQ(base.capacity(), 64U);
    base[63] = 9;
    base.ensureCapacity(65);
    EXPECT_EQ(buffer.capacity(), 65U);
    EXPECT_EQ(buffer[63], 9);
}

TEST(AutoBuffer, NothingChangesWhenMemoryRunsOut)
{
    AutoBuffer<int, 1> buffer;
    buffer[0] = 5;
    {
        const testsupport::FailingAllocations failing(0);
        EXPECT_THROW(buffer.ensureCapacity(2), std::bad_alloc);
    }
    EXPECT_EQ(buffer.capacity(), 1U);
    EXPECT_EQ(buffer[0], 5);
}

}  // namespace
