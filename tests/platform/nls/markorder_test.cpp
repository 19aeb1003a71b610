#include "markorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using vel::nls::MarkOrder;

std::vector<char32_t> ordered(const std::vector<MarkOrder::Mark>& marks)
{
    MarkOrder order;
    for (const MarkOrder::Mark& mark : marks) {
        order.add(mark.m_cCode, mark.m_nClass);
    }
    order.order();
    std::vector<char32_t> codes;
    for (const MarkOrder::Mark& mark : order) {
        codes.push_back(mark.m_cCode);
    }
    return codes;
}

TEST(MarkOrder, IsByClassAndThenAsTheyCame)
{
    using Codes = std::vector<char32_t>;
    EXPECT_EQ(ordered({}), Codes());
    EXPECT_EQ(ordered({{0x301, 230}, {0x323, 220}}), (Codes{0x323, 0x301}));
    EXPECT_EQ(ordered({{0x301, 230}, {0x300, 230}, {0x345, 240}}), (Codes{0x301, 0x300, 0x345}));
}

TEST(MarkOrder, OfAnyNumberIsTheOneOfAStableSort)
{
    std::mt19937 random(1);
    for (std::size_t count = 0; count < 300; ++count) {
        std::vector<MarkOrder::Mark> marks;
        for (std::size_t i = 0; i < count; ++i) {
            marks.push_back(
                {static_cast<char32_t>(i), static_cast<std::uint32_t>(1 + random() % (i % 3 == 0 ? 254 : 3))});
        }
        std::vector<char32_t> expected;
        std::stable_sort(marks.begin(), marks.end(),
                         [](const auto& left, const auto& right) { return left.m_nClass < right.m_nClass; });
        for (const auto& each : marks) {
            expected.push_back(each.m_cCode);
        }
        std::sort(marks.begin(), marks.end(),
                  [](const auto& left, const auto& right) { return left.m_cCode < right.m_cCode; });
        EXPECT_EQ(ordered(marks), expected) << count;
    }
}

TEST(MarkOrder, BeginsAnewWhenCleared)
{
    MarkOrder order;
    order.add(0x301, 230);
    order.add(0x323, 220);
    order.clear();
    EXPECT_TRUE(order.isEmpty());
    order.add(0x327, 202);
    EXPECT_EQ(order.size(), 1U);
    EXPECT_EQ(order.begin()->m_cCode, 0x327U);
}

}  // namespace
