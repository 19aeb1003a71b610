#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "vel/xml/xmlelement.h"
#include "xmlarena.h"
#include "xmlpages.h"

namespace vel::xml_details {

/// What a name is where it is that of an attribute.
enum XmlNameKind
{
    kUnprefixedName,
    kPrefixedName,         ///< "xsi:type": of another vocabulary, whatever follows the colon
    kNamespaceDeclaration  ///< "xmlns" or "xmlns:..."
};

/// A name as the document writes it. Equal names usually, but not always, are one object.
struct XmlName
{
    std::wstring_view m_sQualified;
    std::wstring_view m_sLocal;  ///< what follows the last colon
    const char* m_pUtf8;         ///< the qualified one, zero-terminated
    std::size_t m_nUtf8Size;
    XmlNameKind m_eKind;
};

struct XmlAttribute
{
    const XmlName* m_pName;
    std::wstring_view m_sValue;
};

/// An element's data; its attributes follow it in memory.
///
/// There are no text nodes. The document's text, all of it, is one array in document order, so the inner text of every
/// element is one piece of that array, and the text between two children is what lies between their pieces.
struct XmlElementNode final : XmlElement
{
    const XmlName* m_pName;
    XmlElementNode* m_pFirstChild;
    XmlElementNode* m_pNextSibling;  ///< while the element is open: its parent
    const wchar_t* m_pText;
    std::uint32_t m_nTextLength;
    std::uint32_t m_nAttributes;
    std::uint32_t m_nLine;
    std::uint32_t m_nColumn;

    XmlAttribute* attributes() noexcept { return reinterpret_cast<XmlAttribute*>(this + 1); }
    const XmlAttribute* attributes() const noexcept { return reinterpret_cast<const XmlAttribute*>(this + 1); }
    std::wstring_view text() const noexcept { return {m_pText, m_nTextLength}; }

    static const XmlElementNode& of(const XmlElement& element) noexcept
    {
        return static_cast<const XmlElementNode&>(element);
    }
};

static_assert(std::is_trivially_destructible_v<XmlElementNode> && std::is_trivially_destructible_v<XmlName>);

/// The elements that match the path among `first` (which may be null), its next siblings, and what is below them; in
/// document order, at most `limit` of them.
std::vector<NonOwningPtr<const XmlElement>> selectAmong(const XmlElementNode* first, const XmlPath& path,
                                                        std::size_t limit);

/// What a loaded document keeps.
struct XmlMemory
{
    XmlArena m_tArena;
    XmlPiece<wchar_t> m_tText;
    std::size_t m_nTextLength = 0;

    /// For a document of `nBytes` of UTF-8. No reference or character of XML gives more characters than it has bytes,
    /// so the text is never moved; the pages of it that stay unused are never touched and so cost address space only.
    explicit XmlMemory(std::size_t nBytes) : m_tArena(nBytes * 2), m_tText(nBytes) {}
};

}  // namespace vel::xml_details
