#include "sorttext.h"

namespace vel::nls {

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

}  // namespace vel::nls
