#include "vel/core/texthash.h"

#include <unistd.h>

#include <chrono>

namespace vel::core_details {

constinit std::atomic<std::uint64_t> g_nTextSeed{0};

namespace {

/// Where the system has no random bytes, what a writer of files does not know: the time, and where the library lies.
std::uint64_t guessedSeed() noexcept
{
    const auto now = static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
    const auto place = reinterpret_cast<std::uintptr_t>(&g_nTextSeed);
    return foldedProduct(now ^ 0x9E3779B97F4A7C15ULL, place ^ 0xD1B54A32D192ED03ULL);
}

}  // namespace

std::uint64_t chooseTextSeed() noexcept
{
    std::uint64_t seed = 0;
    if (::getentropy(&seed, sizeof seed) != 0) {
        seed = guessedSeed();
    }
    // Odd, so that a product keeps what its other factor tells; and large, so that few characters fill its both halves.
    seed |= std::uint64_t{1} << 63 | 1;
    std::uint64_t known = 0;
    // Of several first callers one chooses for all.
    return g_nTextSeed.compare_exchange_strong(known, seed, std::memory_order_relaxed) ? seed : known;
}

}  // namespace vel::core_details
