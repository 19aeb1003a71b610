#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "identicalcodes.h"
#include "keybytes.h"
#include "markorder.h"

namespace vel::nls {

/// The canonical decompositions (NFD) of all characters and their combining classes, and the identical level, which is
/// made of them by IdenticalCodes. Immutable; one serves all sorts.
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
    /// Calls `take` for each character that the canonical decomposition has, the character itself where there is none,
    /// with its combining class; not in canonical order where a mark stands before another one. Throws std::bad_alloc.
    template <typename Take>
    void forEachCharacter(char32_t c, const Take& take) const
    {
        const Place place = c > 0xFFFF ? 0 : placeOf(c);
        if ((place & kDecomposes) != 0) {
            takeAll(charactersOf(place), take);
        } else if (c <= 0xFFFF && !isSyllable(c)) {
            take(c, place & kClass);
        } else if (const std::u32string characters = charactersBeyond(c); !characters.empty()) {
            takeAll(characters, take);
        } else {
            take(c, static_cast<unsigned>(classOf(c)));
        }
    }

private:
    /// What is to be known of a character of the basic plane; 0 where it stands for itself and is no mark.
    using Place = std::uint32_t;
    static constexpr Place kMark = 1U << 31;        ///< may have to change places with a mark before it
    static constexpr Place kEndsInMark = 1U << 30;  ///< or with one behind it
    static constexpr Place kDecomposes = 1U << 28;  ///< offset in m_sCharacters above 5 bits of length
    static constexpr Place kClass = 0xFF;           ///< without kDecomposes: the combining class
    static constexpr unsigned kLengthBits = 5;
    static constexpr Place kLength = (1U << kLengthBits) - 1;

    using Page = std::array<Place, 256>;

    static bool isSyllable(char32_t c) noexcept { return c - 0xAC00 < 11'172; }
    Place placeOf(char32_t c) const noexcept { return (*m_aPages[c >> 8])[c & 0xFF]; }
    void add(char32_t c);
    bool appendInOrder(const unsigned char* utf16be, std::size_t units, KeyBytes& out) const;
    void appendReordered(const char16_t* text, std::size_t length, KeyBytes& out) const;
    std::u32string_view charactersOf(Place place) const noexcept;
    static unsigned char* put(std::u32string_view characters, IdenticalCodes& codes, unsigned char* out) noexcept;
    /// The decomposition of a syllable or a character beyond the basic plane; empty where there is none.
    static std::u32string charactersBeyond(char32_t c);
    int classOf(char32_t c) const noexcept;
    template <typename Take>
    void takeAll(std::u32string_view characters, const Take& take) const
    {
        for (const char32_t each : characters) {
            take(each, static_cast<unsigned>(classOf(each)));
        }
    }

    std::shared_ptr<void> m_pPlace;
    std::array<const Page*, 256> m_aPages{};
    std::vector<std::unique_ptr<Page>> m_tOwn;
    std::u32string m_sCharacters;
};

}  // namespace vel::nls
