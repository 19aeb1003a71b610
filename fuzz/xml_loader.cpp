// Any bytes load or are refused by XmlException. What loads is written as a text that loads as the same tree, its
// pieces lie within each other, and its places ascend.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "../platform/xml/xmlnode.h"
#include "require.h"
#include "vel/xml/xmldocument.h"
#include "vel/xml/xmlpath.h"

namespace {

using fuzzing::require;
using vel::XmlDocument;
using vel::XmlElement;
using vel::xml_details::XmlElementNode;

struct Item
{
    const XmlElementNode* m_pNode;
    std::size_t m_nParent;  // index; its own for the root
};

/// All elements in document order.
std::vector<Item> itemsOf(const XmlElement& root)
{
    std::vector<Item> items{{&XmlElementNode::of(root), 0}};
    std::vector<std::size_t> open{0};
    const XmlElementNode* next = items[0].m_pNode->m_pFirstChild;
    while (!open.empty()) {
        if (next != nullptr) {
            items.push_back({next, open.back()});
            open.push_back(items.size() - 1);
            next = next->m_pFirstChild;
        } else {
            next = open.size() == 1 ? nullptr : items[open.back()].m_pNode->m_pNextSibling;
            open.pop_back();
        }
    }
    return items;
}

bool sameAttributes(const XmlElementNode& a, const XmlElementNode& b)
{
    for (std::uint32_t i = 0; i < a.m_nAttributes && a.m_nAttributes == b.m_nAttributes; ++i) {
        if (a.attributes()[i].m_pName->m_sQualified != b.attributes()[i].m_pName->m_sQualified ||
            a.attributes()[i].m_sValue != b.attributes()[i].m_sValue) {
            return false;
        }
    }
    return a.m_nAttributes == b.m_nAttributes;
}

void requireSameTree(const std::vector<Item>& a, const std::vector<Item>& b)
{
    require(a.size() == b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        const XmlElementNode& x = *a[i].m_pNode;
        const XmlElementNode& y = *b[i].m_pNode;
        require(a[i].m_nParent == b[i].m_nParent && x.qualifiedName() == y.qualifiedName());
        require(sameAttributes(x, y) && x.text() == y.text());
        require(x.m_pText - a[0].m_pNode->m_pText == y.m_pText - b[0].m_pNode->m_pText);
    }
}

void checkPieces(const std::vector<Item>& items)
{
    for (std::size_t i = 1; i < items.size(); ++i) {
        const XmlElementNode& node = *items[i].m_pNode;
        const XmlElementNode& before = *items[i - 1].m_pNode;
        const XmlElementNode& parent = *items[items[i].m_nParent].m_pNode;
        require(node.m_pText >= before.m_pText);
        require(node.m_pText + node.m_nTextLength <= parent.m_pText + parent.m_nTextLength);
        require(node.m_nLine > before.m_nLine || (node.m_nLine == before.m_nLine && node.m_nColumn > before.m_nColumn));
    }
}

/// A path of the names of an element and its parent finds elements with these names, in document order.
void checkSelect(const std::vector<Item>& items)
{
    const Item& last = items.back();
    if (items[last.m_nParent].m_nParent != 0 || last.m_nParent == 0) {
        return;
    }
    std::wstring text(items[last.m_nParent].m_pNode->name());
    text.append(L"/").append(last.m_pNode->name());
    try {
        const auto found = items[0].m_pNode->select(vel::XmlPath(text));
        std::size_t at = 0;
        for (const auto& each : found) {
            while (at < items.size() && items[at].m_pNode != each.get()) {
                ++at;
            }
            require(at < items.size() && items[at].m_pNode->name() == last.m_pNode->name());
        }
        require(!found.empty() && found.back().get() == last.m_pNode);
    } catch (const vel::Exception&) {
        // A name of XML that no path can have, such as ":".
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const XmlDocument document = XmlDocument::parse({reinterpret_cast<const char*>(data), size});
        const std::vector<Item> items = itemsOf(document.root());
        checkPieces(items);
        checkSelect(items);
        std::string written;
        require(!vel::appendWideAsUtf8(document.root().toXmlText().view(), written));
        vel::XmlLimits limits;
        limits.m_nMaxBytes *= 8;  // references are longer than their characters
        const XmlDocument again = XmlDocument::parse(written, limits);
        requireSameTree(items, itemsOf(again.root()));
    } catch (const vel::XmlException& error) {
        require((error.line() == 0) == (error.column() == 0) && !error.problem().isEmpty());
        require(error.line() == 0 || size > 0);
    }
    return 0;
}
