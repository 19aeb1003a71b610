#include "setmapping.h"

#include <unicode/uset.h>
#include <unicode/utf16.h>

#include <memory>

namespace vel::transcoding_details {

namespace {

struct CloseSet
{
    void operator()(USet* set) const noexcept { uset_close(set); }
};

constexpr std::uint32_t kReplacementCharacter = 0xFFFD;

}  // namespace

ByteSequence SetMapping::encode(std::uint32_t code) const
{
    UChar units[2];
    std::int32_t length = 0;
    U16_APPEND_UNSAFE(units, length, code);
    const UChar* source = units;
    char bytes[8];
    char* out = bytes;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_fromUnicode(&m_rConverter, &out, bytes + sizeof bytes, &source, units + length, nullptr, true, &error);
    ucnv_resetFromUnicode(&m_rConverter);
    checkMemory(error);
    ByteSequence result;
    if (U_SUCCESS(error)) {
        result.m_nLength = static_cast<unsigned>(out - bytes);
        for (const char* each = bytes; each < out; ++each) {
            result.m_nBytes = result.m_nBytes << 8 | byteOf(*each);
        }
    }
    return result;
}

std::optional<std::vector<EncodedCharacter>> SetMapping::encodings(std::uint32_t last, unsigned longest) const
{
    const std::unique_ptr<USet, CloseSet> set(uset_openEmpty());
    UErrorCode error = set == nullptr ? U_MEMORY_ALLOCATION_ERROR : U_ZERO_ERROR;
    checkMemory(error);
    ucnv_getUnicodeSet(&m_rConverter, set.get(), UCNV_ROUNDTRIP_AND_FALLBACK_SET, &error);
    checkMemory(error);
    std::vector<EncodedCharacter> result;
    const std::int32_t items = U_SUCCESS(error) ? uset_getItemCount(set.get()) : 0;
    for (std::int32_t i = 0; i < items; ++i) {
        UChar32 first = 0;
        UChar32 end = 0;
        // Several characters for one sequence of bytes: the first one's bytes depend on what follows.
        if (uset_getItem(set.get(), i, &first, &end, nullptr, 0, &error) > 0) {
            return std::nullopt;
        }
        for (std::uint32_t code = static_cast<std::uint32_t>(first); code <= std::min<std::uint32_t>(end, last);
             ++code) {
            const ByteSequence bytes = encode(code);
            if (bytes.m_nLength > longest) {
                return std::nullopt;
            }
            if (bytes.m_nLength > 0) {
                result.push_back({code, bytes});
            }
        }
    }
    return result;
}

DecodedSequence SetMapping::decode(ByteSequence bytes) const
{
    char sequence[4];
    for (unsigned i = 0; i < bytes.m_nLength; ++i) {
        sequence[i] = static_cast<char>(bytes.m_nBytes >> 8 * (bytes.m_nLength - 1 - i));
    }
    const char* source = sequence;
    UChar units[8];
    UChar* out = units;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_toUnicode(&m_rConverter, &out, units + 8, &source, sequence + bytes.m_nLength, nullptr, false, &error);
    UErrorCode countError = U_ZERO_ERROR;
    const std::int32_t pending = ucnv_toUCountPending(&m_rConverter, &countError);
    ucnv_resetToUnicode(&m_rConverter);
    checkMemory(error);
    if (U_FAILURE(error)) {
        return {};
    }
    if (out == units) {
        return {pending > 0 ? DecodedSequence::kIncomplete : DecodedSequence::kNone, 0};
    }
    std::int32_t read = 0;
    UChar32 code = 0;
    U16_NEXT(units, read, static_cast<std::int32_t>(out - units), code);
    const bool isOne = units + read == out && pending == 0;
    return {isOne ? DecodedSequence::kCharacter : DecodedSequence::kNone, static_cast<std::uint32_t>(code)};
}

Replacements SetMapping::replacements() const
{
    Replacements result;
    char substitute[16];
    std::int8_t length = sizeof substitute;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_getSubstChars(&m_rConverter, substitute, &length, &error);
    result.m_sSubstitute.assign(substitute, U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0);
    const ByteSequence replacement = encode(kReplacementCharacter);
    result.m_sIllFormed = replacement.m_nLength == 0 ? result.m_sSubstitute : std::string();
    for (unsigned i = replacement.m_nLength; i > 0; --i) {
        result.m_sIllFormed += static_cast<char>(replacement.m_nBytes >> 8 * (i - 1));
    }
    result.m_bReference = true;
    for (std::size_t i = 0; i < kReferenceCharacters.size(); ++i) {
        const ByteSequence bytes = encode(byteOf(kReferenceCharacters[i]));
        result.m_aReference[i] = static_cast<char>(bytes.m_nBytes);
        result.m_bReference = result.m_bReference && bytes.m_nLength == 1;
    }
    return result;
}

}  // namespace vel::transcoding_details
