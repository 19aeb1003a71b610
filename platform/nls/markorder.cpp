#include "markorder.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vel::nls {

namespace {

/// Up to so many are faster moved one by one.
constexpr std::size_t kFew = 16;
constexpr std::size_t kClasses = 256;

bool isLower(const MarkOrder::Mark& left, const MarkOrder::Mark& right) noexcept
{
    return left.m_nClass < right.m_nClass;
}

}  // namespace

void MarkOrder::order()
{
    if (m_bInOrder) {
        return;
    }
    if (size() > kFew) {
        orderByCounting();
    } else {
        Mark* const first = marks();
        for (Mark* each = first; each != end(); ++each) {
            std::rotate(std::upper_bound(first, each, *each, isLower), each, each + 1);
        }
    }
    m_bInOrder = true;
}

void MarkOrder::orderByCounting()
{
    const ThreadScratch scratch(m_tMarks.size());
    Mark* const copy = scratch.as<Mark>();
    std::copy(begin(), end(), copy);
    std::array<std::size_t, kClasses> places{};
    for (std::size_t i = 0; i < size(); ++i) {
        ++places[copy[i].m_nClass];
    }
    std::size_t place = 0;
    for (std::size_t& each : places) {
        place += std::exchange(each, place);
    }
    for (std::size_t i = 0; i < size(); ++i) {
        marks()[places[copy[i].m_nClass]++] = copy[i];
    }
}

}  // namespace vel::nls
