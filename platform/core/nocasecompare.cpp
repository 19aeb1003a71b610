#include "vel/core/nocasecompare.h"

#include <algorithm>
#include <cstdint>

#include "casetables.h"

namespace vel {

namespace {

std::uint32_t fold(wchar_t character) noexcept
{
    const std::uint32_t value = static_cast<std::uint32_t>(character);
    if (value < 0x80) {
        return value - 'A' < 26 ? value + ('a' - 'A') : value;
    }
    return case_details::mapByRanges(case_details::kFoldRanges, case_details::kFoldRangeCount, value);
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
