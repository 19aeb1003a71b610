#include "vel/xml/xmlelement.h"

#include "vel/xml/xmlpath.h"
#include "xmlnode.h"

namespace vel {

using xml_details::XmlAttribute;
using xml_details::XmlElementNode;
using xml_details::XmlName;
using xml_details::XmlNameKind;

namespace {

const XmlAttribute* findAttribute(const XmlElementNode& node, std::wstring_view localName, XmlNameKind kind) noexcept
{
    const XmlAttribute* const attributes = node.attributes();
    for (std::uint32_t i = 0; i < node.m_nAttributes; ++i) {
        const XmlName& name = *attributes[i].m_pName;
        if (name.m_sLocal == localName && name.m_eKind == kind) {
            return &attributes[i];
        }
    }
    return nullptr;
}

/// Walks the elements that match one step among the children of one element.
class StepCursor
{
public:
    explicit StepCursor(const XmlPath::Step& step) noexcept : m_pStep(&step) {}

    /// Starts at an element, or null, and goes on with its next siblings.
    void enter(const XmlElementNode* first) noexcept { m_pNext = first; }
    /// The next match, or null.
    const XmlElementNode* next() noexcept
    {
        while (m_pNext != nullptr) {
            const XmlElementNode* const candidate = m_pNext;
            m_pNext = candidate->m_pNextSibling;
            if (matchesName(candidate->m_pName) && matchesPredicates(*candidate)) {
                return candidate;
            }
        }
        return nullptr;
    }

private:
    /// Siblings mostly share their name object: characters are compared when it changes.
    bool matchesName(const XmlName* name) noexcept
    {
        if (name != m_pKnown) {
            m_pKnown = name;
            m_bKnownMatches = name->m_sLocal == m_pStep->m_sName.view();
        }
        return m_bKnownMatches;
    }
    bool matchesPredicates(const XmlElementNode& node) const noexcept
    {
        for (const XmlPath::Predicate& predicate : m_pStep->m_tPredicates) {
            const XmlAttribute* const attribute =
                findAttribute(node, predicate.m_sAttribute.view(), xml_details::kUnprefixedName);
            if (attribute == nullptr || attribute->m_sValue != predicate.m_sValue.view()) {
                return false;
            }
        }
        return true;
    }

    const XmlPath::Step* m_pStep;
    const XmlElementNode* m_pNext = nullptr;
    const XmlName* m_pKnown = nullptr;
    bool m_bKnownMatches = false;
};

}  // namespace

std::wstring_view XmlElement::name() const noexcept
{
    return XmlElementNode::of(*this).m_pName->m_sLocal;
}

std::wstring_view XmlElement::qualifiedName() const noexcept
{
    return XmlElementNode::of(*this).m_pName->m_sQualified;
}

std::wstring_view XmlElement::attribute(std::wstring_view name) const noexcept
{
    const XmlAttribute* const found = findAttribute(XmlElementNode::of(*this), name, xml_details::kUnprefixedName);
    return found == nullptr ? std::wstring_view() : found->m_sValue;
}

bool XmlElement::hasAttribute(std::wstring_view name) const noexcept
{
    return findAttribute(XmlElementNode::of(*this), name, xml_details::kUnprefixedName) != nullptr;
}

std::wstring_view XmlElement::prefixedAttribute(std::wstring_view localName) const noexcept
{
    const XmlAttribute* const found = findAttribute(XmlElementNode::of(*this), localName, xml_details::kPrefixedName);
    return found == nullptr ? std::wstring_view() : found->m_pName->m_sQualified;
}

String XmlElement::innerText() const
{
    return String(innerTextView());
}

std::wstring_view XmlElement::innerTextView() const noexcept
{
    return XmlElementNode::of(*this).text();
}

void XmlElement::appendInnerText(StringBufferBase& out) const
{
    out.append(innerTextView());
}

const XmlElement* XmlElement::firstChild() const noexcept
{
    return XmlElementNode::of(*this).m_pFirstChild;
}

const XmlElement* XmlElement::nextSibling() const noexcept
{
    return XmlElementNode::of(*this).m_pNextSibling;
}

std::vector<NonOwningPtr<const XmlElement>> XmlElement::select(const XmlPath& path, std::size_t limit) const
{
    return xml_details::selectAmong(XmlElementNode::of(*this).m_pFirstChild, path, limit);
}

std::vector<NonOwningPtr<const XmlElement>> xml_details::selectAmong(const XmlElementNode* first, const XmlPath& path,
                                                                     std::size_t limit)
{
    std::vector<NonOwningPtr<const XmlElement>> found;
    std::vector<StepCursor> cursors(path.steps().begin(), path.steps().end());
    if (cursors.empty() || limit == 0) {
        return found;
    }
    std::size_t depth = 0;
    cursors[0].enter(first);
    while (true) {
        const XmlElementNode* const match = cursors[depth].next();
        if (match == nullptr) {
            if (depth == 0) {
                return found;
            }
            --depth;
        } else if (depth + 1 < cursors.size()) {
            cursors[++depth].enter(match->m_pFirstChild);
        } else {
            found.push_back(static_cast<const XmlElement*>(match));
            if (found.size() == limit) {
                return found;
            }
        }
    }
}

std::uint32_t XmlElement::line() const noexcept
{
    return XmlElementNode::of(*this).m_nLine;
}

std::uint32_t XmlElement::column() const noexcept
{
    return XmlElementNode::of(*this).m_nColumn;
}

}  // namespace vel
