#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "logcapture.h"
#include "memoryfile.h"
#include "printers.h"
#include "vel/xml/xmlexception.h"
#include "webi18n/charactersetresolver.h"

// Definitions and lists, as objects and as XML text, and what was read from them.
namespace testsupport {

/// A name that no transcoding library knows.
inline const vel::String kUnknown = L"no-such-transcoder";

inline vel::Handle<vel::CharacterSetDefinition> definitionOf(const vel::String& label,
                                                             const std::vector<vel::String>& implementations)
{
    const auto definition = vel::makeHandle<vel::CharacterSetDefinition>(label);
    for (const vel::String& each : implementations) {
        definition->addImplementationName(each);
    }
    return definition;
}

/// "label -> names in order", behind it a star when it is minimized.
inline vel::String outline(const vel::CharacterSetDefinition& definition)
{
    vel::String text = definition.getDefinitionLabel() + L" ->";
    for (const vel::String& each : definition.getImplementationNames()) {
        text.append(L" ").append(each);
    }
    return text.append(definition.isMinimized() ? L"*" : L"");
}

/// "label=definition" for each entry, behind them a star when the list is minimized.
inline vel::String outline(const vel::CharacterSetList& list)
{
    vel::String text;
    for (auto each = list.definitions_begin(); each != list.definitions_end(); ++each) {
        text.append(text.isEmpty() ? L"" : L" ").append(each->first).append(L"=");
        text.append(each->second.isNull() ? vel::String(L"null") : each->second->getDefinitionLabel());
    }
    return text.append(list.isMinimized() ? L"*" : L"");
}

/// "label by transcoder".
inline vel::String outline(const vel::CharacterSet& set)
{
    return set.getLabel() + L" by " + set.getTranscoding().getName();
}

/// Everything that a resolver holds, so that two states of it can be compared.
inline vel::String outline(const vel::CharacterSetResolver& resolver)
{
    vel::String text;
    for (const auto& [label, definition] : resolver.getCharacterSetDefinitions()) {
        text.append(label).append(L": ").append(outline(*definition)).append(L"\n");
    }
    for (const auto& [name, list] : resolver.getCharacterSetLists()) {
        text.append(name).append(L": ").append(outline(*list)).append(L"\n");
    }
    return text;
}

inline std::string setElement(const std::string& name, const std::vector<std::string>& implementations)
{
    std::string element = "<characterSet name=\"" + name + "\">";
    for (const std::string& each : implementations) {
        element += "<impl>" + each + "</impl>";
    }
    return element + "</characterSet>";
}

inline std::string listElement(const std::string& name, const std::string& children)
{
    return "<characterSetList name=\"" + name + "\">" + children + "</characterSetList>";
}

/// A reference to a definition in a list.
inline std::string entry(const std::string& name, const std::string& attributes = "")
{
    return "<characterSet name=\"" + name + "\" " + attributes + "/>";
}

/// A reference to a list in a list.
inline std::string including(const std::string& name)
{
    return "<characterSetList name=\"" + name + "\"/>";
}

inline std::string rooted(const std::string& elements)
{
    return "<root>" + elements + "</root>";
}

/// The definitions a (utf-8), b (iso-8859-1, unknown) and c (unknown, koi8-r).
inline const std::string kThreeSets = setElement("a", {"utf-8"}) +
                                      setElement("b", {"iso-8859-1", "no-such-transcoder"}) +
                                      setElement("c", {"no-such-transcoder", "koi8-r"});

inline void loadDefinitions(vel::CharacterSetResolver& resolver, const std::string& elements)
{
    const MemoryFile file;
    resolver.loadCharacterSetDefinitions(file.write(rooted(elements)));
}

inline void loadLists(vel::CharacterSetResolver& resolver, const std::string& elements)
{
    const MemoryFile file;
    resolver.loadCharacterSetLists(file.write(rooted(elements)));
}

/// A resolver with kThreeSets and these lists.
inline vel::Handle<vel::CharacterSetResolver> resolverWith(const std::string& lists)
{
    const auto resolver = vel::makeHandle<vel::CharacterSetResolver>();
    loadDefinitions(*resolver, kThreeSets);
    loadLists(*resolver, lists);
    return resolver;
}

/// The outline of a list that must be there.
inline vel::String listIn(const vel::CharacterSetResolver& resolver, const vel::String& name)
{
    const auto found = resolver.getCharacterSetLists().find(name);
    return found == resolver.getCharacterSetLists().end() ? vel::String(L"no list") : outline(*found->second);
}

/// The text of what the work throws as an invalid handle; empty when it throws nothing.
template <typename Work>
std::string invalidHandleOf(Work work)
{
    try {
        work();
        return {};
    } catch (const vel::InvalidHandleException& exception) {
        return exception.what();
    }
}

inline const char* const kNullDefinition = "Invalid handle: vel::CharacterSetDefinition const*";

}  // namespace testsupport
