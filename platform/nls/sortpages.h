#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "sortentry.h"

namespace vel::nls {

/// The entries of all code points, in pages of 256; the pages without a character of their own are one shared page, all
/// of whose characters are slow.
class SortPages
{
public:
    static constexpr std::size_t kPageSize = 256;

    SortPages();

    SortEntry find(char32_t c) const noexcept { return m_aPages[c >> 8][c & 0xFF]; }
    /// The entry of one code unit: of a character, or of half of one.
    SortEntry findUnit(char16_t unit) const noexcept { return findUnit(unit >> 8, unit & 0xFF); }
    SortEntry findUnit(std::size_t high, std::size_t low) const noexcept { return m_aPages[high][low]; }
    /// Throws std::bad_alloc.
    void set(char32_t c, SortEntry e);
    std::size_t memory() const noexcept { return sizeof *this + m_tOwn.size() * kPageSize * sizeof(SortEntry); }

private:
    std::array<const SortEntry*, 0x1100> m_aPages{};
    std::vector<std::unique_ptr<SortEntry[]>> m_tOwn;
    std::array<SortEntry*, 0x1100> m_aWritable{};
};

}  // namespace vel::nls
