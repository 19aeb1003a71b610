#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "sortcontexts.h"
#include "sortelements.h"

namespace vel::nls {

/// The characters and strings that a table is made of, each with its elements.
class SortStrings
{
public:
    /// Throws std::bad_alloc. `rules` learns the order of scripts.
    SortStrings(const UCollator* collator, ElementRules& rules);

    const std::vector<char32_t>& characters() const noexcept { return m_tCharacters; }
    const SortContexts& contexts() const noexcept { return m_tContexts; }

    std::span<const Element> ofCharacter(std::size_t i) const { return of(i); }
    std::span<const Element> ofContraction(std::size_t i) const { return of(m_tCharacters.size() + i); }
    /// The elements of the whole string, those of the prefix first.
    std::span<const Element> ofPrefixed(std::size_t i) const
    {
        return of(m_tCharacters.size() + m_tContexts.m_tContractions.size() + i);
    }
    const std::vector<Element>& all() const noexcept { return m_tElements; }
    bool hasQuaternaries() const noexcept { return m_bQuaternaries; }

private:
    std::span<const Element> of(std::size_t i) const
    {
        return {m_tElements.data() + m_tEnds[i], m_tEnds[i + 1] - m_tEnds[i]};
    }
    std::u16string textOf(std::size_t i) const;
    void chooseCharacters(const USet* tailored);
    std::vector<RawElement> readAll(const UCollator* collator);
    void sampleLeads(const UCollator* collator, const std::vector<RawElement>& raw, ElementRules& rules) const;
    void addQuaternaries(const UCollator* collator, const USet* tailored);
    void addQuaternaries(const UCollator* unshifted, std::size_t i);

    std::vector<char32_t> m_tCharacters;
    SortContexts m_tContexts;
    std::vector<Element> m_tElements;
    /// Where the elements of each string end; the first one is 0.
    std::vector<std::uint32_t> m_tEnds;
    bool m_bQuaternaries = false;
};

bool isHan(char32_t c) noexcept;

}  // namespace vel::nls
