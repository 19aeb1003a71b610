#pragma once

#include "webi18n/charactersetlist.h"

namespace vel::i18n_details {

/// Whether two labels are the same but for letter case.
bool isSameLabel(const String& a, const String& b) noexcept;

/// The first entry of the list whose definition has that label, or the list's end. Throws InvalidHandleException at an
/// entry with a null handle.
CharacterSetList::const_definition_iterator findEntry(const CharacterSetList& list, const String& definitionLabel);
/// The same for the label of a definition, which often is an entry's own.
CharacterSetList::const_definition_iterator findEntry(const CharacterSetList& list,
                                                      const CharacterSetDefinition& definition);

}  // namespace vel::i18n_details
