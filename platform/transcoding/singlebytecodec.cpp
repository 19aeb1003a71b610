#include <algorithm>
#include <array>

#include "asciirun.h"
#include "codecs.h"
#include "pagedtable.h"
#include "setmapping.h"

namespace vel::transcoding_details {

namespace {

/// Stands for no character in the table of bytes.
constexpr std::uint16_t kNoCharacter = 0xFFFF;
constexpr std::ptrdiff_t kBlock = 16;

struct SingleByteTables
{
    PagedTable<std::uint8_t> m_tBytes;
    std::array<std::uint16_t, 256> m_aCharacters;
    bool m_bNull = false;   ///< U+0000 is byte 0
    bool m_bAscii = false;  ///< U+0000 to U+007F are their own bytes, both ways
    bool m_bC1 = false;     ///< the same for U+0080 to U+009F
    bool m_bLatin = false;  ///< the same for U+00A0 to U+00FF
};

class SingleByteCodec final : public Codec
{
public:
    SingleByteCodec(SingleByteTables tables, Replacements replacements)
        : Codec(std::move(replacements)), m_tTables(std::move(tables))
    {}

    EncodeRun encode(const wchar_t* in, const wchar_t* inEnd, char* out, char* outEnd) const noexcept override
    {
        const std::ptrdiff_t room = outEnd - out;
        const wchar_t* stop = inEnd - in <= room ? inEnd : in + room;
        while (stop - in >= kBlock && writeBlock(in, out)) {
            in += kBlock;
            out += kBlock;
        }
        for (; in < stop && has(codeOf(*in)); ++in) {
            *out++ = static_cast<char>(m_tTables.m_tBytes[codeOf(*in)]);
        }
        // A character that is not in the set needs no room to be told.
        return {in, out, in == inEnd ? kStopInputEnd : has(codeOf(*in)) ? kStopOutputFull : kStopInput};
    }

    DecodeRun decode(const char* in, const char* inEnd, wchar_t* out, wchar_t* outEnd) const noexcept override
    {
        const bool isAllRoom = inEnd - in <= outEnd - out;
        const char* stop = isAllRoom ? inEnd : in + (outEnd - out);
        if (m_tTables.m_bAscii) {
            widenAsciiBlocks(in, stop, out, outEnd);
        }
        for (; in < stop; ++in) {
            const std::uint16_t code = m_tTables.m_aCharacters[byteOf(*in)];
            if (code == kNoCharacter) {
                return {in, out, kStopInput};
            }
            *out++ = static_cast<wchar_t>(code);
        }
        return {in, out, isAllRoom ? kStopInputEnd : kStopOutputFull};
    }

    std::size_t tableBytes() const noexcept override { return sizeof *this + m_tTables.m_tBytes.bytes(); }

private:
    bool has(std::uint32_t code) const noexcept
    {
        return code < 0x10000 && (m_tTables.m_tBytes[code] != 0 || (code == 0 && m_tTables.m_bNull));
    }

    /// Sixteen characters, of which those that are their own bytes cost nothing else; false when one has no byte.
    bool writeBlock(const wchar_t* in, char* out) const noexcept
    {
        const SixteenWide block(in);
        const __m128i any = block.any();
        if (hasNoneOf(any, ~0xFFU)) {
            const __m128i bytes = block.bytes();
            storeVector(out, bytes);
            if (areOwnBytes(bytes)) [[likely]] {
                return true;
            }
        }
        return hasNoneOf(any, ~0xFFFFU) && writeByTable(in, out);
    }

    bool areOwnBytes(__m128i bytes) const noexcept
    {
        if (!m_tTables.m_bAscii || _mm_movemask_epi8(bytes) == 0) {
            return m_tTables.m_bAscii;
        }
        // As signed numbers C1 is below 0xA0, and 0xA0 to 0xFF are below 0.
        const bool hasC1 = _mm_movemask_epi8(_mm_cmplt_epi8(bytes, _mm_set1_epi8(static_cast<char>(0xA0)))) != 0;
        return m_tTables.m_bLatin && (m_tTables.m_bC1 || !hasC1);
    }

    using View = PagedTable<std::uint8_t>::View;

    static int fourBytes(View bytes, const wchar_t* in) noexcept
    {
        const std::uint32_t first = bytes[codeOf(in[0])];
        const std::uint32_t second = bytes[codeOf(in[1])];
        const std::uint32_t third = bytes[codeOf(in[2])];
        const std::uint32_t fourth = bytes[codeOf(in[3])];
        return static_cast<int>(first | second << 8 | third << 16 | fourth << 24);
    }

    /// Sixteen characters below U+10000; false when one may have no byte.
    bool writeByTable(const wchar_t* in, char* out) const noexcept
    {
        const View view = m_tTables.m_tBytes.view();
        const __m128i bytes = _mm_setr_epi32(fourBytes(view, in), fourBytes(view, in + 4), fourBytes(view, in + 8),
                                             fourBytes(view, in + 12));
        storeVector(out, bytes);
        return _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_setzero_si128())) == 0;
    }

    SingleByteTables m_tTables;
};

bool areOwnBytes(const SingleByteTables& tables, std::uint32_t first, std::uint32_t last)
{
    for (std::uint32_t code = first; code <= last; ++code) {
        const bool isEncoded = tables.m_tBytes[code] == code && (code > 0 || tables.m_bNull);
        if (!isEncoded || tables.m_aCharacters[code] != code) {
            return false;
        }
    }
    return true;
}

}  // namespace

Handle<const Codec> buildSingleByteCodec(const SetMapping& mapping)
{
    const auto encodings = mapping.encodings(0x10FFFF, 1);
    if (!encodings || (!encodings->empty() && encodings->back().m_nCode > 0xFFFF)) {
        return {};
    }
    SingleByteTables tables;
    for (const EncodedCharacter& each : *encodings) {
        if (each.m_tBytes.m_nBytes != 0) {
            tables.m_tBytes.set(each.m_nCode, static_cast<std::uint8_t>(each.m_tBytes.m_nBytes));
        } else if (each.m_nCode == 0) {
            tables.m_bNull = true;
        } else {
            return {};
        }
    }
    tables.m_tBytes.close();
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        const DecodedSequence decoded = mapping.decode({byte, 1});
        const bool isCharacter = decoded.m_eKind == DecodedSequence::kCharacter;
        if (decoded.m_eKind == DecodedSequence::kIncomplete || decoded.m_nCode > 0xFFFE) {
            return {};
        }
        tables.m_aCharacters[byte] = isCharacter ? static_cast<std::uint16_t>(decoded.m_nCode) : kNoCharacter;
    }
    tables.m_bAscii = areOwnBytes(tables, 0, 0x7F);
    tables.m_bC1 = areOwnBytes(tables, 0x80, 0x9F);
    tables.m_bLatin = areOwnBytes(tables, 0xA0, 0xFF);
    return makeHandle<const SingleByteCodec>(std::move(tables), mapping.replacements());
}

}  // namespace vel::transcoding_details
