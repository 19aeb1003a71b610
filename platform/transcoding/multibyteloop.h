#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "asciirun.h"
#include "avx2.h"
#include "pagedtable.h"
#include "setmapping.h"

// What the sets of one and two bytes a character have in common, those with some longer sequences included.

namespace vel::transcoding_details {

/// Values in the tables of bytes that are no character.
inline constexpr std::uint16_t kNoCharacter = 0xFFFF;
inline constexpr std::uint16_t kLeadByte = 0xFFFE;

/// The characters of double bytes: for each lead byte that there is, a row of all trail bytes that any lead has.
class DoubleByteRows
{
public:
    /// `leads`: the bytes that more follow; `decode(lead, trail)` gives the character of two bytes or kNoCharacter.
    template <typename Decode>
    void build(const std::vector<std::uint32_t>& leads, std::uint32_t firstTrail, const Decode& decode)
    {
        m_nFirstTrail = firstTrail;
        m_nWidth = 0x100 - firstTrail;
        m_aRows.fill(kNoRow);
        for (const std::uint32_t lead : leads) {
            m_aRows[lead] = static_cast<std::uint16_t>(m_vCharacters.size() / m_nWidth);
            for (std::uint32_t trail = firstTrail; trail < 0x100; ++trail) {
                m_vCharacters.push_back(decode(lead, trail));
            }
        }
        m_vCharacters.shrink_to_fit();
    }

    std::uint16_t find(unsigned lead, unsigned trail) const noexcept
    {
        const std::uint16_t row = m_aRows[lead];
        return row == kNoRow || trail < m_nFirstTrail ? kNoCharacter
                                                      : m_vCharacters[row * m_nWidth + (trail - m_nFirstTrail)];
    }

    std::size_t bytes() const noexcept { return sizeof *this + m_vCharacters.capacity() * sizeof(std::uint16_t); }

private:
    static constexpr std::uint16_t kNoRow = 0xFFFF;

    std::array<std::uint16_t, 256> m_aRows;
    std::vector<std::uint16_t> m_vCharacters;
    std::size_t m_nFirstTrail = 0;
    std::size_t m_nWidth = 1;
};

/// One and two bytes of the Basic Multilingual Plane. The first byte of two is the lower half of a value, so that a
/// value is stored as it is; a single byte has no upper half.
struct MultiByteTables
{
    PagedTable<std::uint16_t> m_tBytes;
    std::array<std::uint16_t, 256> m_aSingles;
    DoubleByteRows m_tDoubles;
    bool m_bNull = false;   ///< U+0000 is byte 0
    bool m_bAscii = false;  ///< U+0000 to U+007F are their own bytes, both ways

