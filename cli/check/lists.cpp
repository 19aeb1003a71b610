#include "check/lists.h"

#include <map>
#include <optional>
#include <string>

#include "text.h"

namespace cli {

namespace {

using vel::XmlElement;

constexpr const wchar_t* ksSupported = L"supported";

bool isSupportedList(const XmlElement& element)
{
    return element.name() == L"localeList" && element.attribute(L"name") == ksSupported;
}

/// The entries seen so far with their places.
using Seen = std::map<std::wstring_view, const XmlElement*, vel::NoCaseCompareLess>;

std::optional<Problem> checkEntry(const XmlElement& entry, const Knowledge& knowledge, Seen& seen)
{
    const std::wstring_view name = entry.attribute(L"name");
    if (entry.name() != L"localeDefinition") {
        return Problem{kWarning, "skipped-element",
                       "<" + visibleText(entry.name()) + "> is skipped: a list holds <localeDefinition> elements"};
    }
    if (name.empty()) {
        return Problem{kWarning, "entry-without-name", "an entry without a name is skipped: name a definition"};
    }
    if (const auto [before, isNew] = seen.emplace(name, &entry); !isNew) {
        return Problem{kMinorWarning, "duplicate-entry",
                       quotedName(name) + " stands in line " + std::to_string(before->second->line()) +
                           " already: keep one of them"};
    }
    if (knowledge.knowsDefinitions() && !knowledge.isDefined(name)) {
        return Problem{kWarning, "unknown-definition",
                       "there is no definition " + quotedName(name) + " to be allowed: correct the name or add it"};
    }
    return std::nullopt;
}

Problem noSupportedList(const XmlElement& root)
{
    for (const XmlElement& list : vel::children(root)) {
        if (list.name() == L"localeList" && vel::compareNoCase(list.attribute(L"name"), ksSupported) == 0) {
            return {kWarning, "no-supported-list",
                    "the list " + quotedName(list.attribute(L"name")) + " is not read: write its name as 'supported'"};
        }
    }
    return {kWarning, "no-supported-list",
            "no list is named 'supported', so this file allows no locale: name the list of allowed locales so"};
}

}  // namespace

void checkLists(const XmlElement& root, const Knowledge& knowledge, Findings& findings)
{
    bool hasSupported = false;
    Seen seen;
    for (const XmlElement& list : vel::children(root)) {
        if (list.name() != L"localeList") {
            findings.add(list, {kWarning, "skipped-element",
                                "<" + visibleText(list.name()) + "> is skipped: here stand <localeList> elements"});
        }
        if (!isSupportedList(list)) {
            continue;
        }
        hasSupported = true;
        for (const XmlElement& entry : vel::children(list)) {
            if (auto problem = checkEntry(entry, knowledge, seen)) {
                findings.add(entry, std::move(*problem));
            }
        }
    }
    if (!hasSupported) {
        findings.add(root, noSupportedList(root));
    }
}

NameSet supportedNames(const XmlElement& root, const Knowledge& knowledge)
{
    NameSet names;
    for (const XmlElement& list : vel::children(root)) {
        if (!isSupportedList(list)) {
            continue;
        }
        for (const XmlElement& entry : vel::children(list)) {
            const std::wstring_view name = entry.attribute(L"name");
            if (entry.name() == L"localeDefinition" && knowledge.isDefined(name)) {
                names.insert(vel::String(name));
            }
        }
    }
    return names;
}

}  // namespace cli
