#pragma once

#include <cstddef>

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
    /// `file` stands for the file in errors; it must outlive the reader.
    CharacterSetListsReader(const CharacterSetResolver& resolver, const String& file) noexcept
        : m_tResolver(resolver), m_sFile(file)
    {}

    /// The lists below the root that have an entry, minimized; those whose name is there already too, if they come
    /// first in this file. Throws XmlException when they would have too many entries.
    CharacterSetResolver::ListMap read(const XmlElement& root);

private:
    void readList(const XmlElement& element);
    void addChild(const XmlElement& child, CharacterSetList& list);
    void addDefinitionOf(const XmlElement& child, const String& name, CharacterSetList& list) const;
    void addEntriesOf(const String& name, CharacterSetList& list) const;
    const CharacterSetList* findList(const String& name) const;
    void countEntries(const XmlElement& element, const CharacterSetList& list);

    const CharacterSetResolver& m_tResolver;
    const String& m_sFile;
    std::size_t m_nEntries = 0;
    CharacterSetResolver::ListMap m_tAdded;
};

}  // namespace vel::i18n_details
