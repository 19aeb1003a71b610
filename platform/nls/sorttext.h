#pragma once

#include <cstddef>

namespace vel::nls {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool isSurrogate(char32_t unit) noexcept
{
    return (unit & 0xFFFFF800U) == 0xD800;
}

constexpr bool isLeadSurrogate(char32_t unit) noexcept
{
    return (unit & 0xFFFFFC00U) == 0xD800;
}

constexpr bool isTrailSurrogate(char32_t unit) noexcept
{
    return (unit & 0xFFFFFC00U) == 0xDC00;
}

constexpr char32_t joinSurrogates(char32_t lead, char32_t trail) noexcept
{
    return 0x10000 + ((lead - 0xD800) << 10) + (trail - 0xDC00);
}

constexpr char16_t bigEndianUnit(const unsigned char* bytes) noexcept
{
    return static_cast<char16_t>((bytes[0] << 8) | bytes[1]);
}

/// Writes `byteCount` bytes of UTF-16BE as native UTF-16 and returns the number of units, at most (byteCount + 1) / 2.
/// Lone surrogates and an odd byte at the end become U+FFFD.
std::size_t decodeBigEndian(const unsigned char* utf16be, std::size_t byteCount, char16_t* out) noexcept;

}  // namespace vel::nls
