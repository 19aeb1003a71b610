#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "keybytes.h"

namespace vel::nls {

/// The canonical decompositions (NFD) of all characters, as the identical level has them: in UTF-8, U+FFFE as 01 01,
/// U+0000 as 01 02 and U+0001 as 01 03, for U+FFFE is lower than all others there. Combining classes come along.
/// Immutable; one serves all sorts.
class Decompositions
{
public:
    /// The one that all share. Throws std::bad_alloc.
    static std::shared_ptr<const Decompositions> shared();

    explicit Decompositions(std::shared_ptr<void> place);

    /// Appends the level of a UTF-16BE text. Throws std::bad_alloc.
    void append(const unsigned char* utf16be, std::size_t byteCount, KeyBytes& out) const;

    /// Whether a mark behind a character, or behind another mark, is in order there: its combining class is no lower.
    bool isInOrder(char32_t before, char32_t mark) const noexcept;
    /// The combining class of a mark of the basic plane that decomposes to itself; 0 for all other characters.
    int classOfWhole(char32_t mark) const noexcept;

private:
    /// What is to be known of a character of the basic plane; 0 where it stands for itself and is no mark.
    using Place = std::uint32_t;
    static constexpr Place kMark = 1U << 31;        ///< may have to change places with a mark before it
    static constexpr Place kEndsInMark = 1U << 30;  ///< or with one behind it
    static constexpr Place kBytes = 1U << 28;       ///< offset in the bytes above 5 bits of length
    static constexpr Place kClass = 0xFF;           ///< without kBytes: the combining class

    using Page = std::array<Place, 256>;

    Place placeOf(char32_t c) const noexcept { return (*m_aPages[c >> 8])[c & 0xFF]; }
    void add(char32_t c);
    bool appendInOrder(const unsigned char* utf16be, std::size_t units, KeyBytes& out) const;
    unsigned char* putPlace(Place place, char32_t c, unsigned char* out) const noexcept;

    std::shared_ptr<void> m_pPlace;
    std::array<const Page*, 256> m_aPages{};
    std::vector<std::unique_ptr<Page>> m_tOwn;
    std::string m_sBytes;
};

}  // namespace vel::nls
