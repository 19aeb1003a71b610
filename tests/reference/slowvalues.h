#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "vel/core/datetime.h"

// What both slow parsers are written with.

namespace reference {

/// A text that begins with ASCII digits, taken apart.
struct Number
{
    std::uint32_t m_nValue;  // modulo 2 to the 32
    std::size_t m_nLength;
};

inline bool isDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

inline Number leadingNumber(std::wstring_view text)
{
    std::uint64_t value = 0;
    std::size_t length = 0;
    while (length < text.size() && isDigit(text[length])) {
        value = (value * 10 + static_cast<std::uint64_t>(text[length] - L'0')) % 0x100000000ULL;
        ++length;
    }
    return {static_cast<std::uint32_t>(value), length};
}

inline std::uint32_t nanoseconds(std::uint32_t value, std::size_t digits)
{
    static constexpr std::uint64_t kPowers[] = {1'000'000'000, 100'000'000, 10'000'000, 1'000'000, 100'000,
                                                10'000,        1'000,       100,        10,        1};
    return static_cast<std::uint32_t>(value * kPowers[digits] % 0x100000000ULL);
}

inline bool beginsWith(std::wstring_view text, std::wstring_view start)
{
    return text.substr(0, start.size()) == start;
}

/// The seven values of a date and time by their letter, Y M D h m s and f, and which of them stand.
struct Values
{
    std::array<std::uint32_t, 7> m_aValue{};
    std::array<bool, 7> m_aStands{};

    static constexpr std::size_t placeOf(wchar_t letter)
    {
        constexpr std::wstring_view kLetters = L"YMDhmsf";
        std::size_t place = 0;
        while (place + 1 < kLetters.size() && kLetters[place] != letter) {
            ++place;
        }
        return place;
    }

    void put(wchar_t letter, std::uint32_t value)
    {
        m_aValue[placeOf(letter)] = value;
        m_aStands[placeOf(letter)] = true;
    }
    void remove(wchar_t letter)
    {
        m_aValue[placeOf(letter)] = 0;
        m_aStands[placeOf(letter)] = false;
    }
    bool stands(wchar_t letter) const { return m_aStands[placeOf(letter)]; }
    std::uint32_t value(wchar_t letter) const { return m_aValue[placeOf(letter)]; }

    /// Bit n of a mask of fields is letter n.
    unsigned mask() const
    {
        unsigned bits = 0;
        for (std::size_t i = 0; i < m_aStands.size(); ++i) {
            bits += m_aStands[i] ? 1U << i : 0U;
        }
        return bits;
    }

    vel::DateTime dateTime() const
    {
        vel::DateTime result;
        result.m_nYear = static_cast<std::int16_t>(value(L'Y'));
        result.m_nMonth = static_cast<std::uint16_t>(value(L'M'));
        result.m_nDay = static_cast<std::uint16_t>(value(L'D'));
        result.m_nHour = static_cast<std::uint16_t>(value(L'h'));
        result.m_nMinute = static_cast<std::uint16_t>(value(L'm'));
        result.m_nSecond = static_cast<std::uint16_t>(value(L's'));
        result.m_nFraction = value(L'f');
        return result;
    }
};

}  // namespace reference
