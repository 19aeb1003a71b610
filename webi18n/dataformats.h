#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace vel::i18n_details {

/// A set of texts that compare exactly: the standard data formats. The characters of all of them lie in one array, so a
/// text costs its characters and a few bytes. The empty text is never in it. Filled by one thread, then only read.
class DataFormats
{
public:
    /// A text that is there already is ignored, and so is the empty one. When it throws (memory), the set is as before.
    /// All texts together have less than 2^32 characters: they come from one file.
    void add(std::wstring_view text);
    bool contains(std::wstring_view text) const noexcept;
    /// Empties and gives the memory back.
    void clear() noexcept;

private:
    /// A place of the open-addressed table, whose size is a power of two and which is never full. A free one has no
    /// length.
    struct Slot
    {
        std::uint32_t m_nHash = 0;
        std::uint32_t m_nStart = 0;
        std::uint32_t m_nLength = 0;
    };

    static std::uint32_t hashOf(std::wstring_view text) noexcept;
    std::size_t placeOf(std::wstring_view text, std::uint32_t hash) const noexcept;
    void makeRoom();

    std::vector<Slot> m_vSlots;
    std::vector<wchar_t> m_vCharacters;
    std::size_t m_nTexts = 0;
};

}  // namespace vel::i18n_details
