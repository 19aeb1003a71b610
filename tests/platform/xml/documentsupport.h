#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "printers.h"
#include "vel/xml/xmldocument.h"
#include "xmlnode.h"

namespace xmltest {

/// What an XmlException said; all zero and empty when nothing was thrown.
struct Refusal
{
    std::uint32_t m_nLine = 0;
    std::uint32_t m_nColumn = 0;
    std::string m_sProblem;
};

/// How the text is refused. Anything but XmlException passes through, and fails the test.
inline Refusal refusalOf(std::string_view bytes, const vel::XmlLimits& limits = {})
{
    try {
        const vel::XmlDocument document = vel::XmlDocument::parse(bytes, limits);
    } catch (const vel::XmlException& error) {
        return {error.line(), error.column(), vel::toUtf8Lossy(error.problem().view())};
    }
    return {};
}

/// An element as the document holds it, with all that the public interface does not list.
struct Outline
{
    std::wstring m_sName;
    std::vector<std::wstring> m_tAttributes;  // name, value, name, value ...
    std::wstring m_sText;
    std::size_t m_nDepth;
    std::ptrdiff_t m_nTextStart;  // within the document's text

    friend bool operator==(const Outline&, const Outline&) = default;
};

/// All elements in document order.
inline std::vector<Outline> outline(const vel::XmlElement& root)
{
    using vel::xml_details::XmlElementNode;
    const wchar_t* const textStart = XmlElementNode::of(root).m_pText;
    std::vector<Outline> result;
    std::vector<const XmlElementNode*> path{&XmlElementNode::of(root)};
    while (!path.empty()) {
        const XmlElementNode* const node = path.back();
        if (node == nullptr) {
            path.pop_back();
            if (!path.empty()) {
                path.back() = path.size() == 1 ? nullptr : path.back()->m_pNextSibling;
            }
            continue;
        }
        Outline each{std::wstring(node->qualifiedName()), {}, std::wstring(node->text()), path.size(), 0};
        each.m_nTextStart = node->m_pText - textStart;
        for (std::uint32_t i = 0; i < node->m_nAttributes; ++i) {
            each.m_tAttributes.emplace_back(node->attributes()[i].m_pName->m_sQualified);
            each.m_tAttributes.emplace_back(node->attributes()[i].m_sValue);
        }
        result.push_back(std::move(each));
        path.push_back(node->m_pFirstChild);
    }
    return result;
}

/// `count` times the same text.
inline std::string repeat(std::string_view text, std::size_t count)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

}  // namespace xmltest
