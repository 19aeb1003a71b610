#include "charactersetentries.h"

#include <algorithm>

namespace vel::i18n_details {

/// Folding maps one character to one, so texts of different lengths never fold to the same.
bool isSameLabel(const String& a, const String& b) noexcept
{
    return a.length() == b.length() && (a == b || a.equalsNoCase(b.view()));
}

CharacterSetList::const_definition_iterator findEntry(const CharacterSetList& list, const String& definitionLabel)
{
    return std::find_if(list.definitions_begin(), list.definitions_end(), [&](const auto& entry) {
        return isSameLabel(entry.second->getDefinitionLabel(), definitionLabel);
    });
}

CharacterSetList::const_definition_iterator findEntry(const CharacterSetList& list,
                                                      const CharacterSetDefinition& definition)
{
    return std::find_if(list.definitions_begin(), list.definitions_end(), [&](const auto& entry) {
        return entry.second.get() == &definition ||
               isSameLabel(entry.second->getDefinitionLabel(), definition.getDefinitionLabel());
    });
}

}  // namespace vel::i18n_details
