#include "vel/core/nocasecompare.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "casetables.h"

namespace vel {

namespace {

wchar_t foldByTable(std::uint32_t character) noexcept
{
    using case_details::FoldRange;
    const FoldRange* end = case_details::kFoldRanges + case_details::kFoldRangeCount;
    const FoldRange* range = std::partition_point(case_details::kFoldRanges, end,
                                                  [=](const FoldRange& each) { return each.m_nLast < character; });
    if (range == end || character < range->m_nFirst || (character - range->m_nFirst) % range->m_nStep != 0) {
        return static_cast<wchar_t>(character);
    }
    return static_cast<wchar_t>(character + static_cast<std::uint32_t>(range->m_nDelta));
}

std::uint32_t fold(wchar_t character) noexcept
{
    const std::uint32_t value = static_cast<std::uint32_t>(character);
    if (value < 0x80) {
        return value - 'A' < 26 ? value + ('a' - 'A') : value;
    }
    return static_cast<std::uint32_t>(foldByTable(value));
}

}  // namespace

wchar_t foldCase(wchar_t character) noexcept
{
    return static_cast<wchar_t>(fold(character));
}

int compareNoCase(std::wstring_view a, std::wstring_view b) noexcept
{
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (a[i] == b[i]) {
            continue;
        }
        const std::uint32_t x = fold(a[i]);
        const std::uint32_t y = fold(b[i]);
        if (x != y) {
            return x < y ? -1 : 1;
        }
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

}  // namespace vel
