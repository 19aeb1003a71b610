#include "check/prefixedattributes.h"

#include <algorithm>
#include <string>
#include <vector>

#include "text.h"

namespace cli {

namespace {

using vel::XmlElement;

/// The attributes that are read of an element, whatever file it stands in.
struct ReadAttributes
{
    const wchar_t* m_pElement;
    std::vector<const wchar_t*> m_vNames;
};

const std::vector<ReadAttributes>& readAttributes()
{
    static const std::vector<ReadAttributes> kAll = {
        {L"localeDefinition", {L"name", L"basedOn"}},
        {L"property", {L"name"}},
        {L"localeList", {L"name"}},
        {L"localeMapping", {L"name"}},
        {L"when", {L"matches"}},
        {L"Currency",
         {L"tag", L"type", L"symbol", L"format", L"digits", L"locale", L"displayMessage", L"displaymessage",
          L"displayName", L"display", L"placeholder", L"thousandsSeparator"}},
        {L"negative", {L"tag", L"format"}},
        {L"characterSet", {L"name", L"label"}},
        {L"characterSetList", {L"name"}},
        {L"message", {L"key"}},
        {L"param", {L"insert"}},
        {L"ref", {L"key"}},
    };
    return kAll;
}

void checkElement(const XmlElement& element, Findings& findings)
{
    const auto read = std::find_if(readAttributes().begin(), readAttributes().end(),
                                   [&](const ReadAttributes& each) { return element.name() == each.m_pElement; });
    if (read == readAttributes().end()) {
        return;
    }
    for (const wchar_t* name : read->m_vNames) {
        const std::wstring_view written = element.prefixedAttribute(name);
        if (written.empty()) {
            continue;
        }
        const bool isBeside = element.hasAttribute(name);
        const std::string attribute = "attribute " + quotedName(written) + " is not read as " + quotedName(name);
        findings.add(element, {isBeside ? kInformation : kWarning, "prefixed-attribute",
                               attribute + (isBeside ? ", which stands beside it" : ": write it without the prefix")});
    }
}

}  // namespace

void checkPrefixedAttributes(const XmlElement& root, Findings& findings)
{
    checkElement(root, findings);
    std::vector<const XmlElement*> next = {root.firstChild()};  // one for each level, null where a level is done
    while (!next.empty()) {
        const XmlElement* const element = next.back();
        if (element == nullptr) {
            next.pop_back();
            continue;
        }
        checkElement(*element, findings);
        next.back() = element->nextSibling();
        next.push_back(element->firstChild());
    }
}

}  // namespace cli
