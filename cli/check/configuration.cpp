#include "check/configuration.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "session.h"
#include "text.h"

namespace cli {

namespace {

using vel::String;
using vel::XmlElement;

/// An element that waits for being read, with the key of the element above it and a slash at its end.
struct Pending
{
    const XmlElement* m_pElement;
    String m_sPrefix;
};

/// The elements that hold values, by key; calls `again` for one whose key is there already.
template <typename Again>
std::map<String, const XmlElement*> readKeys(const XmlElement& root, Again again)
{
    std::map<String, const XmlElement*> keys;
    std::vector<Pending> pending = {{root.firstChild(), String()}};
    while (!pending.empty()) {
        const XmlElement* element = pending.back().m_pElement;
        if (element == nullptr) {
            pending.pop_back();
            continue;
        }
        pending.back().m_pElement = element->nextSibling();
        const String key = pending.back().m_sPrefix + element->name();
        if (element->firstChild() != nullptr) {
            pending.push_back({element->firstChild(), key + L"/"});
        } else if (const auto [before, isNew] = keys.emplace(key, element); !isNew) {
            again(*element, key, *before->second);
        }
    }
    return keys;
}

std::optional<Problem> checkKey(const String& key)
{
    static const std::vector<String> kKnown = {ksAllowedLocalesFile, ksAllowedLocales, ksAllowedLanguages};
    for (const String& known : kKnown) {
        if (key == known) {
            return std::nullopt;
        }
    }
    return Problem{kInformation, "unknown-key",
                   "the key " + quotedName(key) + " is not one of this library; " +
                       suggestion(key, kKnown, "it is of no effect here")};
}

std::optional<Problem> checkListsFile(const String& value, const vel::FilePath& file)
{
    std::error_code fault;
    const vel::FilePath lists = file.folder().join(vel::FilePath(value));
    if (value.isEmpty() || std::filesystem::exists(lists.toNative(), fault) || fault) {
        return std::nullopt;
    }
    return missingListsFile(lists);
}

void checkLanguages(const XmlElement& element, const String& value, Findings& findings)
{
    for (const String& language : namesInValue(value)) {
        if (language.isEmpty() && !value.isEmpty()) {
            findings.add(element, {kMinorWarning, "empty-language",
                                   "an empty code between two commas counts as a language: take a comma out"});
            return;
        }
    }
}

void checkAllowedLocales(const XmlElement& element, const String& value, const Knowledge& knowledge, Findings& findings)
{
    for (const String& name : unknownNamesInValue(value, knowledge)) {
        findings.add(element, unknownAllowedLocale(name));
    }
}

}  // namespace

std::vector<String> namesInValue(std::wstring_view value)
{
    std::vector<String> names;
    for (;;) {
        const std::size_t comma = value.find(L',');
        names.emplace_back(String::trim(value.substr(0, comma)));
        if (comma == value.npos) {
            return names;
        }
        value.remove_prefix(comma + 1);
    }
}

std::vector<String> unknownNamesInValue(std::wstring_view value, const Knowledge& knowledge)
{
    std::vector<String> unknown;
    for (String& name : namesInValue(value)) {
        if (knowledge.knowsDefinitions() && !name.isEmpty() && !knowledge.isDefined(name)) {
            unknown.push_back(std::move(name));
        }
    }
    return unknown;
}

Problem missingListsFile(const vel::FilePath& file)
{
    return {kError, "lists-file-missing",
            "there is no file " + quotedName(file.toString()) + ", so loading fails: correct the path"};
}

Problem unknownAllowedLocale(const String& name)
{
    return {kWarning, "unknown-definition",
            "there is no definition " + quotedName(name) + " to be allowed: correct the name or add it"};
}

void checkConfiguration(const XmlElement& root, const vel::FilePath& file, const Knowledge& knowledge,
                        Findings& findings)
{
    const auto again = [&findings](const XmlElement& element, const String& key, const XmlElement& first) {
        findings.add(element, {kWarning, "duplicate-key",
                               "the key " + quotedName(key) + " has its value from line " +
                                   std::to_string(first.line()) + " already: keep one of them"});
    };
    const std::map<String, const XmlElement*> keys = readKeys(root, again);
    const auto listsFile = keys.find(ksAllowedLocalesFile);
    const bool hasListsFile = listsFile != keys.end() && !listsFile->second->innerText().trimmed().isEmpty();
    for (const auto& [key, element] : keys) {
        const String value = element->innerText().trimmed();
        if (auto problem = key == ksAllowedLocalesFile ? checkListsFile(value, file) : checkKey(key)) {
            findings.add(*element, std::move(*problem));
        } else if (key == ksAllowedLanguages) {
            checkLanguages(*element, value, findings);
        } else if (key == ksAllowedLocales && hasListsFile) {
            findings.add(*element, {kMinorWarning, "ignored-key",
                                    "AllowedLocales is not read where AllowedLocalesFile is set: keep one of them"});
        } else if (key == ksAllowedLocales) {
            checkAllowedLocales(*element, value, knowledge, findings);
        }
    }
}

}  // namespace cli