    std::size_t bytes() const noexcept { return sizeof *this + m_tBytes.bytes() + m_tDoubles.bytes(); }
};

/// `value`: of the two bytes of an encoding, or the one.
inline std::uint16_t storedValue(ByteSequence bytes) noexcept
{
    const std::uint32_t swapped = bytes.m_nBytes >> 8 | bytes.m_nBytes << 8;
    return static_cast<std::uint16_t>(bytes.m_nLength == 2 ? swapped : bytes.m_nBytes);
}

/// Encodes four characters below U+10000; false when one is not in the table. Writes eight bytes, of which some count.
inline bool encodeFour(PagedTable<std::uint16_t>::View bytes, const wchar_t* in, char*& out) noexcept
{
    const std::uint32_t first = bytes[codeOf(in[0])];
    const std::uint32_t second = bytes[codeOf(in[1])];
    const std::uint32_t third = bytes[codeOf(in[2])];
    const std::uint32_t fourth = bytes[codeOf(in[3])];
    if (first == 0 || second == 0 || third == 0 || fourth == 0) {
        return false;
    }
    // Where each one stands, without waiting for the one before.
    const std::size_t afterFirst = 1 + static_cast<std::size_t>(first > 0xFF);
    const std::size_t afterSecond = afterFirst + 1 + static_cast<std::size_t>(second > 0xFF);
    const std::size_t afterThird = afterSecond + 1 + static_cast<std::size_t>(third > 0xFF);
    storeTwo(out, first);
    storeTwo(out + afterFirst, second);
    storeTwo(out + afterSecond, third);
    storeTwo(out + afterThird, fourth);
    out += afterThird + 1 + static_cast<std::size_t>(fourth > 0xFF);
    return true;
}

/// Encodes characters of the tables as long as room and input allow whole blocks.
inline void encodeBlocks(const MultiByteTables& tables, const wchar_t*& in, const wchar_t* inEnd, char*& out,
                         const char* outEnd) noexcept
{
    constexpr std::ptrdiff_t kBlock = 16;
    const PagedTable<std::uint16_t>::View bytes = tables.m_tBytes.view();
    const bool isAsciiOwn = tables.m_bAscii;
    const wchar_t* from = in;
    char* to = out;
    while (inEnd - from >= kBlock && outEnd - to >= 2 * kBlock) {
        const SixteenWide block(from);
        const __m128i any = block.any();
        if (isAsciiOwn && hasNoneOf(any, ~0x7FU)) {
            storeVector(to, block.bytes());
            from += kBlock;
            to += kBlock;
            continue;
        }
        if (!hasNoneOf(any, ~0xFFFFU)) {
            break;
        }
        const wchar_t* blockEnd = from + kBlock;
        while (from < blockEnd && encodeFour(bytes, from, to)) {
            from += 4;
        }
        if (from < blockEnd) {
            break;
        }
    }
    in = from;
    out = to;
}

/// Encodes a run. `rare(code)` gives the bytes of a character that the tables do not have, or a length of 0.
template <typename Rare>
EncodeRun encodeMultiByte(const MultiByteTables& tables, const wchar_t* in, const wchar_t* inEnd, char* out,
                          char* outEnd, const Rare& rare) noexcept
{
    constexpr std::ptrdiff_t kSinglesAtOnce = 8;
    const bool isVectorised = hasAvx2();
    for (;;) {
        if (isVectorised) {
            encodeDoubleByteBlocksAvx2(tables.m_tBytes.view(), tables.m_bAscii, in, inEnd, out, outEnd);
        } else {
            encodeBlocks(tables, in, inEnd, out, outEnd);
        }
        const wchar_t* singlesEnd = inEnd - in < kSinglesAtOnce ? inEnd : in + kSinglesAtOnce;
        for (; in < singlesEnd; ++in) {
            const std::uint32_t code = codeOf(*in);
            const std::uint32_t value = code < 0x10000 ? tables.m_tBytes[code] : 0;
            const bool isInTable = value != 0 || (code == 0 && tables.m_bNull);
            const ByteSequence bytes =
                isInTable
                    ? ByteSequence{value > 0xFF ? (value >> 8 | (value & 0xFF) << 8) : value, value > 0xFF ? 2U : 1U}
                    : rare(code);
            if (bytes.m_nLength == 0 || outEnd - out < static_cast<std::ptrdiff_t>(bytes.m_nLength)) {
                return {in, out, bytes.m_nLength == 0 ? kStopInput : kStopOutputFull};
            }
            for (unsigned i = bytes.m_nLength; i > 0; --i) {
                *out++ = static_cast<char>(bytes.m_nBytes >> 8 * (i - 1));
            }
        }
        if (in == inEnd) {
            return {in, out, kStopInputEnd};
        }
    }
}

/// A character that the rows do not have, and its bytes; a size of 0 for none.
struct RareCharacter
{
    std::uint32_t m_nCode = 0;
    std::ptrdiff_t m_nSize = 0;
};

/// Decodes a run. `rare(in, inEnd)` reads what begins with a lead byte and is not in the rows, `widen(value)` makes a
/// character of a value of the rows.
template <typename Rare, typename Widen>
DecodeRun decodeMultiByte(const MultiByteTables& tables, const char* in, const char* inEnd, wchar_t* out,
                          const wchar_t* outEnd, const Rare& rare, const Widen& widen) noexcept
{
    while (in < inEnd && out < outEnd) {
        if (tables.m_bAscii && byteOf(*in) < 0x80) {
            widenAsciiBlocks(in, inEnd, out, outEnd);
            if (in == inEnd || out == outEnd) {
                break;
            }
        }
        const std::uint16_t single = tables.m_aSingles[byteOf(*in)];
        if (single < kLeadByte) {
            *out++ = static_cast<wchar_t>(single);
            ++in;
            continue;
        }
        const bool hasTrail = single == kLeadByte && inEnd - in >= 2;
        const std::uint16_t value = hasTrail ? tables.m_tDoubles.find(byteOf(in[0]), byteOf(in[1])) : kNoCharacter;
        if (value != kNoCharacter) {
            *out++ = static_cast<wchar_t>(widen(value));
            in += 2;
            continue;
        }
        const RareCharacter other = hasTrail ? rare(in, inEnd) : RareCharacter();
        if (other.m_nSize == 0) {
            return {in, out, kStopInput};
        }
        *out++ = static_cast<wchar_t>(other.m_nCode);
        in += other.m_nSize;
    }
    return {in, out, in == inEnd ? kStopInputEnd : kStopOutputFull};
}

/// Fills the singles; gives the lead bytes, or nothing when a single byte is a character beyond the plane.
std::optional<std::vector<std::uint32_t>> buildSingles(const SetMapping& mapping, MultiByteTables& tables);

/// Whether the tables say the same of U+0000 to U+007F as ASCII does.
bool isAscii(const MultiByteTables& tables) noexcept;

/// The least second byte that stands behind any of the leads, 0x100 when there is none.
std::uint32_t leastTrail(const SetMapping& mapping, const std::vector<std::uint32_t>& leads);

}  // namespace vel::transcoding_details
