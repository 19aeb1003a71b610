#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "pagedtable.h"

/// Marks functions that may use AVX2. They are called only where hasAvx2() says so; each has a twin without it.
#define VEL_AVX2 [[gnu::target("avx2,popcnt")]]

namespace vel::transcoding_details {

/// Cleared by tests, which try the other loops on a machine that has AVX2.
extern std::atomic<bool> g_isAvx2Allowed;

inline bool hasAvx2() noexcept
{
    return __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("popcnt") != 0 &&
           g_isAvx2Allowed.load(std::memory_order_relaxed);
}

/// Characters that a block of these functions takes.
inline constexpr std::ptrdiff_t kAvx2Block = 16;
/// Room that a block of UTF-8 may write to: three bytes a character, and what the last store writes beyond.
inline constexpr std::ptrdiff_t kUtf8BlockRoom = 3 * kAvx2Block + 16;

/// Encode whole blocks at the front, as far as they consist of characters below U+10000 that are no surrogates, and
/// move both places behind them.
VEL_AVX2 void encodeUtf8BlocksAvx2(const wchar_t*& in, const wchar_t* inEnd, char*& out, const char* outEnd) noexcept;
VEL_AVX2 void encodeUtf16BigEndianBlocksAvx2(const wchar_t*& in, const wchar_t* inEnd, char*& out) noexcept;
VEL_AVX2 void encodeUtf16LittleEndianBlocksAvx2(const wchar_t*& in, const wchar_t* inEnd, char*& out) noexcept;

/// Encodes up to kAvx2Block characters, whatever they are, into 32 bytes of room, or what they need; at one stroke when
/// all are of those. Returns the number of bytes.
VEL_AVX2 std::size_t encodeUtf16BigEndianShortAvx2(const wchar_t* text, std::size_t length, char* out) noexcept;

/// The same for the characters of a table of one and two bytes. `isAsciiOwn`: ASCII needs no table.
VEL_AVX2 void encodeDoubleByteBlocksAvx2(PagedTable<std::uint16_t>::View bytes, bool isAsciiOwn, const wchar_t*& in,
                                         const wchar_t* inEnd, char*& out, const char* outEnd) noexcept;

}  // namespace vel::transcoding_details
