#include <string>
#include <vector>

#include "vel/xml/xmlelement.h"
#include "xmlnode.h"

namespace vel {

using xml_details::XmlAttribute;
using xml_details::XmlElementNode;

namespace {

enum Context
{
    kContent,
    kAttributeValue
};

/// A reader would turn these into something else (line ends into a line feed, attribute white space into blanks), or an
/// editor would not show them.
bool needsReference(wchar_t character, Context context) noexcept
{
    const bool isWhite = character == L'\t' || character == L'\n';
    return (character < 0x20 && (!isWhite || context == kAttributeValue)) || (character >= 0x7F && character <= 0x9F);
}

void appendReference(std::wstring& out, wchar_t character)
{
    out.append(L"&#").append(decimalString(static_cast<unsigned>(character))).push_back(L';');
}

void appendEscaped(std::wstring& out, std::wstring_view text, Context context)
{
    for (const wchar_t character : text) {
        if (character == L'&') {
            out.append(L"&amp;");
        } else if (character == L'<') {
            out.append(L"&lt;");
        } else if (character == L'>') {
            out.append(L"&gt;");
        } else if (character == L'"' && context == kAttributeValue) {
            out.append(L"&quot;");
        } else if (needsReference(character, context)) {
            appendReference(out, character);
        } else {
            out.push_back(character);
        }
    }
}

/// Writes a tree without recursion. Between the tags it copies the text up to where the next element's begins.
class Writer
{
public:
    String write(const XmlElementNode& root)
    {
        m_pText = root.m_pText;
        const XmlElementNode* node = &root;
        while (node != nullptr) {
            start(*node);
            node = m_tOpen.empty() || m_tOpen.back() != node ? finish(*node, root) : node->m_pFirstChild;
            while (node == nullptr && !m_tOpen.empty()) {
                const XmlElementNode& ended = *m_tOpen.back();
                end(ended);
                node = finish(ended, root);
            }
        }
        return String(std::move(m_sOut));
    }

private:
    /// Writes the start tag; an element with content stays open.
    void start(const XmlElementNode& node)
    {
        writeTextUpTo(node.m_pText);
        m_sOut.append(L"<").append(node.m_pName->m_sQualified);
        for (std::uint32_t i = 0; i < node.m_nAttributes; ++i) {
            const XmlAttribute& attribute = node.attributes()[i];
            m_sOut.append(L" ").append(attribute.m_pName->m_sQualified).append(L"=\"");
            appendEscaped(m_sOut, attribute.m_sValue, kAttributeValue);
            m_sOut.append(L"\"");
        }
        const bool isEmpty = node.m_pFirstChild == nullptr && node.m_nTextLength == 0;
        m_sOut.append(isEmpty ? L"/>" : L">");
        if (!isEmpty) {
            m_tOpen.push_back(&node);
        }
    }
    void end(const XmlElementNode& node)
    {
        writeTextUpTo(node.m_pText + node.m_nTextLength);
        m_sOut.append(L"</").append(node.m_pName->m_sQualified).append(L">");
        m_tOpen.pop_back();
    }
    /// What follows a finished element: its sibling, unless it is where writing began.
    static const XmlElementNode* finish(const XmlElementNode& node, const XmlElementNode& root) noexcept
    {
        return &node == &root ? nullptr : node.m_pNextSibling;
    }
    void writeTextUpTo(const wchar_t* position)
    {
        appendEscaped(m_sOut, {m_pText, static_cast<std::size_t>(position - m_pText)}, kContent);
        m_pText = position;
    }

    std::wstring m_sOut;
    std::vector<const XmlElementNode*> m_tOpen;
    const wchar_t* m_pText = nullptr;
};

}  // namespace

String XmlElement::toXmlText() const
{
    return Writer().write(XmlElementNode::of(*this));
}

}  // namespace vel
