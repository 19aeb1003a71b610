#include <algorithm>
#include <string>
#include <vector>

#include "vel/xml/xmlelement.h"
#include "xmlnode.h"

namespace vel {

using xml_details::XmlAttribute;
using xml_details::XmlElementNode;
using xml_details::XmlName;

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

/// Writes a tree without recursion. Between the tags it copies the text up to where the next element's begins. Once
/// there is more than is wanted it stops: whoever wants a little of a large element does not pay for all of it.
class Writer
{
public:
    explicit Writer(std::size_t longest) noexcept : m_nLongest(longest) {}

    String write(const XmlElementNode& root)
    {
        m_pText = root.m_pText;
        const XmlElementNode* node = &root;
        while (node != nullptr && !isFull()) {
            start(*node);
            node = m_tOpen.empty() || m_tOpen.back() != node ? finish(*node, root) : node->m_pFirstChild;
            while (node == nullptr && !m_tOpen.empty() && !isFull()) {
                const XmlElementNode& ended = *m_tOpen.back();
                end(ended);
                node = finish(ended, root);
            }
        }
        m_sOut.resize(std::min(m_sOut.size(), m_nLongest));
        return String(std::move(m_sOut));
    }

private:
    bool isFull() const noexcept { return m_sOut.size() >= m_nLongest; }
    /// No character becomes less than one, so that what is cut off here is not wanted.
    void write(std::wstring_view text, Context context) { appendEscaped(m_sOut, text.substr(0, m_nLongest), context); }
    void writeName(const XmlName& name) { m_sOut.append(name.m_sQualified.substr(0, m_nLongest)); }
    /// Writes the start tag; an element with content stays open.
    void start(const XmlElementNode& node)
    {
        writeTextUpTo(node.m_pText);
        m_sOut.append(L"<");
        writeName(*node.m_pName);
        for (std::uint32_t i = 0; i < node.m_nAttributes && !isFull(); ++i) {
            const XmlAttribute& attribute = node.attributes()[i];
            m_sOut.append(L" ");
            writeName(*attribute.m_pName);
            m_sOut.append(L"=\"");
            write(attribute.m_sValue, kAttributeValue);
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
        m_sOut.append(L"</");
        writeName(*node.m_pName);
        m_sOut.append(L">");
        m_tOpen.pop_back();
    }
    /// What follows a finished element: its sibling, unless it is where writing began.
    static const XmlElementNode* finish(const XmlElementNode& node, const XmlElementNode& root) noexcept
    {
        return &node == &root ? nullptr : node.m_pNextSibling;
    }
    void writeTextUpTo(const wchar_t* position)
    {
        write({m_pText, static_cast<std::size_t>(position - m_pText)}, kContent);
        m_pText = position;
    }

    std::size_t m_nLongest;
    std::wstring m_sOut;
    std::vector<const XmlElementNode*> m_tOpen;
    const wchar_t* m_pText = nullptr;
};

}  // namespace

String XmlElement::toXmlText(std::size_t longest) const
{
    return Writer(longest).write(XmlElementNode::of(*this));
}

}  // namespace vel
