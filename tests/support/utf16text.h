#pragma once

#include <unicode/utf16.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// A text in the forms that are compared: as ICU takes it, as sort tables make keys of it, and as they compare it.
namespace testsupport {

/// UTF-16BE.
inline std::string bytesOf(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(2 * text.size());
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit >> 8);
        bytes += static_cast<char>(unit);
    }
    return bytes;
}

/// One character a code point; lone surrogates stay.
inline std::wstring wideOf(std::u16string_view text)
{
    std::wstring wide;
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t i = 0; i < size;) {
        UChar32 character = 0;
        U16_NEXT(text.data(), i, size, character);
        wide += static_cast<wchar_t>(character);
    }
    return wide;
}

/// As sort tables read it: lone surrogates are U+FFFD.
inline std::u16string wellFormed(std::u16string text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (U16_IS_LEAD(text[i]) && i + 1 < text.size() && U16_IS_TRAIL(text[i + 1])) {
            ++i;
        } else if (U16_IS_SURROGATE(text[i])) {
            text[i] = 0xFFFD;
        }
    }
    return text;
}

}  // namespace testsupport
