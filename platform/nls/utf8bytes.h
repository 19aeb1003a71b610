#pragma once

namespace vel::nls {

/// Writes a code point from U+0080 as UTF-8, one below as one byte; returns the end. At most 4 bytes.
inline unsigned char* putUtf8(char32_t c, unsigned char* out) noexcept
{
    const auto tail = [](char32_t bits) { return static_cast<unsigned char>(0x80 | (bits & 0x3F)); };
    if (c < 0x80) {
        *out++ = static_cast<unsigned char>(c);
    } else if (c < 0x800) {
        *out++ = static_cast<unsigned char>(0xC0 | (c >> 6));
        *out++ = tail(c);
    } else if (c < 0x10000) {
        *out++ = static_cast<unsigned char>(0xE0 | (c >> 12));
        *out++ = tail(c >> 6);
        *out++ = tail(c);
    } else {
        *out++ = static_cast<unsigned char>(0xF0 | (c >> 18));
        *out++ = tail(c >> 12);
        *out++ = tail(c >> 6);
        *out++ = tail(c);
    }
    return out;
}

}  // namespace vel::nls
