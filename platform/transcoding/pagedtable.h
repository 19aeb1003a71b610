#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace vel::transcoding_details {

/// A value for every character of the Basic Multilingual Plane, in pages of 64, of which those without any value are
/// one. A value of 0 means none.
template <typename Value>
class PagedTable
{
public:
    static constexpr std::uint32_t kPageSize = 64;

    /// Where the values are: copied into a loop, so that what the loop writes cannot seem to change it.
    struct View
    {
        const std::uint32_t* m_pPlaces;
        const Value* m_pValues;

        /// `code` below U+10000.
        Value operator[](std::uint32_t code) const noexcept { return m_pValues[m_pPlaces[code / kPageSize] + code]; }
    };

    PagedTable() : m_vValues(kPageSize)
    {
        for (std::uint32_t page = 0; page < m_aPlaces.size(); ++page) {
            m_aPlaces[page] = placeOf(page, 0);
        }
    }

    View view() const noexcept { return {m_aPlaces.data(), m_vValues.data()}; }
    Value operator[](std::uint32_t code) const noexcept { return view()[code]; }

    void set(std::uint32_t code, Value value)
    {
        std::uint32_t& place = m_aPlaces[code / kPageSize];
        if (place == placeOf(code / kPageSize, 0)) {
            place = placeOf(code / kPageSize, m_vValues.size());
            m_vValues.resize(m_vValues.size() + kPageSize);
        }
        m_vValues[place + code] = value;
    }

    /// Gives back what was taken while the table grew.
    void close() { m_vValues.shrink_to_fit(); }

    std::size_t bytes() const noexcept { return sizeof m_aPlaces + m_vValues.capacity() * sizeof(Value); }

private:
    /// What is added to a character of the page to find its value, modulo 2^32: the search is one addition shorter so.
    static std::uint32_t placeOf(std::uint32_t page, std::size_t begin) noexcept
    {
        return static_cast<std::uint32_t>(begin) - page * kPageSize;
    }

    std::array<std::uint32_t, 0x10000 / kPageSize> m_aPlaces;
    std::vector<Value> m_vValues;
};

}  // namespace vel::transcoding_details
