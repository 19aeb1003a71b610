#include "webi18n/charactersetlist.h"

#include <algorithm>

#include "vel/core/assertion.h"

namespace vel {

namespace {

/// Folding maps one character to one, so texts of different lengths never fold to the same.
bool isSameLabel(const String& a, const String& b) noexcept
{
    return a.length() == b.length() && (a == b || a.equalsNoCase(b.view()));
}

}  // namespace

CharacterSetList::CharacterSetList() = default;
CharacterSetList::~CharacterSetList() = default;

void CharacterSetList::addDefinition(const String& sLabel,
                                     const Handle<const CharacterSetDefinition>& hCharacterSetDefinition)
{
    VEL_ASSERT(!hCharacterSetDefinition.isNull());
    VEL_ASSERT_TEXT(!sLabel.isEmpty(), "!sLabel.empty()");
    m_tLabelCharsetMap.emplace_back(sLabel, hCharacterSetDefinition);
}

void CharacterSetList::getDefinitions(DefinitionList& tDefinitions) const
{
    tDefinitions = m_tLabelCharsetMap;
}

Handle<const CharacterSetDefinition> CharacterSetList::findDefinitionByEncodingLabel(const String& sEncodingLabel) const
{
    for (const auto& [label, definition] : m_tLabelCharsetMap) {
        if (isSameLabel(label, sEncodingLabel)) {
            return definition;
        }
    }
    return {};
}

CharacterSetList::const_definition_iterator CharacterSetList::findEntryByDefinitionLabel(
    const String& sCharacterSetDefinitionLabel) const
{
    return std::find_if(m_tLabelCharsetMap.begin(), m_tLabelCharsetMap.end(), [&](const auto& entry) {
        return isSameLabel(entry.second->getDefinitionLabel(), sCharacterSetDefinitionLabel);
    });
}

CharacterSetList::const_definition_iterator CharacterSetList::findEntryLike(
    const CharacterSetDefinition& rDefinition) const
{
    return std::find_if(m_tLabelCharsetMap.begin(), m_tLabelCharsetMap.end(), [&](const auto& entry) {
        return entry.second.get() == &rDefinition ||
               isSameLabel(entry.second->getDefinitionLabel(), rDefinition.getDefinitionLabel());
    });
}

Handle<const CharacterSetDefinition> CharacterSetList::findDefinitionByDefinitionLabel(
    const String& sCharacterSetDefinitionLabel, String& sEncodingLabel) const
{
    const const_definition_iterator entry = findEntryByDefinitionLabel(sCharacterSetDefinitionLabel);
    if (entry == definitions_end()) {
        sEncodingLabel.clear();
        return {};
    }
    sEncodingLabel = entry->first;
    return entry->second;
}

}  // namespace vel
