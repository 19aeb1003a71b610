#include "check/charactersets.h"

#include <map>
#include <string>

#include "check/webencodings.h"
#include "text.h"
#include "vel/transcoding/universaltranscoding.h"
#include "webi18n/charactersetresolver.h"

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
    std::size_t checkChildren(const XmlElement& list);
    std::size_t checkEntry(const XmlElement& entry, NameSet& labels);
    void checkEncodingLabel(const XmlElement& entry, const String& label, const String& converter);
    std::size_t checkInclusion(const XmlElement& inclusion, const XmlElement& list);
    bool knowsCharacterSets() const
    {
        return m_tKnowledge.m_bAllCharacterSetsRead && !m_tKnowledge.m_tCharacterSets.empty();
    }

    const XmlElement& m_tRoot;
    Knowledge& m_tKnowledge;
    Findings& m_tFindings;
    std::map<std::wstring_view, const XmlElement*, vel::NoCaseCompareLess> m_tLists;  // all of the file
    std::size_t m_nEntries = 0;                                                       // of those that are taken
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
    const std::size_t entries = checkChildren(list);
    const std::wstring_view name = list.attribute(L"name");
    if (entries == 0) {
        m_tFindings.add(list, {kWarning, "empty-list",
                               "the list " + quotedName(name) + " has no entry, so there is no such list: add one"});
    } else if (m_nEntries + entries > vel::CharacterSetResolver::kMostListEntries) {
        m_tFindings.add(list, {kWarning, "too-many-entries",
                               "with the list " + quotedName(name) + " this file's would have more than " +
                                   std::to_string(vel::CharacterSetResolver::kMostListEntries) +
                                   " entries, so it is skipped: let it include fewer lists"});
    } else {
        m_nEntries += entries;
        m_tKnowledge.m_tCharacterSetLists.emplace(name, entries);
    }
}

/// As how many entries those count that the list gains.
std::size_t CharacterSetListsCheck::checkChildren(const XmlElement& list)
{
    std::size_t entries = 0;
    bool isAfterInclusion = false;
    NameSet labels;
    for (const XmlElement& child : vel::children(list)) {
        if (child.name() == L"characterSetList") {
            entries += checkInclusion(child, list);
            isAfterInclusion = true;
            continue;
        }
        entries += checkEntry(child, labels);
        if (isAfterInclusion && child.name() == L"characterSet") {
            m_tFindings.add(child, {kMinorWarning, "entry-after-list",
                                    "a list's own character sets come before those of other lists wherever they " +
                                        std::string("stand: write this one in front of them")});
        }
    }
    return entries;
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

/// As how many entries it counts; 0 when the list gains none by it.
std::size_t CharacterSetListsCheck::checkEntry(const XmlElement& entry, NameSet& labels)
{
    const String name(entry.attribute(L"name"));
    if (entry.name() != L"characterSet") {
        m_tFindings.add(entry, {kWarning, "skipped-element",
                                "<" + visibleText(entry.name()) + "> is skipped: a list holds <characterSet> and " +
                                    "<characterSetList> elements"});
        return 0;
    }
    if (name.isEmpty()) {
        m_tFindings.add(entry,
                        {kWarning, "entry-without-name", "an entry without a name is skipped: name a character set"});
        return 0;
    }
    const auto definition = m_tKnowledge.m_tCharacterSets.find(name);
    if (definition == m_tKnowledge.m_tCharacterSets.end()) {
        if (knowsCharacterSets()) {
            m_tFindings.add(entry, {kWarning, "unknown-charset",
                                    "there is no character set " + quotedName(name) +
                                        ", so the entry is skipped: " + "correct the name or define it"});
        }
        return knowsCharacterSets() ? 0 : 1;
    }
    const std::wstring_view own = entry.attribute(L"label");
    const String label = own.empty() ? name : String(own);
    checkEncodingLabel(entry, label, definition->second);
    if (!labels.insert(label).second) {
        m_tFindings.add(entry, {kMinorWarning, "duplicate-entry",
                                "the label " + quotedName(label) + " stands in this list " +
                                    "already, so this entry is not found by it: keep one of them"});
    }
    return vel::CharacterSetResolver::weightOfEntry(label.view());
}

/// What readers make of a label is judged here for one of the entry's own; for the definition's, where that stands.
void CharacterSetListsCheck::checkEncodingLabel(const XmlElement& entry, const String& label, const String& converter)
{
    if (!vel::isEncodingLabel(label.view())) {
        m_tFindings.add(entry, {kWarning, "label-not-a-token",
                                "no response can announce the label " + quotedName(label) +
                                    ": write ASCII letters, digits, '-', '_' and '.' only"});
        return;
    }
    if (entry.attribute(L"label").empty()) {
        return;
    }
    if (!isRegisteredLabel(label)) {
        m_tFindings.add(entry, unregisteredLabel(label));
    } else if (auto problem = judgeOnTheWeb(label, converter)) {
        m_tFindings.add(entry, std::move(*problem));
    }
}

/// As how many entries those count that the list gains by it.
std::size_t CharacterSetListsCheck::checkInclusion(const XmlElement& inclusion, const XmlElement& list)
{
    const std::wstring_view name = inclusion.attribute(L"name");
    if (name.empty()) {
        m_tFindings.add(inclusion, {kWarning, "entry-without-name", "an entry without a name is skipped: name a list"});
        return 0;
    }
    if (const auto known = m_tKnowledge.m_tCharacterSetLists.find(name);
        known != m_tKnowledge.m_tCharacterSetLists.end()) {
        return known->second;
    }
    const auto found = m_tLists.find(name);
    const bool isLater = found != m_tLists.end() && found->second->line() > inclusion.line();
    const std::string problem = vel::compareNoCase(name, list.attribute(L"name")) == 0 ? "is this list itself"
                                : isLater                                              ? "stands further down"
                                                                                       : "is not there";
    m_tFindings.add(inclusion, {kWarning, isLater ? "later-list" : "unknown-list",
                                "the list " + quotedName(name) + " " + problem +
                                    ", so nothing is taken from it: " + (isLater ? "move it up" : "correct the name")});
    return m_tKnowledge.m_bAllCharacterSetListsRead ? 0 : 1;
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
