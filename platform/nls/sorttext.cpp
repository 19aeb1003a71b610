#include "sorttext.h"

namespace vel::nls {

namespace {

unsigned char* putUnit(unsigned char* out, char32_t unit) noexcept
{
    out[0] = static_cast<unsigned char>(unit >> 8);
    out[1] = static_cast<unsigned char>(unit);
    return out + 2;
}

}  // namespace

std::size_t decodeBigEndian(const unsigned char* utf16be, std::size_t byteCount, char16_t* out) noexcept
{
    const std::size_t units = byteCount / 2;
    std::size_t n = 0;
    for (std::size_t i = 0; i < units; ++i) {
        const char16_t unit = bigEndianUnit(utf16be + 2 * i);
        if (!isSurrogate(unit)) {
            out[n++] = unit;
            continue;
        }
        const char16_t next = i + 1 < units ? bigEndianUnit(utf16be + 2 * i + 2) : char16_t{0};
        if (isLeadSurrogate(unit) && isTrailSurrogate(next)) {
            out[n++] = unit;
            out[n++] = next;
            ++i;
        } else {
            out[n++] = static_cast<char16_t>(kReplacement);
        }
    }
    if (byteCount % 2 != 0) {
        out[n++] = static_cast<char16_t>(kReplacement);
    }
    return n;
}

std::size_t encodeBigEndian(const wchar_t* text, std::size_t length, unsigned char* out) noexcept
{
    unsigned char* end = out;
    for (std::size_t i = 0; i < length; ++i) {
        auto c = static_cast<char32_t>(text[i]);
        if (c < 0x10000) {
            end = putUnit(end, c);
            continue;
        }
        if (c > 0x10FFFF) {
            end = putUnit(end, kReplacement);
            continue;
        }
        c -= 0x10000;
        end = putUnit(end, 0xD800 + (c >> 10));
        end = putUnit(end, 0xDC00 + (c & 0x3FF));
    }
    return static_cast<std::size_t>(end - out);
}

}  // namespace vel::nls
