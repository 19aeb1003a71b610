#include "vel/core/textnumbers.h"

#include <algorithm>

namespace vel {

std::uint32_t TextNumbers::find(std::wstring_view text, std::uint32_t hash) const noexcept
{
    const Text* const found = m_tIndex.find(hash, [&](const Text& each) {
        return std::wstring_view(m_vCharacters.data() + each.m_nStart, each.m_nLength) == text;
    });
    return found == nullptr ? kNone : found->m_nNumber;
}

std::uint32_t TextNumbers::add(std::wstring_view text)
{
    const std::uint32_t hash = hashText(text);
    if (const std::uint32_t known = find(text, hash); known != kNone) {
        return known;
    }
    const Text added{static_cast<std::uint32_t>(size()), static_cast<std::uint32_t>(m_vCharacters.size()),
                     static_cast<std::uint32_t>(text.size())};
    m_tIndex.reserve(size() + 1);
    m_vCharacters.insert(m_vCharacters.end(), text.begin(), text.end());
    m_tIndex.add(hash, added);
    return added.m_nNumber;
}

void TextNumbers::reserve(std::size_t moreTexts, std::size_t moreCharacters)
{
    m_tIndex.reserve(size() + moreTexts);
    // At least doubled, so that many small reservations stay cheap.
    const std::size_t characters = m_vCharacters.size() + moreCharacters;
    if (characters > m_vCharacters.capacity()) {
        m_vCharacters.reserve(std::max(characters, 2 * m_vCharacters.capacity()));
    }
}

void TextNumbers::clear() noexcept
{
    m_tIndex.clear();
    std::vector<wchar_t>().swap(m_vCharacters);
}

}  // namespace vel
