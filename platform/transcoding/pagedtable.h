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
    static constexpr std::size_t kPageSize = 64;

    PagedTable() : m_vValues(kPageSize) { m_aPages.fill(0); }

    /// `code` below U+10000.
    Value operator[](std::uint32_t code) const noexcept
    {
        return m_vValues[m_aPages[code / kPageSize] + code % kPageSize];
    }

    void set(std::uint32_t code, Value value)
    {
        std::uint16_t& page = m_aPages[code / kPageSize];
        if (page == 0) {
            // The plane has no characters in the 32 pages of surrogates, so the places stay below 65536.
            const std::size_t place = m_vValues.size();
            m_vValues.resize(place + kPageSize);
            page = static_cast<std::uint16_t>(place);
        }
        m_vValues[page + code % kPageSize] = value;
    }

    /// Gives back what was taken while the table grew.
    void close() { m_vValues.shrink_to_fit(); }

    std::size_t bytes() const noexcept { return sizeof m_aPages + m_vValues.capacity() * sizeof(Value); }

private:
    std::array<std::uint16_t, 0x10000 / kPageSize> m_aPages;
    std::vector<Value> m_vValues;
};

}  // namespace vel::transcoding_details
