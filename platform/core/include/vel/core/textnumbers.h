#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/flatindex.h"
#include "vel/core/texthash.h"

namespace vel {

/// Numbers texts from 0 in the order in which they are added; texts compare exactly. The characters of all of them lie
/// in one array, so that a text costs its characters and a few bytes. All texts together have less than 2^32
/// characters: they come from files, which are smaller. Filled by one thread, then only read, from any thread.
///
///     add(L"a") -> 0    add(L"") -> 1    add(L"a") -> 0    find(L"") -> 1    find(L"A") -> kNone
class WEBI18N_API TextNumbers
{
public:
    /// No text's number.
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};

    std::size_t size() const noexcept { return m_tIndex.size(); }

    /// The number of the text, or kNone.
    std::uint32_t find(std::wstring_view text) const noexcept { return find(text, hashText(text)); }
    /// The same for a text whose hashText is known.
    std::uint32_t find(std::wstring_view text, std::uint32_t hash) const noexcept;

    /// The number of the text, which is added if it is new. When memory runs out, std::bad_alloc; nothing has changed.
    std::uint32_t add(std::wstring_view text);
    /// Makes room for that many more texts and characters, so that adding them cannot fail.
    void reserve(std::size_t moreTexts, std::size_t moreCharacters);
    /// Empties it and gives the memory back.
    void clear() noexcept;

private:
    struct Text
    {
        std::uint32_t m_nNumber;
        std::uint32_t m_nStart;
        std::uint32_t m_nLength;
    };

    FlatIndex<Text> m_tIndex;
    std::vector<wchar_t> m_vCharacters;
};

}  // namespace vel
