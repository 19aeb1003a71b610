#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace vel {

/// A hash of wide text for tables in memory: the same within one build only, never to be stored. Two characters a step,
/// because look-ups spend most of their time here.
inline std::uint32_t hashText(std::wstring_view text) noexcept
{
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15ULL;
    std::uint64_t hash = text.size();
    for (; text.size() >= 2; text.remove_prefix(2)) {
        std::uint64_t pair = 0;
        static_assert(sizeof pair == 2 * sizeof(wchar_t));
        std::memcpy(&pair, text.data(), sizeof pair);
        hash = (hash ^ pair) * kFactor;
    }
    if (!text.empty()) {
        hash = (hash ^ static_cast<std::uint32_t>(text.front())) * kFactor;
    }
    // A step carries bits upwards only.
    return static_cast<std::uint32_t>(((hash ^ hash >> 32) * kFactor) >> 32);
}

}  // namespace vel
