#include "webi18n/charactersetlist.h"

#include "charactersetentries.h"
#include "vel/core/assertion.h"

namespace vel {

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
        if (i18n_details::isSameLabel(label, sEncodingLabel)) {
            return definition;
        }
    }
    return {};
}

Handle<const CharacterSetDefinition> CharacterSetList::findDefinitionByDefinitionLabel(
    const String& sCharacterSetDefinitionLabel, String& sEncodingLabel) const
{
    const const_definition_iterator entry = i18n_details::findEntry(*this, sCharacterSetDefinitionLabel);
    if (entry == definitions_end()) {
        sEncodingLabel.clear();
        return {};
    }
    sEncodingLabel = entry->first;
    return entry->second;
}

}  // namespace vel
