#include "webi18n/charactersetresolver.h"

#include <iterator>

#include "charactersetentries.h"
#include "charactersetreaders.h"
#include "vel/core/assertion.h"
#include "vel/core/message.h"
#include "vel/core/staticinit.h"
#include "vel/log/logger.h"
#include "vel/xml/xmldocument.h"

namespace vel {

namespace {

// A registered name; no operation makes it current.
[[maybe_unused]] constexpr LogSource klsCharsetResolver(L"vel.i18n.charsetResolver");
constexpr LogSource klsCharsetResolverLoad(L"vel.i18n.charsetResolver.defsLoad");
constexpr LogSource klsCharsetResolverLoadLists(L"vel.i18n.charsetResolver.listsLoad");
constexpr const wchar_t* kPropertyDefsFile = L"defsFile";
constexpr const wchar_t* kPropertyListsFile = L"listsFile";

VEL_INIT_TABLES const StaticValue<Message> s_klogLoadingDefFile([] {
    return Message::text(L"Loading character set definitions file <velm:param insert=\"1\"/>.");
});
VEL_INIT_TABLES const StaticValue<Message> s_klogLoadingListsFile([] {
    return Message::text(L"Loading character set lists file <velm:param insert=\"1\"/>.");
});

Handle<const CharacterSetDefinition> minimized(const Handle<const CharacterSetDefinition>& definition,
                                               const CharacterSetResolver& resolver)
{
    return definition->isMinimized() ? definition : resolver.minimizeCharacterSetDefinition(*definition);
}

Handle<const CharacterSetList> minimized(const Handle<const CharacterSetList>& list,
                                         const CharacterSetResolver& resolver)
{
    return list->isMinimized() ? list : resolver.minimizeCharacterSetList(*list);
}

}  // namespace

CharacterSetResolver::CharacterSetResolver() = default;
CharacterSetResolver::~CharacterSetResolver() = default;

void CharacterSetResolver::loadCharacterSetDefinitions(const FilePath& sDefinitionsXmlFile)
{
    const String& path = sDefinitionsXmlFile.toString();
    const ScopedLogSource source(klsCharsetResolverLoad);
    VEL_LOG(kLogInformation, Message(s_klogLoadingDefFile).insert(1, path));
    const ScopedLogProperty file(kPropertyDefsFile, path.view());
    const XmlDocument document = XmlDocument::load(sDefinitionsXmlFile);
    DefinitionMap added = i18n_details::CharacterSetDefinitionsReader(*this).read(document.root());
    // Moves the nodes: it needs no memory, so that a load happens whole or not at all.
    m_tDefinitionLabelMap.merge(added);
}

void CharacterSetResolver::loadCharacterSetLists(const FilePath& sListsXmlFile)
{
    const String& path = sListsXmlFile.toString();
    const ScopedLogSource source(klsCharsetResolverLoadLists);
    VEL_LOG(kLogInformation, Message(s_klogLoadingListsFile).insert(1, path));
    const ScopedLogProperty file(kPropertyListsFile, path.view());
    const XmlDocument document = XmlDocument::load(sListsXmlFile);
    ListMap added = i18n_details::CharacterSetListsReader(*this).read(document.root());
    m_tMappingMap.merge(added);
}

void CharacterSetResolver::addCharacterSetDefinition(const Handle<const CharacterSetDefinition>& hDefinition)
{
    VEL_ASSERT(m_tDefinitionLabelMap.find(hDefinition->getDefinitionLabel()) == m_tDefinitionLabelMap.end());
    const Handle<const CharacterSetDefinition> definition = minimized(hDefinition, *this);
    if (definition->numImplementations() != 0) {
        m_tDefinitionLabelMap.insert_or_assign(definition->getDefinitionLabel(), definition);
    }
}

void CharacterSetResolver::addCharacterSetList(const String& sMappingLabel,
                                               const Handle<const CharacterSetList>& hMapping)
{
    const Handle<const CharacterSetList> list = minimized(hMapping, *this);
    if (list->numDefinitions() != 0) {
        m_tMappingMap.try_emplace(sMappingLabel, list);
    }
}

Handle<const CharacterSetDefinition> CharacterSetResolver::minimizeCharacterSetDefinition(
    const CharacterSetDefinition& rCharacterSetDefinition) const
{
    if (rCharacterSetDefinition.isMinimized()) {
        return makeHandle<CharacterSetDefinition>(rCharacterSetDefinition);
    }
    const Handle<CharacterSetDefinition> result =
        makeHandle<CharacterSetDefinition>(rCharacterSetDefinition.getDefinitionLabel());
    result->setMinimized(true);
    for (const String& name : rCharacterSetDefinition.getImplementationNames()) {
        if (UniversalTranscoding::isTranscodingAvailable(name)) {
            result->addImplementationName(name);
        }
    }
    return result;
}

Handle<const CharacterSetList> CharacterSetResolver::minimizeCharacterSetList(
    const CharacterSetList& rCharacterSetList) const
{
    if (rCharacterSetList.isMinimized()) {
        return makeHandle<CharacterSetList>(rCharacterSetList);
    }
    CharacterSetList::DefinitionList entries;
    rCharacterSetList.getDefinitions(entries);
    const Handle<CharacterSetList> result = makeHandle<CharacterSetList>();
    result->setMinimized(true);
    for (const auto& [label, each] : entries) {
        const Handle<const CharacterSetDefinition> definition = minimized(each, *this);
        if (definition->numImplementations() != 0) {
            result->addDefinition(label, definition);
        }
    }
    return result;
}

Handle<const CharacterSetDefinition> CharacterSetResolver::getCharacterSetDefinition(const String& sLabel) const
{
    const auto found = m_tDefinitionLabelMap.find(sLabel);
    return found == m_tDefinitionLabelMap.end() ? Handle<const CharacterSetDefinition>() : found->second;
}

Handle<const CharacterSetList> CharacterSetResolver::getCharacterSetList(const String& sLabel) const
{
    const auto mmi = m_tMappingMap.find(sLabel);
    VEL_ASSERT(!(mmi == m_tMappingMap.end()));
    return mmi == m_tMappingMap.end() ? Handle<const CharacterSetList>() : mmi->second;
}

Handle<CharacterSet> CharacterSetResolver::getPreferredCharacterSet(const CharacterSetList& rSupportedList,
                                                                    const CharacterSetList& rPreferredList) const
{
    CharacterSetList::const_definition_iterator sdfi = rSupportedList.definitions_end();
    for (auto preferred = rPreferredList.definitions_begin();
         preferred != rPreferredList.definitions_end() && sdfi == rSupportedList.definitions_end(); ++preferred) {
        sdfi = i18n_details::findEntry(rSupportedList, *preferred->second);
    }
    if (sdfi == rSupportedList.definitions_end()) {
        // Nothing in common: the server's own first choice, not the client's.
        sdfi = rSupportedList.definitions_begin();
    }
    VEL_ASSERT(sdfi != rSupportedList.definitions_end());
    if (sdfi == rSupportedList.definitions_end()) {
        return {};
    }
    return createCharacterSet(sdfi->first, *sdfi->second);
}

Handle<CharacterSet> CharacterSetResolver::getCharacterSetByEncodingLabel(const CharacterSetList& rMapping,
                                                                          const String& sEncodingLabel) const
{
    // An unknown label is a fault of the caller's, told by the exception of the null handle.
    return createCharacterSet(sEncodingLabel, *rMapping.findDefinitionByEncodingLabel(sEncodingLabel));
}

Handle<CharacterSet> CharacterSetResolver::createCharacterSet(const String& sEncodingLabel,
                                                              const CharacterSetDefinition& rDefinition) const
{
    for (const String& name : rDefinition.getImplementationNames()) {
        if (rDefinition.isMinimized() || UniversalTranscoding::isTranscodingAvailable(name)) {
            return makeHandle<CharacterSet>(sEncodingLabel, name);
        }
    }
    VEL_FAIL("false");
    return {};
}

}  // namespace vel
