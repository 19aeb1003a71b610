#pragma once

#include <string>
#include <string_view>

namespace sortpairs {

/// UTF-16BE.
inline std::string bytesOf(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(2 * text.size());
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit >> 8);
        bytes += static_cast<char>(unit);
    }
    return bytes;
}

}  // namespace sortpairs
