#pragma once

#include <cstddef>

#include "vel/core/api.h"

namespace vel {

/// Bytes of UTF-16 that a character takes at most.
inline constexpr std::size_t kUtf16BytesPerCharacter = 4;

/// Writes wide text as UTF-16 in big-endian order, without a byte-order mark, to `pOut`, which has room for
/// kUtf16BytesPerCharacter bytes for each character. A character that is no Unicode scalar value (a surrogate,
/// negative, or above U+10FFFF) is written as U+FFFD, so bytes compare as the characters do as long as all are in the
/// Basic Multilingual Plane. Returns the number of bytes written; bytes of `pOut` behind them may be overwritten, as
/// far as the room goes. `pOut` must not overlap the text.
///
///     L"A"         -> 00 41
///     L"\u20AC"    -> 20 AC
///     L"\U0001F600" -> D8 3D DE 00
///     0xD800       -> FF FD
WEBI18N_API std::size_t encodeUtf16BigEndian(const wchar_t* pText, std::size_t nLength, char* pOut) noexcept;
/// The same where `pOut` has room for `nCapacity` bytes, at least as many: with room to spare, a short text is written
/// at one stroke.
WEBI18N_API std::size_t encodeUtf16BigEndian(const wchar_t* pText, std::size_t nLength, char* pOut,
                                             std::size_t nCapacity) noexcept;

/// Writes UTF-16 text in big-endian order as wide text to `pOut`, which has room for `nSize` / 2 characters. Returns
/// the number of characters written. `*pErrorOffset` is set to the offset of the first byte of the first unpaired
/// surrogate or of a last, odd byte, or to std::string_view::npos; what is before it is written. A byte-order mark is a
/// character.
///
///     20 AC       -> L"\u20AC"
///     D8 3D DE 00 -> L"\U0001F600"
///     00 41 DE 00 -> L"A", error at 2
///     00 41 00    -> L"A", error at 2
WEBI18N_API std::size_t decodeUtf16BigEndian(const char* pBytes, std::size_t nSize, wchar_t* pOut,
                                             std::size_t* pErrorOffset) noexcept;

}  // namespace vel
