#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vel::xml_details {

template <typename Word>
std::uint64_t loadWord(const char* bytes) noexcept
{
    Word word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

inline std::uint64_t mixWord(std::uint64_t hash, std::uint64_t word) noexcept
{
    hash = (hash ^ word) * 0x9E3779B97F4A7C15ULL;
    return hash ^ (hash >> 32);
}

/// The hash of a text that is not empty. Reads whole words; the last ones overlap instead of being pieced together from
/// bytes.
inline std::size_t hashOf(std::string_view text) noexcept
{
    const char* const data = text.data();
    const std::size_t size = text.size();
    std::uint64_t hash = size;
    if (size < 4) {
        // Front, middle and last byte are all bytes of so short a text.
        const std::uint64_t front = static_cast<unsigned char>(data[0]);
        const std::uint64_t middle = static_cast<unsigned char>(data[size / 2]);
        return mixWord(hash, front << 16 | middle << 8 | static_cast<unsigned char>(data[size - 1]));
    }
    if (size < 8) {
        return mixWord(hash, loadWord<std::uint32_t>(data) << 32 | loadWord<std::uint32_t>(data + size - 4));
    }
    for (std::size_t i = 0; i + 8 < size; i += 8) {
        hash = mixWord(hash, loadWord<std::uint64_t>(data + i));
    }
    return mixWord(hash, loadWord<std::uint64_t>(data + size - 8));
}

}  // namespace vel::xml_details
