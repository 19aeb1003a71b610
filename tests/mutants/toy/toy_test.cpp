#include "toy.h"

#include <gtest/gtest.h>

// What is not asked here is deliberate: ten pieces, one guest, and what signOf says.

TEST(Toy, counts)
{
    EXPECT_EQ(toy::countOf("abcab", 'b'), 2U);
}

TEST(Toy, givesRebate)
{
    EXPECT_EQ(toy::priceOf(2), 500U);
    EXPECT_EQ(toy::priceOf(20), 4500U);
}

TEST(Toy, seatsGuests)
{
    EXPECT_FALSE(toy::isSeated(0));
    EXPECT_TRUE(toy::isSeated(4));
    EXPECT_FALSE(toy::isSeated(5));
}
