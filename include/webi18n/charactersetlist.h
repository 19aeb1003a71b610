#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/handle.h"
#include "vel/core/string.h"
#include "webi18n/charactersetdefinition.h"

namespace vel {

/// Whether a response can announce a character set under the label as it stands: a token as HTTP has it, so that
/// nothing in it ends the header, or the line. A list may have other labels: who writes a header asks.
///
///     "utf-8" -> true    "a b" -> false    "utf-8\r\nSet-Cookie: x" -> false    "" -> false
inline bool isEncodingLabel(std::wstring_view text) noexcept
{
    constexpr std::wstring_view kAllowed =
        L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789!#$%&'*+-.^_`|~";
    return !text.empty() && text.find_first_not_of(kAllowed) == text.npos;
}

/// An ordered choice of character sets. Each entry pairs the encoding label, which is what a response announces, with
/// the definition. A plain holder, filled by one thread and then shared by Handle<const CharacterSetList> and only
/// read, from any thread.
///
/// Labels compare without regard to case, and of several equal ones the first is found:
///
///     entries ABC, abc   findDefinitionByEncodingLabel("Abc") -> the definition of ABC
///     no entries         findDefinitionByEncodingLabel("")    -> null
class WEBI18N_API CharacterSetList : public RefCounted
{
public:
    /// Encoding label and definition.
    using DefinitionList = std::vector<std::pair<String, Handle<const CharacterSetDefinition>>>;
    using const_definition_iterator = DefinitionList::const_iterator;

    /// Empty, not minimized.
    CharacterSetList();
    ~CharacterSetList() override;

    /// Appends; equal labels are kept. A null handle is reported as "!hCharacterSetDefinition.isNull()", an empty label
    /// as "!sLabel.empty()"; when the handler returns, the entry is appended all the same, and those who look at the
    /// definition of such a null entry get InvalidHandleException. Strong: when memory runs out nothing is changed.
    void addDefinition(const String& sLabel, const Handle<const CharacterSetDefinition>& hCharacterSetDefinition);

    /// The entries in the order added; valid until the list changes.
    const_definition_iterator definitions_begin() const noexcept  // NOLINT(readability-identifier-naming)
    {
        return m_tLabelCharsetMap.begin();
    }
    const_definition_iterator definitions_end() const noexcept  // NOLINT(readability-identifier-naming)
    {
        return m_tLabelCharsetMap.end();
    }
    std::uint32_t numDefinitions() const noexcept { return static_cast<std::uint32_t>(m_tLabelCharsetMap.size()); }
    /// Replaces what `tDefinitions` holds by the entries; the definitions are shared, not copied.
    void getDefinitions(DefinitionList& tDefinitions) const;

    /// Whether each definition is minimized and has an implementation. A statement of who built it: nothing here
    /// verifies it.
    bool isMinimized() const noexcept { return m_bMinimized; }
    void setMinimized(bool bMinimized) noexcept { m_bMinimized = bMinimized; }

    /// The definition of the first entry with that encoding label; a null handle when there is none.
    Handle<const CharacterSetDefinition> findDefinitionByEncodingLabel(const String& sEncodingLabel) const;
    /// The definition of the first entry whose definition has that label, and the entry's encoding label; without one a
    /// null handle and an empty text. Throws InvalidHandleException at an entry with a null handle.
    Handle<const CharacterSetDefinition> findDefinitionByDefinitionLabel(const String& sCharacterSetDefinitionLabel,
                                                                         String& sEncodingLabel) const;

private:
    DefinitionList m_tLabelCharsetMap;
    bool m_bMinimized = false;
};

}  // namespace vel
