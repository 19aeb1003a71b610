#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "vel/core/autobuffer.h"
#include "vel/core/handle.h"
#include "vel/core/stringbuffer.h"

namespace vel::i18n_details {

/// An immutable list of texts in one piece of memory, which copies share: what thousands of definitions are made of.
/// Copies may live on different threads.
class SharedTexts
{
public:
    /// No texts; needs no memory.
    SharedTexts() noexcept = default;
    /// A list of one text.
    explicit SharedTexts(std::wstring_view text);

    bool isEmpty() const noexcept { return m_hBlock.isNull(); }
    std::size_t size() const noexcept { return m_hBlock.isNull() ? 0 : m_hBlock.get()->m_nTexts; }
    /// `index` below size(). Valid while a copy of the list lives.
    std::wstring_view operator[](std::size_t index) const noexcept
    {
        const Block& block = *m_hBlock.get();
        const std::uint32_t start = index == 0 ? 0 : block.ends()[index - 1];
        return {block.characters() + start, block.ends()[index] - start};
    }
    /// The first text; the empty text of an empty list.
    std::wstring_view front() const noexcept { return isEmpty() ? std::wstring_view() : (*this)[0]; }

private:
    friend class SharedTextsBuilder;

    /// Followed by the ends of the texts and then by their characters.
    struct Block final : RefCounted
    {
        explicit Block(std::uint32_t texts) noexcept : m_nTexts(texts) {}
        static void operator delete(void* memory) noexcept { ::operator delete(memory); }

        std::uint32_t* ends() noexcept { return reinterpret_cast<std::uint32_t*>(this + 1); }
        const std::uint32_t* ends() const noexcept { return reinterpret_cast<const std::uint32_t*>(this + 1); }
        const wchar_t* characters() const noexcept { return reinterpret_cast<const wchar_t*>(ends() + m_nTexts); }

        std::uint32_t m_nTexts;
    };

    SharedTexts(const std::uint32_t* ends, std::size_t texts, std::wstring_view characters);

    Handle<const Block> m_hBlock;
};

/// Collects the texts of a list.
class SharedTextsBuilder
{
public:
    void add(std::wstring_view text)
    {
        if (m_nTexts == m_aEnds.capacity()) {
            m_aEnds.ensureCapacity(m_nTexts * 2);
        }
        m_tCharacters.append(text);
        m_aEnds[m_nTexts++] = static_cast<std::uint32_t>(m_tCharacters.length());
    }
    SharedTexts build() const { return {m_aEnds.data(), m_nTexts, m_tCharacters.view()}; }

private:
    StringBuffer<511> m_tCharacters;
    AutoBuffer<std::uint32_t, 32> m_aEnds;
    std::size_t m_nTexts = 0;
};

}  // namespace vel::i18n_details
