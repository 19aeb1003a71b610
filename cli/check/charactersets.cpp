#include "check/charactersets.h"

#include <map>
#include <string>

#include "check/webencodings.h"
#include "text.h"
#include "vel/transcoding/universaltranscoding.h"

namespace cli {

namespace {

using vel::String;
using vel::UniversalTranscoding;
using vel::XmlElement;

/// The converter that an available implementation leads to.
String converterOf(const String& implementation)
{
    return UniversalTranscoding(implementation).getCanonicalName();
}

class CharacterSetsCheck
{
public:
    CharacterSetsCheck(const XmlElement& root, Knowledge& knowledge, Findings& findings)
        : m_tRoot(root), m_tKnowledge(knowledge), m_tFindings(findings)
    {}

    void run();

private:
    void checkOne(const XmlElement& set);
    String checkImplementations(const XmlElement& set);
    String checkImplementation(const XmlElement& implementation, NameSet& seen);
    void checkLabel(const XmlElement& set, const String& implementation);

    const XmlElement& m_tRoot;
    Knowledge& m_tKnowledge;
    Findings& m_tFindings;
};

void CharacterSetsCheck::run()
{
    for (const XmlElement& child : vel::children(m_tRoot)) {
        if (child.name() == L"characterSet") {
            checkOne(child);
        } else {
            m_tFindings.add(
                child, {kWarning, "skipped-element",
                        "<" + visibleText(child.name()) + "> is skipped: here stand <characterSet> " + "elements"});
        }
    }
}

void CharacterSetsCheck::checkOne(const XmlElement& set)
{
    const std::wstring_view name = set.attribute(L"name");
    if (name.empty()) {
        m_tFindings.add(set, {kWarning, "charset-without-name",
                              "a character set without a name is skipped: write its label as name"});
        return;
    }
    if (m_tKnowledge.m_tCharacterSets.count(name) != 0) {
        m_tFindings.add(set, {kWarning, "duplicate-charset",
                              "the character set " + quotedName(name) +
                                  " is there already, so this one is skipped: " + "keep one of them"});
        return;
    }
    const String implementation = checkImplementations(set);
    if (implementation.isEmpty()) {
        m_tFindings.add(set, {kWarning, "charset-without-implementation",
                              "the character set " + quotedName(name) + " has no implementation that exists, so it " +
                                  "is dropped without a message: name one in <impl>"});
        return;
    }
    m_tKnowledge.m_tCharacterSets.emplace(name, converterOf(implementation));
    checkLabel(set, implementation);
}

/// The implementation that is used: the first one that exists; empty when none does.
String CharacterSetsCheck::checkImplementations(const XmlElement& set)
{
    String used;
    NameSet seen;
    for (const XmlElement& child : vel::children(set)) {
        if (child.name() != L"impl") {
            m_tFindings.add(
                child, {kWarning, "skipped-element",
                        "<" + visibleText(child.name()) + "> is skipped: a character set holds <impl> " + "elements"});
        } else if (const String name = checkImplementation(child, seen); used.isEmpty()) {
            used = name;
        }
    }
    return used;
}

/// Its name; empty when it is not used.
String CharacterSetsCheck::checkImplementation(const XmlElement& implementation, NameSet& seen)
{
    String name = implementation.innerText();
    if (name.isEmpty()) {
        m_tFindings.add(implementation, {kWarning, "empty-implementation",
                                         "an empty implementation is skipped: write a transcoder's name"});
        return {};
    }
    if (!UniversalTranscoding::isTranscodingAvailable(name)) {
        const bool isBlank = UniversalTranscoding::isTranscodingAvailable(name.trimmed());
        m_tFindings.add(implementation, {kWarning, "unknown-implementation",
                                         "there is no transcoder " + quotedName(name) + ", so it is skipped: " +
                                             (isBlank ? "leave out the white space around it" : "correct the name")});
        return {};
    }
    if (!seen.insert(name).second) {
        m_tFindings.add(implementation, {kMinorWarning, "duplicate-implementation",
                                         "the implementation " + quotedName(name) + " stands here already: keep one"});
    }
    return name;
}

/// Nothing when text in this converter's bytes is read as it is meant under the label.
std::optional<Problem> judgeOnTheWeb(const std::wstring_view label, const String& converter)
{
    const WebEncoding* const web = webEncodingOf(label);
    if (web == nullptr || web->m_vConverters.empty()) {
        return web == nullptr || web->m_sName != "replacement"
                   ? std::nullopt
                   : std::optional(Problem{kWarning, "label-refused-by-browsers",
                                           "browsers show nothing of a response with the label " + quotedName(label) +
                                               ": use another character set"});
    }
    for (const std::string_view each : web->m_vConverters) {
        if (utf8Text(converter) == each) {
            return std::nullopt;
        }
    }
    return Problem{kWarning, "not-as-on-the-web",
                   "browsers read the label " + quotedName(label) + " as " + std::string(web->m_sName) + ", which " +
                       quotedName(converter) + " encodes otherwise: name " + std::string(web->m_vConverters.front())};
}

Problem unregisteredLabel(std::wstring_view label)
{
    return {kMinorWarning, "unregistered-label",
            "the label " + quotedName(label) + " is neither one that browsers know nor registered with IANA, so " +
                "readers may not understand it: write a registered one"};
}

void CharacterSetsCheck::checkLabel(const XmlElement& set, const String& implementation)
{
    const std::wstring_view label = set.attribute(L"name");
    if (!isRegisteredLabel(label)) {
        m_tFindings.add(set, unregisteredLabel(label));
    } else if (auto problem = judgeOnTheWeb(label, converterOf(implementation))) {
        m_tFindings.add(set, std::move(*problem));
    }
}

class CharacterSetListsCheck
{
public:
    CharacterSetListsCheck(const XmlElement& root, Knowledge& knowledge, Findings& findings)
        : m_tRoot(root), m_tKnowledge(knowledge), m_tFindings(findings)
    {}

