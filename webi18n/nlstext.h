#pragma once

#include <cstddef>
#include <limits>
#include <string_view>

#include "vel/core/autobuffer.h"
#include "vel/core/string.h"
#include "vel/transcoding/utf16.h"

namespace vel::i18n_details {

/// What a conversion gives for a length that cannot be represented.
inline constexpr std::size_t kNotTranslated = static_cast<std::size_t>(-1);
/// The most characters that are encoded: more do not fit into memory.
inline constexpr std::size_t kLongestText = std::numeric_limits<std::ptrdiff_t>::max() / kUtf16BytesPerCharacter;

/// The low byte of every character: what the service takes as 8-bit text is expected to be ASCII. The buffer grows to
/// the larger of the need and 128 bytes. Returns the number of bytes.
std::size_t toBytes(std::wstring_view text, AutoBufferBase<char>& buffer);

/// The size of a work buffer of `current` bytes that is to hold `need` bytes.
///
///     64, 60 -> 64     64, 100 -> 128     64, 128 -> 128     64, 1000 -> 1000     16, 20 -> 64     600, 1100 -> 1200
std::size_t workBufferSize(std::size_t current, std::size_t need) noexcept;

/// The characters as UTF-16BE in the work buffer, which grows to four bytes for each. Returns the number of bytes, or
/// kNotTranslated for a text longer than memory can hold, which is not read.
inline std::size_t encodeToWorkBuffer(const wchar_t* pValue, std::size_t nLen,
                                      AutoBufferBase<unsigned char>& rWorkBuffer)
{
    if (nLen > kLongestText) [[unlikely]] {
        return kNotTranslated;
    }
    const std::size_t need = nLen * kUtf16BytesPerCharacter;
    if (rWorkBuffer.capacity() < need) [[unlikely]] {
        rWorkBuffer.ensureCapacity(workBufferSize(rWorkBuffer.capacity(), need));
    }
    return encodeUtf16BigEndian(pValue, nLen, reinterpret_cast<char*>(rWorkBuffer.data()), rWorkBuffer.capacity());
}

/// Zero-terminated UTF-16BE as wide text, U+FFFD for what is ill-formed; empty for null.
String fromTerminatedUtf16(const unsigned char* text);

}  // namespace vel::i18n_details
