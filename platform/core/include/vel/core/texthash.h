#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "vel/core/api.h"

namespace vel {

namespace core_details {

/// What texts are hashed with; 0 until it is chosen.
extern WEBI18N_API constinit std::atomic<std::uint64_t> g_nTextSeed;
WEBI18N_API std::uint64_t chooseTextSeed() noexcept;

/// Both halves of the product: every bit of the one reaches the other's place.
inline std::uint64_t foldedProduct(std::uint64_t a, std::uint64_t b) noexcept
{
    __extension__ typedef unsigned __int128 Product;  // NOLINT(modernize-use-using): no using takes the mark
    const Product product = static_cast<Product>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

}  // namespace core_details

/// What this process hashes texts with: an odd number, chosen at random by the first call and the same from then on.
/// Nobody who does not know it can write texts whose hashes are equal, so a file cannot make a table slow. Safe from
/// any thread and any static initialiser.
inline std::uint64_t textSeed() noexcept
{
    const std::uint64_t seed = core_details::g_nTextSeed.load(std::memory_order_relaxed);
    return seed != 0 ? seed : core_details::chooseTextSeed();
}

/// A hash of wide text for tables in memory: the same within one process only, never to be stored. Two characters a
/// step, because look-ups spend most of their time here.
inline std::uint32_t hashText(std::wstring_view text, std::uint64_t seed) noexcept
{
    std::uint64_t hash = text.size() ^ seed >> 32;
    for (; text.size() >= 2; text.remove_prefix(2)) {
        std::uint64_t pair = 0;
        static_assert(sizeof pair == 2 * sizeof(wchar_t));
        std::memcpy(&pair, text.data(), sizeof pair);
        hash = core_details::foldedProduct(hash ^ pair, seed);
    }
    if (!text.empty()) {
        hash = core_details::foldedProduct(hash ^ static_cast<std::uint32_t>(text.front()), seed);
    }
    return static_cast<std::uint32_t>(hash ^ hash >> 32);
}

inline std::uint32_t hashText(std::wstring_view text) noexcept
{
    return hashText(text, textSeed());
}

}  // namespace vel
