#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzzing {

/// The characters of UTF-8 as far as the bytes are that; a byte that is not becomes a character that no text has: above
/// U+10FFFF or negative. So a fuzzer reaches every value of a wchar_t.
inline std::wstring widen(const std::uint8_t* data, std::size_t size)
{
    std::wstring result;
    for (std::size_t i = 0; i < size;) {
        const std::uint32_t lead = data[i];
        const std::size_t followers = lead < 0xC2 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : lead < 0xF5 ? 3 : 0;
        std::uint32_t code = followers == 0 ? lead : lead & (0x3FU >> followers);
        std::size_t taken = 1;
        while (taken <= followers && i + taken < size && (data[i + taken] & 0xC0) == 0x80) {
            code = code << 6 | (data[i + taken] & 0x3FU);
            ++taken;
        }
        if (taken != followers + 1 || (followers == 0 && lead >= 0x80)) {
            code = lead % 2 == 0 ? 0x110000 + lead : 0x80000000U + lead;
            taken = 1;
        }
        result += static_cast<wchar_t>(code);
        i += taken;
    }
    return result;
}

}  // namespace fuzzing
