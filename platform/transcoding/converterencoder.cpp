#include "converterencoder.h"

#include <unicode/ucnv_cb.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "codec.h"

namespace vel::transcoding_details {

namespace {

constexpr std::size_t kBlockCharacters = 64;
constexpr UChar kReplacementCharacter = 0xFFFD;
/// Stands alone wherever it is, so that every converter of a set without U+FFFD refuses it.
constexpr UChar kIllFormed = 0xDC00;
constexpr std::int32_t kLongestReference = 10;

/// Writes "&#8364;"; returns its length.
std::int32_t writeReference(UChar32 code, UChar* out) noexcept
{
    UChar digits[7];
    std::int32_t count = 0;
    for (std::uint32_t rest = static_cast<std::uint32_t>(code); rest > 0 || count == 0; rest /= 10) {
        digits[count++] = static_cast<UChar>('0' + rest % 10);
    }
    std::int32_t length = 0;
    out[length++] = '&';
    out[length++] = '#';
    while (count > 0) {
        out[length++] = digits[--count];
    }
    out[length++] = ';';
    return length;
}

}  // namespace

/// Text as ICU takes it.
struct ConverterEncoder::Block
{
    UChar m_aUnits[2 * kBlockCharacters];
    std::int32_t m_nUnits = 0;
};

ConverterEncoder::ConverterEncoder(const std::string& icuName, ConverterTraits traits, EUnencodable policy)
    : m_sIcuName(icuName), m_tTraits(traits), m_ePolicy(policy)
{
    start();
}

/// Takes a new converter for a text: resetting one leaves the state of some as it is.
void ConverterEncoder::start()
{
    m_pConverter = reopenConverter(m_sIcuName.c_str());
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setFromUCallBack(m_pConverter.get(), onUnencodable, this, nullptr, nullptr, &error);
}

void ConverterEncoder::onUnencodable(const void* context, UConverterFromUnicodeArgs* arguments, const UChar*,
                                     std::int32_t, UChar32 code, UConverterCallbackReason reason, UErrorCode* error)
{
    // The other reasons tell that the converter is reset, closed or copied. Where the error stays, the converter stops;
    // its own function for that would leave out characters that are shown as nothing.
    const ConverterEncoder& encoder = *static_cast<const ConverterEncoder*>(context);
    if (reason <= UCNV_IRREGULAR && encoder.m_ePolicy != kUnencodableError) {
        *error = U_ZERO_ERROR;
        encoder.replace(*arguments, code, *error);
    }
}

void ConverterEncoder::replace(UConverterFromUnicodeArgs& arguments, UChar32 code, UErrorCode& error) const
{
    if (m_ePolicy == kUnencodableReference && m_tTraits.m_bReference &&
        isScalarValue(static_cast<std::uint32_t>(code))) {
        UChar reference[kLongestReference];
        const UChar* source = reference;
        const std::int32_t length = writeReference(code, reference);
        ucnv_cbFromUWriteUChars(&arguments, &source, reference + length, 0, &error);
        return;
    }
    ucnv_cbFromUWriteSub(&arguments, 0, &error);
}

/// Takes characters up to a block's size, or up to one that is ill-formed when that is an error; returns how many.
std::size_t ConverterEncoder::fill(Block& block, const wchar_t* text, std::size_t length) const
{
    // One at a time where it matters which one is at fault: ICU tells only how much it has read.
    const std::size_t most = m_ePolicy == kUnencodableError ? 1 : kBlockCharacters;
    std::size_t taken = 0;
    for (; taken < std::min(length, most); ++taken) {
        const std::uint32_t code = codeOf(text[taken]);
        if (!isScalarValue(code)) {
            if (m_ePolicy == kUnencodableError) {
                break;
            }
            block.m_aUnits[block.m_nUnits++] = m_tTraits.m_bReplacementCharacter ? kReplacementCharacter : kIllFormed;
        } else if (code < 0x10000) {
            block.m_aUnits[block.m_nUnits++] = static_cast<UChar>(code);
        } else {
            block.m_aUnits[block.m_nUnits++] = static_cast<UChar>(0xD7C0 + (code >> 10));
            block.m_aUnits[block.m_nUnits++] = static_cast<UChar>(0xDC00 + (code & 0x3FF));
        }
    }
    return taken;
}

/// Converts the block behind what is pending; false when the converter stopped at a character.
bool ConverterEncoder::feed(const Block& block, bool atEnd)
{
    const UChar* source = block.m_aUnits;
    const UChar* sourceEnd = source + block.m_nUnits;
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    while (error == U_BUFFER_OVERFLOW_ERROR) {
        char bytes[1024];
        char* out = bytes;
        error = U_ZERO_ERROR;
        // Before the conversion, which cannot be taken back.
        m_sPending.reserve(m_sPending.size() + sizeof bytes);
        ucnv_fromUnicode(m_pConverter.get(), &out, bytes + sizeof bytes, &source, sourceEnd, nullptr, atEnd, &error);
        m_sPending.append(bytes, out);
    }
    checkMemory(error);
    return U_SUCCESS(error);
}

std::size_t ConverterEncoder::deliver(char* out, std::size_t capacity) noexcept
{
    const std::size_t count = std::min(capacity, m_sPending.size() - m_nDelivered);
    if (count > 0) {
        std::memcpy(out, m_sPending.data() + m_nDelivered, count);
        m_nDelivered += count;
    }
    if (!hasPending()) {
        m_sPending.clear();
        m_nDelivered = 0;
    }
    return count;
}

TranscodingResult ConverterEncoder::encode(const wchar_t* text, std::size_t length, char* out, std::size_t capacity)
{
    if (m_pConverter == nullptr) {
        start();
    }
    TranscodingResult result;
    result.m_nWritten = deliver(out, capacity);
    while (!hasPending() && result.m_nRead < length) {
        Block block;
        const std::size_t taken = fill(block, text + result.m_nRead, length - result.m_nRead);
        if (taken == 0 || !feed(block, false)) {
            result.m_eStatus = kTranscodingUnencodable;
            return result;
        }
        result.m_nRead += taken;
        result.m_nWritten += deliver(out + result.m_nWritten, capacity - result.m_nWritten);
    }
    result.m_eStatus = hasPending() ? kTranscodingOutputFull : kTranscodingComplete;
    return result;
}

TranscodingResult ConverterEncoder::finish(char* out, std::size_t capacity)
{
    TranscodingResult result;
    if (!m_bFinishing && m_pConverter != nullptr) {
        feed(Block(), true);
        m_bFinishing = true;
    }
    result.m_nWritten = deliver(out, capacity);
    if (hasPending()) {
        result.m_eStatus = kTranscodingOutputFull;
        return result;
    }
    m_pConverter.reset();
    m_bFinishing = false;
    return result;
}

}  // namespace vel::transcoding_details
