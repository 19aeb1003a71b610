#include "asciicodes.h"

#include <immintrin.h>

#include <algorithm>
#include <cstring>

namespace vel::nls {

AsciiCodes::AsciiCodes(bool mayVectorise) noexcept : m_bVectorised(mayVectorise && __builtin_cpu_supports("avx2") != 0)
{
    for (std::size_t row = 0; row < kRows; ++row) {
        std::memset(m_aRows[row].m_aFirst, static_cast<int>(kRow * (kFirstRow + row)), sizeof m_aRows[row].m_aFirst);
    }
}

void AsciiCodes::set(unsigned char c, unsigned char primary, unsigned char tertiary) noexcept
{
    if (c < kRow * kFirstRow) {
        return;
    }
    m_aPrimary[c] = primary;
    m_aTertiary[c] = tertiary;
    const std::size_t own = c / kRow - kFirstRow;
    for (std::size_t row = own; row < std::min(own + 2, kRows); ++row) {
        m_aRows[row].m_aPrimary[c % kRow] ^= primary;
        m_aRows[row].m_aTertiary[c % kRow] ^= tertiary;
    }
}

void AsciiCodes::readSingly(const unsigned char* utf16be, std::size_t units, unsigned char* out,
                            Block& block) const noexcept
{
    const std::size_t most = std::min(units, kBlock);
    block.m_nUncommon = 0;
    std::size_t i = 0;
    for (; i < most; ++i) {
        const unsigned char c = utf16be[2 * i + 1];
        if (utf16be[2 * i] != 0 || c >= m_aPrimary.size() || m_aPrimary[c] == 0) {
            break;
        }
        out[i] = m_aPrimary[c];
        block.m_aTertiary[i] = m_aTertiary[c];
        block.m_nUncommon |= (m_aTertiary[c] != 0 ? 1U : 0U) << i;
    }
    block.m_nCount = i;
}

namespace {

/// Sixteen units, or fewer, of which the last one takes the places behind it.
[[gnu::target("avx2")]] inline __m256i loadUnits(const unsigned char* utf16be, std::size_t units) noexcept
{
    alignas(32) static constexpr std::int32_t kPairs[16] = {-1, -1, -1, -1, -1, -1, -1, -1};
    const auto* const pairs = reinterpret_cast<const __m256i*>(kPairs + 8 - units / 2);
    const __m256i mask = _mm256_loadu_si256(pairs);
    const __m256i read = _mm256_maskload_epi32(reinterpret_cast<const int*>(utf16be), mask);
    std::int16_t last = 0;
    std::memcpy(&last, utf16be + 2 * (units - 1), sizeof last);
    const __m256i units16 = _mm256_blendv_epi8(_mm256_set1_epi16(last), read, mask);
    const __m128i swap = _mm_set_epi64x(0x0E0F0C0D0A0B0809LL, 0x0607040502030001LL);
    return _mm256_shuffle_epi8(units16, _mm256_broadcastsi128_si256(swap));
}

}  // namespace

[[gnu::target("avx2")]] void AsciiCodes::readAvx2(const unsigned char* utf16be, std::size_t units, unsigned char* out,
                                                  Block& block) const noexcept
{
    const std::size_t most = std::min(units, kBlock);
    const __m256i text = loadUnits(utf16be, most);
    // Both halves get all characters: the lower one looks up their primary codes, the upper one the tertiary ones. What
    // has no byte becomes 0 or FF.
    const __m256i bytes = _mm256_packus_epi16(text, text);
    const __m256i characters = _mm256_permute4x64_epi64(bytes, 0x88);
    __m256i codes = _mm256_setzero_si256();
    for (const Row& row : m_aRows) {
        const auto* const first = reinterpret_cast<const __m256i*>(row.m_aFirst);
        const auto* const differences = reinterpret_cast<const __m256i*>(row.m_aPrimary);
        // Negative for a character before the row, and for one that is not ASCII: these take nothing.
        const __m256i places = _mm256_subs_epi8(characters, _mm256_load_si256(first));
        codes = _mm256_xor_si256(codes, _mm256_shuffle_epi8(_mm256_load_si256(differences), places));
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(codes));
    _mm_store_si128(reinterpret_cast<__m128i*>(block.m_aTertiary), _mm256_extracti128_si256(codes, 1));
    const auto none =
        static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(codes, _mm256_setzero_si256())));
    block.m_nCount = std::min<std::size_t>(most, static_cast<std::size_t>(__builtin_ctz(none | 0x10000)));
    block.m_nUncommon = (~none >> 16) & ((1U << block.m_nCount) - 1);
}

}  // namespace vel::nls
