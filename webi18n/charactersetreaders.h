#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "vel/core/string.h"
#include "vel/xml/xmlelement.h"
#include "webi18n/charactersetresolver.h"

namespace vel::i18n_details {

/// Reads the definitions of one file beside those that a resolver has already.
class CharacterSetDefinitionsReader
{
public:
    explicit CharacterSetDefinitionsReader(const CharacterSetResolver& resolver) noexcept : m_tResolver(resolver) {}

    /// The definitions below the root that have an implementation and are not there yet, minimized.
    CharacterSetResolver::DefinitionMap read(const XmlElement& root);

private:
    void readDefinition(const XmlElement& element);
    bool isKnown(const String& name) const;

    const CharacterSetResolver& m_tResolver;
    CharacterSetResolver::DefinitionMap m_tAdded;
};

/// Reads the lists of one file beside those that a resolver has already.
class CharacterSetListsReader
{
public:
    explicit CharacterSetListsReader(const CharacterSetResolver& resolver) noexcept : m_tResolver(resolver) {}

    /// The lists below the root that have an entry, minimized; those whose name is there already too, if they come
    /// first in this file. One with which there would be too many entries is skipped.
    CharacterSetResolver::ListMap read(const XmlElement& root);

private:
    using Inclusions = std::vector<NonOwningPtr<const XmlElement>>;

    void readList(const XmlElement& element);
    void addDefinitionOf(const XmlElement& child, CharacterSetList& list) const;
    bool hasRoomFor(const CharacterSetList& own, const Inclusions& inclusions);
    std::size_t knownWeightOf(const CharacterSetList& list);
    void addEntriesOf(const XmlElement& child, CharacterSetList& list) const;
    const CharacterSetList* findList(const String& name) const;

    const CharacterSetResolver& m_tResolver;
    std::size_t m_nWeight = 0;  // of all lists so far
    std::map<const CharacterSetList*, std::size_t> m_tWeights;
    CharacterSetResolver::ListMap m_tAdded;
};

}  // namespace vel::i18n_details
