// A definitions file and a lists file from outside: whatever their bytes, they load or are refused, the resolver holds
// only what can be encoded, and a choice between any two lists is what the plain rule says.
//
// The input is the two files, a line "====" between them.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "../tests/support/memoryfile.h"
#include "require.h"
#include "vel/xml/xmldocument.h"
#include "webi18n/charactersetresolver.h"

namespace {

using fuzzing::require;
using vel::CharacterSet;
using vel::CharacterSetDefinition;
using vel::CharacterSetList;
using vel::CharacterSetResolver;
using vel::Handle;
using vel::String;
using Entries = CharacterSetList::DefinitionList;

/// Lists that are compared with each other, and entries of each: the choice between all of them would take too long.
constexpr std::size_t kMostLists = 8;
constexpr std::size_t kMostEntries = 64;
/// Entries of all lists together. A few lists that double have as many as the resolver takes, which takes it longer
/// under the sanitizers than an input may; that limit has its test elsewhere.
constexpr std::size_t kMostEntriesInAll = 20000;

template <typename Load>
void loadOrRefuse(CharacterSetResolver& resolver, std::string_view bytes, Load load)
{
    static const testsupport::MemoryFile kFile;
    const std::size_t definitions = resolver.getCharacterSetDefinitions().size();
    const std::size_t lists = resolver.getCharacterSetLists().size();
    try {
        (resolver.*load)(kFile.write(bytes));
    } catch (const vel::XmlException&) {
        require(resolver.getCharacterSetDefinitions().size() == definitions);
        require(resolver.getCharacterSetLists().size() == lists);
    }
}

/// Not less than the entries that the lists of a document have, counted without making them.
std::size_t entriesOf(const vel::XmlElement& root)
{
    std::map<std::wstring_view, std::size_t, vel::NoCaseCompareLess> entries;
    std::size_t all = 0;
    for (const vel::XmlElement& list : vel::children(root)) {
        std::size_t own = 0;
        for (const vel::XmlElement& child : vel::children(list)) {
            const auto other = entries.find(child.attribute(L"name"));
            own += child.name() == L"characterSet" ? 1 : other == entries.end() ? 0 : other->second;
        }
        all += own;
        std::size_t& known = entries[list.attribute(L"name")];
        known = std::max(known, own);
        if (all > kMostEntriesInAll) {
            return all;
        }
    }
    return all;
}

bool hasFewEntries(std::string_view bytes)
{
    try {
        return entriesOf(vel::XmlDocument::parse(bytes).root()) <= kMostEntriesInAll;
    } catch (const vel::XmlException&) {
        return true;
    }
}

void checkDefinition(const CharacterSetDefinition& definition)
{
    require(definition.isMinimized() && definition.numImplementations() != 0);
    require(!definition.getDefinitionLabel().isEmpty());
    for (const String& name : definition.getImplementationNames()) {
        require(vel::UniversalTranscoding::isTranscodingAvailable(name));
    }
}

void checkHoldings(const CharacterSetResolver& resolver)
{
    for (const auto& [label, definition] : resolver.getCharacterSetDefinitions()) {
        require(label == definition->getDefinitionLabel());
        require(resolver.getCharacterSetDefinition(label) == definition);
        checkDefinition(*definition);
    }
    for (const auto& [name, list] : resolver.getCharacterSetLists()) {
        require(list->isMinimized() && list->numDefinitions() != 0);
        require(resolver.getCharacterSetList(name) == list);
        for (auto each = list->definitions_begin(); each != list->definitions_end(); ++each) {
            require(!each->first.isEmpty());
            require(each->first.view().find_first_of(L"\r\n") == std::wstring_view::npos);
            require(resolver.getCharacterSetDefinition(each->second->getDefinitionLabel()) == each->second);
        }
    }
}

/// The entry that the rule takes, found by looking at everything.
const Entries::value_type& chosenSlowly(const Entries& supported, const Entries& preferred)
{
    for (const auto& wanted : preferred) {
        for (const auto& entry : supported) {
            if (vel::compareNoCase(entry.second->getDefinitionLabel().view(),
                                   wanted.second->getDefinitionLabel().view()) == 0) {
                return entry;
            }
        }
    }
    return supported.front();
}

void checkChoice(const CharacterSetResolver& resolver, const CharacterSetList& supported,
                 const CharacterSetList& preferred)
{
    Entries supportedEntries;
    Entries preferredEntries;
    supported.getDefinitions(supportedEntries);
    preferred.getDefinitions(preferredEntries);
    const Entries::value_type& expected = chosenSlowly(supportedEntries, preferredEntries);
    const Handle<CharacterSet> chosen = resolver.getPreferredCharacterSet(supported, preferred);
    require(chosen->getLabel() == expected.first);
    require(chosen->getTranscoding().getName() == expected.second->getImplementationNames().front());
    const Handle<CharacterSet> named = resolver.getCharacterSetByEncodingLabel(supported, expected.first);
    require(named->getLabel() == expected.first);
}

void checkChoices(const CharacterSetResolver& resolver)
{
    std::vector<const CharacterSetList*> lists;
    for (const auto& [name, list] : resolver.getCharacterSetLists()) {
        if (list->numDefinitions() <= kMostEntries && lists.size() < kMostLists) {
            lists.push_back(list.get());
        }
    }
    for (const CharacterSetList* supported : lists) {
        for (const CharacterSetList* preferred : lists) {
            checkChoice(resolver, *supported, *preferred);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::string_view kSeparator = "\n====\n";
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t end = bytes.find(kSeparator);
    const std::string_view lists = end == std::string_view::npos ? bytes : bytes.substr(end + kSeparator.size());
    if (!hasFewEntries(lists)) {
        return 0;
    }
    const Handle<CharacterSetResolver> resolver = vel::makeHandle<CharacterSetResolver>();
    loadOrRefuse(*resolver, bytes.substr(0, end), &CharacterSetResolver::loadCharacterSetDefinitions);
    loadOrRefuse(*resolver, lists, &CharacterSetResolver::loadCharacterSetLists);
    checkHoldings(*resolver);
    checkChoices(*resolver);
    const std::size_t definitions = resolver->getCharacterSetDefinitions().size();
    loadOrRefuse(*resolver, bytes.substr(0, end), &CharacterSetResolver::loadCharacterSetDefinitions);
    require(resolver->getCharacterSetDefinitions().size() == definitions);
    return 0;
}
