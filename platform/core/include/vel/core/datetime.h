#pragma once

#include <cstdint>

namespace vel {

/// A date and time of the Gregorian calendar without a zone. A plain value; fields that are not known are 0.
struct DateTime
{
    std::int16_t m_nYear = 0;
    std::uint16_t m_nMonth = 0;  ///< from 1
    std::uint16_t m_nDay = 0;    ///< from 1
    std::uint16_t m_nHour = 0;   ///< 0 to 23
    std::uint16_t m_nMinute = 0;
    std::uint16_t m_nSecond = 0;
    std::uint32_t m_nFraction = 0;  ///< of a second, in nanoseconds

    /// Sets every field to 0.
    void clear() noexcept { *this = DateTime(); }

    friend bool operator==(const DateTime&, const DateTime&) noexcept = default;
};

}  // namespace vel
