#pragma once

#include "widelanes.h"

namespace vel::transcoding_details {

/// Widens bytes at the front that are ASCII, sixteen at a time; both places are moved behind them.
inline void widenAsciiBlocks(const char*& in, const char* inEnd, wchar_t*& out, const wchar_t* outEnd) noexcept
{
    const __m128i zero = _mm_setzero_si128();
    while (inEnd - in >= 16 && outEnd - out >= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
        if (_mm_movemask_epi8(bytes) != 0) {
            return;
        }
        const __m128i low = _mm_unpacklo_epi8(bytes, zero);
        const __m128i high = _mm_unpackhi_epi8(bytes, zero);
        storeVector(out, _mm_unpacklo_epi16(low, zero));
        storeVector(out + 4, _mm_unpackhi_epi16(low, zero));
        storeVector(out + 8, _mm_unpacklo_epi16(high, zero));
        storeVector(out + 12, _mm_unpackhi_epi16(high, zero));
        in += 16;
        out += 16;
    }
}

}  // namespace vel::transcoding_details
