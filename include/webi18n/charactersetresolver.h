#pragma once

#include <cstddef>
#include <map>
#include <string_view>

#include "vel/core/api.h"
#include "vel/core/filepath.h"
#include "vel/core/handle.h"
#include "vel/core/nocasecompare.h"
#include "vel/core/string.h"
#include "webi18n/characterset.h"
#include "webi18n/charactersetdefinition.h"
#include "webi18n/charactersetlist.h"

namespace vel {

/// Knows the character sets and their lists, as two files define them, and chooses the one of a response.
///
///     <characterSets>
///       <characterSet name="iso-8859-1"><impl>windows-1252</impl><impl>ibm-5348_P100-1997</impl></characterSet>
///     </characterSets>
///
///     <characterSetLists>
///       <characterSetList name="western">
///         <characterSet name="utf-8"/><characterSet name="iso-8859-1" label="latin1"/>
///       </characterSetList>
///       <characterSetList name="locale:de-de"><characterSetList name="western"/></characterSetList>
///     </characterSetLists>
///
/// "impl" is the name of a transcoder, the preferred one first. Names of definitions and lists compare without regard
/// to case. What the transcoding library cannot encode is left out: a definition without an implementation and a list
/// without an entry do not exist. A list's own character sets stand before those it takes from other lists, wherever
/// its children stand. Bad elements are logged and skipped, never fatal; an empty "name" counts as none.
///
/// Loaded by one thread, definitions before lists, then only read, from any thread and without locks.
class WEBI18N_API CharacterSetResolver : public RefCounted
{
public:
    using DefinitionMap = std::map<String, Handle<const CharacterSetDefinition>, NoCaseCompareLess>;
    using ListMap = std::map<String, Handle<const CharacterSetList>, NoCaseCompareLess>;

    /// Entries that the lists of one file may have in all.
    static constexpr std::size_t kMostListEntries = 1000000;
    /// As how many of them one counts with that label, which is copied with it: once more for every 100 characters.
    static constexpr std::size_t weightOfEntry(std::wstring_view label) noexcept { return 1 + label.size() / 100; }

    /// Knows nothing.
    CharacterSetResolver();
    ~CharacterSetResolver() override;

    /// Adds the definitions of a file to those that are there; of equal names the first stays. Throws XmlException for
    /// a file that cannot be read. Whatever it throws, the resolver is unchanged.
    void loadCharacterSetDefinitions(const FilePath& sDefinitionsXmlFile);
    /// Adds the lists of a file to those that are there; of equal names the first stays. A list takes in those that
    /// were there before it. An entry whose label has control characters, such as line breaks, is logged and skipped.
    /// So is a list with which the file's would have more than kMostListEntries: a few lists that include one another
    /// twice would fill any memory. Throws XmlException for a file that cannot be read. Whatever it throws, the
    /// resolver is unchanged.
    void loadCharacterSetLists(const FilePath& sListsXmlFile);

    /// Adds a definition, minimized, unless that leaves no implementation. One of that label that is there already is
    /// reported as an assertion and, when the handler returns, replaced. InvalidHandleException for a null handle.
    void addCharacterSetDefinition(const Handle<const CharacterSetDefinition>& hDefinition);
    /// Adds a list, minimized, unless that leaves no entry or there is one of that name, which stays.
    /// InvalidHandleException for a null handle.
    void addCharacterSetList(const String& sMappingLabel, const Handle<const CharacterSetList>& hMapping);

    /// A new definition with those implementations that the transcoding library has; it may have none. One that is
    /// minimized already is copied as it is.
    Handle<const CharacterSetDefinition> minimizeCharacterSetDefinition(
        const CharacterSetDefinition& rCharacterSetDefinition) const;
    /// A new list with those entries whose definitions have an implementation; it may have none. One that is minimized
    /// already is copied as it is.
    Handle<const CharacterSetList> minimizeCharacterSetList(const CharacterSetList& rCharacterSetList) const;

    /// Every definition by its label.
    const DefinitionMap& getCharacterSetDefinitions() const noexcept { return m_tDefinitionLabelMap; }
    /// Every list by its name.
    const ListMap& getCharacterSetLists() const noexcept { return m_tMappingMap; }
    /// A null handle when there is none.
    Handle<const CharacterSetDefinition> getCharacterSetDefinition(const String& sLabel) const;
    /// A name that is not there is reported as an assertion; when the handler returns, the handle is null. Look the
    /// name up in getCharacterSetLists() when it comes from outside.
    Handle<const CharacterSetList> getCharacterSetList(const String& sLabel) const;

    /// The character set of a response: the first entry of the preferred list that the supported list has too, by
    /// definition label; without one the supported list's first entry. Label and definition are always the supported
    /// list's. An empty supported list is reported as an assertion; when the handler returns, the handle is null.
    ///
    ///     supported A (label a1), B (label b1); preferred B (label b2), A -> label b1, transcoder of B
    ///     supported A (label a1), B (label b1); preferred C               -> label a1, transcoder of A
    Handle<CharacterSet> getPreferredCharacterSet(const CharacterSetList& rSupportedList,
                                                  const CharacterSetList& rPreferredList) const;
    /// The character set of the first entry with that encoding label, under the label as the caller spells it.
    /// InvalidHandleException when there is none.
    Handle<CharacterSet> getCharacterSetByEncodingLabel(const CharacterSetList& rMapping,
                                                        const String& sEncodingLabel) const;
    /// The character set of the definition's first available implementation. A definition without one is reported as an
    /// assertion; when the handler returns, the handle is null.
    Handle<CharacterSet> createCharacterSet(const String& sEncodingLabel,
                                            const CharacterSetDefinition& rDefinition) const;

private:
    DefinitionMap m_tDefinitionLabelMap;
    ListMap m_tMappingMap;
};

}  // namespace vel
