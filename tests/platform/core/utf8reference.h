#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// A second implementation of UTF-8, slow and obvious: decoding from the table of well-formed byte sequences of the
// Unicode Standard (table 3-7), encoding from the definition of the bit distribution (table 3-6).
namespace utf8reference {

struct Range
{
    unsigned m_nFirst;
    unsigned m_nLast;
};

struct Form
{
    std::size_t m_nLength;
    Range m_aBytes[4];
};

constexpr Form kWellFormed[] = {
    {1, {{0x00, 0x7F}, {}, {}, {}}},
    {2, {{0xC2, 0xDF}, {0x80, 0xBF}, {}, {}}},
    {3, {{0xE0, 0xE0}, {0xA0, 0xBF}, {0x80, 0xBF}, {}}},
    {3, {{0xE1, 0xEC}, {0x80, 0xBF}, {0x80, 0xBF}, {}}},
    {3, {{0xED, 0xED}, {0x80, 0x9F}, {0x80, 0xBF}, {}}},
    {3, {{0xEE, 0xEF}, {0x80, 0xBF}, {0x80, 0xBF}, {}}},
    {4, {{0xF0, 0xF0}, {0x90, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF1, 0xF3}, {0x80, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF4, 0xF4}, {0x80, 0x8F}, {0x80, 0xBF}, {0x80, 0xBF}}},
};

inline bool matches(const Form& form, std::string_view bytes)
{
    if (bytes.size() < form.m_nLength) {
        return false;
    }
    for (std::size_t i = 0; i < form.m_nLength; ++i) {
        const unsigned byte = static_cast<unsigned char>(bytes[i]);
        if (byte < form.m_aBytes[i].m_nFirst || byte > form.m_aBytes[i].m_nLast) {
            return false;
        }
    }
    return true;
}

/// Length of the well-formed sequence at the front, 0 when there is none; `value` receives its code point.
inline std::size_t first(std::string_view bytes, std::uint32_t& value)
{
    constexpr unsigned kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    for (const Form& form : kWellFormed) {
        if (matches(form, bytes)) {
            value = static_cast<unsigned char>(bytes[0]) & kLeadBits[form.m_nLength];
            for (std::size_t i = 1; i < form.m_nLength; ++i) {
                value = value * 64 + static_cast<unsigned char>(bytes[i]) % 64;
            }
            return form.m_nLength;
        }
    }
    return 0;
}

/// Decodes up to the first fault, whose offset it returns; npos when there is none.
inline std::size_t decode(std::string_view bytes, std::wstring& out)
{
    std::size_t offset = 0;
    while (offset < bytes.size()) {
        std::uint32_t value = 0;
        const std::size_t length = first(bytes.substr(offset), value);
        if (length == 0) {
            return offset;
        }
        out.push_back(static_cast<wchar_t>(value));
        offset += length;
    }
    return std::string_view::npos;
}

/// `value`: a Unicode scalar value.
inline std::string encode(std::uint32_t value)
{
    const auto byte = [](std::uint32_t bits) { return static_cast<char>(bits); };
    if (value < 0x80) {
        return {byte(value)};
    }
    if (value < 0x800) {
        return {byte(0xC0 + value / 64), byte(0x80 + value % 64)};
    }
    if (value < 0x10000) {
        return {byte(0xE0 + value / 4096), byte(0x80 + value / 64 % 64), byte(0x80 + value % 64)};
    }
    return {byte(0xF0 + value / 262144), byte(0x80 + value / 4096 % 64), byte(0x80 + value / 64 % 64),
            byte(0x80 + value % 64)};
}

}  // namespace utf8reference
