#include "vel/core/uppercase.h"

#include <cstdint>
#include <string>
#include <utility>

#include "casetables.h"

namespace vel {

wchar_t toUpperCase(wchar_t character) noexcept
{
    return static_cast<wchar_t>(case_details::mapByRanges(case_details::kUpperRanges, case_details::kUpperRangeCount,
                                                          static_cast<std::uint32_t>(character)));
}

String toUpperCase(std::wstring_view text)
{
    std::wstring mapped(text);
    for (wchar_t& each : mapped) {
        each = toUpperCase(each);
    }
    return String(std::move(mapped));
}

}  // namespace vel
