#include <algorithm>

#include "avx2.h"
#include "codecs.h"
#include "utf16units.h"

namespace vel::transcoding_details {

namespace {

Replacements replacementsOf(EByteOrder order)
{
    const std::string replacement = order == kBigEndian ? "\xFF\xFD" : "\xFD\xFF";
    return {replacement, replacement, {}, false};
}

template <EByteOrder eOrder>
void encodeBlocksAvx2(const wchar_t*& in, const wchar_t* inEnd, char*& out) noexcept
{
    eOrder == kBigEndian ? encodeUtf16BigEndianBlocksAvx2(in, inEnd, out)
                         : encodeUtf16LittleEndianBlocksAvx2(in, inEnd, out);
}

template <EByteOrder eOrder>
class Utf16Codec : public Codec
{
public:
    Utf16Codec() : Codec(replacementsOf(eOrder)) {}

    EncodeRun encode(const wchar_t* in, const wchar_t* inEnd, char* out, char* outEnd) const noexcept override
    {
        const bool isVectorised = hasAvx2();
        for (;;) {
            if (isVectorised) {
                // The blocks hold no surrogate pairs: two bytes a character.
                const wchar_t* fittingEnd = in + std::min(inEnd - in, (outEnd - out) / 2);
                encodeBlocksAvx2<eOrder>(in, fittingEnd, out);
            }
            while (inEnd - in >= kUtf16Block && outEnd - out >= 2 * kUtf16Block && writeUtf16Block<eOrder>(in, out)) {
                in += kUtf16Block;
                out += 2 * kUtf16Block;
            }
            const wchar_t* singlesEnd = inEnd - in < kUtf16Block ? inEnd : in + kUtf16Block;
            for (; in < singlesEnd; ++in) {
                const std::uint32_t code = codeOf(*in);
                if (!isScalarValue(code)) {
                    return {in, out, kStopInput};
                }
                if (outEnd - out < (code < 0x10000 ? 2 : 4)) {
                    return {in, out, kStopOutputFull};
                }
                out = writeUtf16Character<eOrder>(code, out);
            }
            if (in == inEnd) {
                return {in, out, kStopInputEnd};
            }
        }
    }

    DecodeRun decode(const char* in, const char* inEnd, wchar_t* out, wchar_t* outEnd) const noexcept override
    {
        return readUtf16<eOrder>(in, inEnd, out, outEnd);
    }
};

/// Written in little-endian order behind a byte-order mark. Read in the order that the mark says, big-endian without
/// one.
class Utf16MarkedCodec final : public Utf16Codec<kLittleEndian>
{
public:
    std::string_view prefix() const noexcept override { return {"\xFF\xFE", 2}; }

    Handle<const Codec> decoderOf(std::string_view bytes) const override
    {
        return bytes.starts_with(prefix()) ? Handle<const Codec>(this) : makeUtf16BigEndianCodec();
    }
    std::size_t markSize(std::string_view bytes) const noexcept override
    {
        return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ? 2 : 0;
    }
};

}  // namespace

Handle<const Codec> makeUtf16BigEndianCodec()
{
    return makeHandle<const Utf16Codec<kBigEndian>>();
}

Handle<const Codec> makeUtf16LittleEndianCodec()
{
    return makeHandle<const Utf16Codec<kLittleEndian>>();
}

Handle<const Codec> makeUtf16MarkedCodec()
{
    return makeHandle<const Utf16MarkedCodec>();
}

}  // namespace vel::transcoding_details
