#include "charactersetreaders.h"

#include <vector>

#include "vel/core/message.h"
#include "vel/core/staticinit.h"
#include "vel/log/logger.h"
#include "vel/xml/xmlexception.h"
#include "vel/xml/xmlpath.h"

namespace vel::i18n_details {

namespace {

VEL_INIT_TABLES const XmlPath ksCharacterSetXPath(L"characterSet");
VEL_INIT_TABLES const XmlPath ksCharacterSetImplXPath(L"impl");
VEL_INIT_TABLES const XmlPath ksCharacterSetListXPath(L"characterSetList");
constexpr std::wstring_view ksCharacterSetList = L"characterSetList";

VEL_INIT_TABLES const Message s_klogWarningNoNameAttr =
    Message::text(L"'name' attribute missing on element: <velm:param insert=\"1\"/>");
VEL_INIT_TABLES const Message s_klogWarningDuplicateFound =
    Message::text(L"Duplicate character set definition: <velm:param insert=\"1\"/>");
VEL_INIT_TABLES const Message s_klogWarningNoImplementationName =
    Message::text(L"No implementation given on element: <velm:param insert=\"1\"/>");
VEL_INIT_TABLES const Message s_klogNoSuchDefinition =
    Message::text(L"No matching character set definition found: <velm:param insert=\"1\"/>.");
VEL_INIT_TABLES const Message s_klogNoSuchList =
    Message::text(L"No matching character set list found: <velm:param insert=\"1\"/>.");

/// Entries that the lists of one file may have in all.
constexpr std::size_t kMaxEntries = 1000000;

/// The name that the element must have; empty, and logged, when it has none.
String requiredName(const XmlElement& element)
{
    String name(element.attribute(L"name"));
    if (name.isEmpty()) {
        VEL_LOG(kLogWarning, Message(s_klogWarningNoNameAttr).insert(1, element.toXmlText()));
    }
    return name;
}

/// A definition as it is written.
Handle<const CharacterSetDefinition> definitionOf(const XmlElement& element, const String& name)
{
    const Handle<CharacterSetDefinition> definition = makeHandle<CharacterSetDefinition>(name);
    for (const NonOwningPtr<const XmlElement>& each : element.select(ksCharacterSetImplXPath)) {
        const String implementation = each->innerText();
        if (implementation.isEmpty()) {
            VEL_LOG(kLogWarning, Message(s_klogWarningNoImplementationName).insert(1, element.toXmlText()));
        } else {
            definition->addImplementationName(implementation);
        }
    }
    return definition;
}

}  // namespace

CharacterSetResolver::DefinitionMap CharacterSetDefinitionsReader::read(const XmlElement& root)
{
    for (const NonOwningPtr<const XmlElement>& each : root.select(ksCharacterSetXPath)) {
        readDefinition(*each);
    }
    return std::move(m_tAdded);
}

void CharacterSetDefinitionsReader::readDefinition(const XmlElement& element)
{
    const String name = requiredName(element);
    if (name.isEmpty()) {
        return;
    }
    if (isKnown(name)) {
        VEL_LOG(kLogWarning, Message(s_klogWarningDuplicateFound).insert(1, name));
        return;
    }
    const Handle<const CharacterSetDefinition> definition =
        m_tResolver.minimizeCharacterSetDefinition(*definitionOf(element, name));
    // One that cannot be encoded is dropped without a word; a later one of its name is no duplicate then.
    if (definition->numImplementations() != 0) {
        m_tAdded.emplace(name, definition);
    }
}

bool CharacterSetDefinitionsReader::isKnown(const String& name) const
{
    return m_tAdded.count(name) != 0 || m_tResolver.getCharacterSetDefinitions().count(name) != 0;
}

CharacterSetResolver::ListMap CharacterSetListsReader::read(const XmlElement& root)
{
    for (const NonOwningPtr<const XmlElement>& each : root.select(ksCharacterSetListXPath)) {
        readList(*each);
    }
    return std::move(m_tAdded);
}

void CharacterSetListsReader::readList(const XmlElement& element)
{
    const String name = requiredName(element);
    if (name.isEmpty()) {
        return;
    }
    const Handle<CharacterSetList> list = makeHandle<CharacterSetList>();
    // A list's own character sets come before those of other lists, wherever they stand; deliberate.
    for (const XmlPath* path : {&ksCharacterSetXPath, &ksCharacterSetListXPath}) {
        for (const NonOwningPtr<const XmlElement>& child : element.select(*path)) {
            addChild(*child, *list);
            countEntries(*child, *list);
        }
    }
    m_nEntries += list->numDefinitions();
    const Handle<const CharacterSetList> minimized = m_tResolver.minimizeCharacterSetList(*list);
    if (minimized->numDefinitions() != 0) {
        m_tAdded.try_emplace(name, minimized);
    }
}

void CharacterSetListsReader::countEntries(const XmlElement& element, const CharacterSetList& list)
{
    if (m_nEntries + list.numDefinitions() > kMaxEntries) {
        throw XmlException(m_sFile, element.line(), element.column(),
                           L"The character set lists have more than 1,000,000 entries in all: let fewer lists include "
                           L"other ones.");
    }
}

void CharacterSetListsReader::addChild(const XmlElement& child, CharacterSetList& list)
{
    const String name = requiredName(child);
    if (name.isEmpty()) {
        return;
    }
    if (child.name() == ksCharacterSetList) {
        addEntriesOf(name, list);
    } else {
        addDefinitionOf(child, name, list);
    }
}

void CharacterSetListsReader::addDefinitionOf(const XmlElement& child, const String& name, CharacterSetList& list) const
{
    const Handle<const CharacterSetDefinition> definition = m_tResolver.getCharacterSetDefinition(name);
    if (definition.isNull()) {
        VEL_LOG(kLogMinorWarning, Message(s_klogNoSuchDefinition).insert(1, name));
        return;
    }
    const std::wstring_view label = child.attribute(L"label");
    list.addDefinition(label.empty() ? name : String(label), definition);
}

/// The list of that name as it is there for the elements that follow: the first one.
const CharacterSetList* CharacterSetListsReader::findList(const String& name) const
{
    for (const CharacterSetResolver::ListMap* map : {&m_tResolver.getCharacterSetLists(), &std::as_const(m_tAdded)}) {
        if (const auto found = map->find(name); found != map->end()) {
            return found->second.get();
        }
    }
    return nullptr;
}

void CharacterSetListsReader::addEntriesOf(const String& name, CharacterSetList& list) const
{
    const CharacterSetList* const other = findList(name);
    if (other == nullptr) {
        VEL_LOG(kLogWarning, Message(s_klogNoSuchList).insert(1, name));
        return;
    }
    for (auto each = other->definitions_begin(); each != other->definitions_end(); ++each) {
        list.addDefinition(each->first, each->second);
    }
}

}  // namespace vel::i18n_details
