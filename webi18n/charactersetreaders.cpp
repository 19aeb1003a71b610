#include "charactersetreaders.h"

#include <algorithm>

#include "vel/core/message.h"
#include "vel/core/staticinit.h"
#include "vel/log/logger.h"
#include "vel/xml/xmlpath.h"

namespace vel::i18n_details {

namespace {

VEL_INIT_TABLES const StaticValue<XmlPath> ksCharacterSetXPath([] { return XmlPath(L"characterSet"); });
VEL_INIT_TABLES const StaticValue<XmlPath> ksCharacterSetImplXPath([] { return XmlPath(L"impl"); });
VEL_INIT_TABLES const StaticValue<XmlPath> ksCharacterSetListXPath([] { return XmlPath(L"characterSetList"); });
constexpr const wchar_t* ksName = L"name";

VEL_INIT_TABLES const StaticValue<Message> s_klogWarningNoNameAttr([] {
    return Message::text(L"'name' attribute missing on element: <velm:param insert=\"1\"/>");
});
VEL_INIT_TABLES const StaticValue<Message> s_klogWarningDuplicateFound([] {
    return Message::text(L"Duplicate character set definition: <velm:param insert=\"1\"/>");
});
VEL_INIT_TABLES const StaticValue<Message> s_klogWarningNoImplementationName([] {
    return Message::text(L"No implementation given on element: <velm:param insert=\"1\"/>");
});
VEL_INIT_TABLES const StaticValue<Message> s_klogNoSuchDefinition([] {
    return Message::text(L"No matching character set definition found: <velm:param insert=\"1\"/>.");
});
VEL_INIT_TABLES const StaticValue<Message> s_klogNoSuchList([] {
    return Message::text(L"No matching character set list found: <velm:param insert=\"1\"/>.");
});

VEL_INIT_TABLES const StaticValue<Message> s_klogControlsInLabel([] {
    return Message::text(L"Encoding label with control characters, entry skipped: <velm:param insert=\"1\"/>");
});
VEL_INIT_TABLES const StaticValue<Message> s_klogTooManyEntries([] {
    return Message::text(
        L"More than 1,000,000 entries in the character set lists of a file, list skipped: "
        L"<velm:param insert=\"1\"/>");
});

/// As how many entries those of the list count.
std::size_t weightOf(const CharacterSetList& list)
{
    std::size_t weight = 0;
    for (auto each = list.definitions_begin(); each != list.definitions_end(); ++each) {
        weight += CharacterSetResolver::weightOfEntry(each->first.view());
    }
    return weight;
}

/// An element as it is logged: no more of it is written out than a record takes.
String loggedText(const XmlElement& element)
{
    return element.toXmlText(Logger::kLongestInsert + 1);
}

/// The name that the element must have; empty, and logged, when it has none.
String requiredName(const XmlElement& element)
{
    String name(element.attribute(ksName));
    if (name.isEmpty()) {
        VEL_LOG(kLogWarning, Message(s_klogWarningNoNameAttr).insert(1, loggedText(element)));
    }
    return name;
}

/// What a label must not have: hosts write it into responses, where a line break begins another header.
bool isControl(wchar_t character) noexcept
{
    return character < 0x20 || (character >= 0x7F && character <= 0x9F) || character == 0x2028 || character == 0x2029;
}

/// A definition as it is written.
Handle<const CharacterSetDefinition> definitionOf(const XmlElement& element, const String& name)
{
    const Handle<CharacterSetDefinition> definition = makeHandle<CharacterSetDefinition>(name);
    for (const NonOwningPtr<const XmlElement>& each : element.select(ksCharacterSetImplXPath)) {
        const String implementation = each->innerText();
        if (implementation.isEmpty()) {
            VEL_LOG(kLogWarning, Message(s_klogWarningNoImplementationName).insert(1, loggedText(element)));
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
    for (const NonOwningPtr<const XmlElement>& child : element.select(ksCharacterSetXPath)) {
        addDefinitionOf(*child, *list);
    }
    const Inclusions inclusions = element.select(ksCharacterSetListXPath);
    if (!hasRoomFor(*list, inclusions)) {
        VEL_LOG(kLogWarning, Message(s_klogTooManyEntries).insert(1, name));
        return;
    }
    for (const NonOwningPtr<const XmlElement>& child : inclusions) {
        addEntriesOf(*child, *list);
    }
    m_nWeight += weightOf(*list);
    const Handle<const CharacterSetList> minimized = m_tResolver.minimizeCharacterSetList(*list);
    if (minimized->numDefinitions() != 0) {
        m_tAdded.try_emplace(name, minimized);
    }
}

/// Asked before anything is copied: a few lists that include one another twice, and again, would fill any memory.
bool CharacterSetListsReader::hasRoomFor(const CharacterSetList& own, const Inclusions& inclusions)
{
    std::size_t weight = m_nWeight + weightOf(own);
    for (const NonOwningPtr<const XmlElement>& child : inclusions) {
        const CharacterSetList* const other = findList(String(child->attribute(ksName)));
        weight += other == nullptr ? 0 : knownWeightOf(*other);
    }
    return weight <= CharacterSetResolver::kMostListEntries;
}

/// The same for a list that stays as it is, which is counted once however often it is included.
std::size_t CharacterSetListsReader::knownWeightOf(const CharacterSetList& list)
{
    const auto [known, isNew] = m_tWeights.try_emplace(&list, 0);
    if (isNew) {
        known->second = weightOf(list);
    }
    return known->second;
}

void CharacterSetListsReader::addDefinitionOf(const XmlElement& child, CharacterSetList& list) const
{
    const String name = requiredName(child);
    if (name.isEmpty()) {
        return;
    }
    const Handle<const CharacterSetDefinition> definition = m_tResolver.getCharacterSetDefinition(name);
    if (definition.isNull()) {
        VEL_LOG(kLogMinorWarning, Message(s_klogNoSuchDefinition).insert(1, name));
        return;
    }
    const std::wstring_view own = child.attribute(L"label");
    const String label = own.empty() ? name : String(own);
    if (std::any_of(label.view().begin(), label.view().end(), isControl)) {
        VEL_LOG(kLogWarning, Message(s_klogControlsInLabel).insert(1, loggedText(child)));
        return;
    }
    list.addDefinition(label, definition);
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

void CharacterSetListsReader::addEntriesOf(const XmlElement& child, CharacterSetList& list) const
{
    const String name = requiredName(child);
    if (name.isEmpty()) {
        return;
    }
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