    void run();

private:
    void findLists();
    void checkList(const XmlElement& list);
    bool checkName(const XmlElement& list);
    bool checkEntry(const XmlElement& entry, NameSet& labels);
    void checkEncodingLabel(const XmlElement& entry, const String& converter);
    bool checkInclusion(const XmlElement& inclusion, const XmlElement& list);
    bool knowsCharacterSets() const
    {
        return m_tKnowledge.m_bAllCharacterSetsRead && !m_tKnowledge.m_tCharacterSets.empty();
    }

    const XmlElement& m_tRoot;
    Knowledge& m_tKnowledge;
    Findings& m_tFindings;
    std::map<std::wstring_view, const XmlElement*, vel::NoCaseCompareLess> m_tLists;  // all of the file
};

void CharacterSetListsCheck::run()
{
    findLists();
    for (const XmlElement& child : vel::children(m_tRoot)) {
        if (child.name() == L"characterSetList") {
            checkList(child);
        } else {
            m_tFindings.add(
                child, {kWarning, "skipped-element",
                        "<" + visibleText(child.name()) + "> is skipped: here stand <characterSetList> " + "elements"});
        }
    }
}

void CharacterSetListsCheck::findLists()
{
    for (const XmlElement& child : vel::children(m_tRoot)) {
        if (child.name() == L"characterSetList") {
            m_tLists.emplace(child.attribute(L"name"), &child);
        }
    }
}

void CharacterSetListsCheck::checkList(const XmlElement& list)
{
    if (!checkName(list)) {
        return;
    }
    std::size_t entries = 0;
    bool isAfterInclusion = false;
    NameSet labels;
    for (const XmlElement& child : vel::children(list)) {
        if (child.name() == L"characterSetList") {
            entries += checkInclusion(child, list) ? 1 : 0;
            isAfterInclusion = true;
            continue;
        }
        entries += checkEntry(child, labels) ? 1 : 0;
        if (isAfterInclusion && child.name() == L"characterSet") {
            m_tFindings.add(child, {kMinorWarning, "entry-after-list",
                                    "a list's own character sets come before those of other lists wherever they " +
                                        std::string("stand: write this one in front of them")});
        }
    }
    const std::wstring_view name = list.attribute(L"name");
    if (entries == 0) {
        m_tFindings.add(list, {kWarning, "empty-list",
                               "the list " + quotedName(name) + " has no entry, so there is no such list: add one"});
        return;
    }
    m_tKnowledge.m_tCharacterSetLists.emplace(name);
}

/// Whether the loader takes the list. Of one name it takes the first that has an entry.
bool CharacterSetListsCheck::checkName(const XmlElement& list)
{
    const std::wstring_view name = list.attribute(L"name");
    if (name.empty()) {
        m_tFindings.add(list, {kWarning, "list-without-name", "a list without a name is skipped: name it"});
        return false;
    }
    if (m_tKnowledge.m_tCharacterSetLists.count(name) != 0) {
        m_tFindings.add(list, {kWarning, "duplicate-list",
                               "the list " + quotedName(name) + " is there already, so this one is dropped: keep one " +
                                   "of them"});
        return false;
    }
    return true;
}

/// Whether the list gains an entry by it.
bool CharacterSetListsCheck::checkEntry(const XmlElement& entry, NameSet& labels)
{
    const String name(entry.attribute(L"name"));
    if (entry.name() != L"characterSet") {
        m_tFindings.add(entry, {kWarning, "skipped-element",
                                "<" + visibleText(entry.name()) + "> is skipped: a list holds <characterSet> and " +
                                    "<characterSetList> elements"});
        return false;
    }
    if (name.isEmpty()) {
        m_tFindings.add(entry,
                        {kWarning, "entry-without-name", "an entry without a name is skipped: name a character set"});
        return false;
    }
    const auto definition = m_tKnowledge.m_tCharacterSets.find(name);
    if (definition == m_tKnowledge.m_tCharacterSets.end()) {
        if (knowsCharacterSets()) {
            m_tFindings.add(entry, {kWarning, "unknown-charset",
                                    "there is no character set " + quotedName(name) +
                                        ", so the entry is skipped: " + "correct the name or define it"});
        }
        return !knowsCharacterSets();
    }
    checkEncodingLabel(entry, definition->second);
    const String label(entry.attribute(L"label"));
    if (!labels.insert(label.isEmpty() ? name : label).second) {
        m_tFindings.add(entry, {kMinorWarning, "duplicate-entry",
                                "the label " + quotedName(label.isEmpty() ? name : label) + " stands in this list " +
                                    "already, so this entry is not found by it: keep one of them"});
    }
    return true;
}

/// The label of the entry's own; where it has none, the definition's is judged there.
void CharacterSetListsCheck::checkEncodingLabel(const XmlElement& entry, const String& converter)
{
    const std::wstring_view label = entry.attribute(L"label");
    if (label.empty()) {
        return;
    }
    if (!isRegisteredLabel(label)) {
        m_tFindings.add(entry, unregisteredLabel(label));
    } else if (auto problem = judgeOnTheWeb(label, converter)) {
        m_tFindings.add(entry, std::move(*problem));
    }
}

/// Whether the list gains entries by it.
bool CharacterSetListsCheck::checkInclusion(const XmlElement& inclusion, const XmlElement& list)
{
    const std::wstring_view name = inclusion.attribute(L"name");
    if (name.empty()) {
        m_tFindings.add(inclusion, {kWarning, "entry-without-name", "an entry without a name is skipped: name a list"});
        return false;
    }
    if (m_tKnowledge.m_tCharacterSetLists.count(name) != 0) {
        return true;
    }
    const auto found = m_tLists.find(name);
    const bool isLater = found != m_tLists.end() && found->second->line() > inclusion.line();
    const std::string problem = vel::compareNoCase(name, list.attribute(L"name")) == 0 ? "is this list itself"
                                : isLater                                              ? "stands further down"
                                                                                       : "is not there";
    m_tFindings.add(inclusion, {kWarning, isLater ? "later-list" : "unknown-list",
                                "the list " + quotedName(name) + " " + problem +
                                    ", so nothing is taken from it: " + (isLater ? "move it up" : "correct the name")});
    return !m_tKnowledge.m_bAllCharacterSetListsRead;
}

}  // namespace

void checkCharacterSets(const XmlElement& root, Knowledge& knowledge, Findings& findings)
{
    CharacterSetsCheck(root, knowledge, findings).run();
}

void checkCharacterSetLists(const XmlElement& root, Knowledge& knowledge, Findings& findings)
{
    CharacterSetListsCheck(root, knowledge, findings).run();
}

}  // namespace cli
