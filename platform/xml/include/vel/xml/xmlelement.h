#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/nonowningptr.h"
#include "vel/core/string.h"
#include "vel/core/stringbuffer.h"

namespace vel {

class XmlPath;

/// An element of a loaded document. It lives in its document's memory, is never copied, and is immutable: reading is
/// safe from any thread while the document lives. Views it returns refer to that memory.
///
/// Elements match by local name: "vell:property" is a "property". An attribute matches without a prefix only: one such
/// as "xsi:type" is of another vocabulary and is no "type". Nothing here recurses over the input.
class WEBI18N_API XmlElement
{
public:
    XmlElement(const XmlElement&) = delete;
    XmlElement& operator=(const XmlElement&) = delete;

    /// Local name: what follows the last colon.
    std::wstring_view name() const noexcept;
    /// As written, with its prefix.
    std::wstring_view qualifiedName() const noexcept;

    /// The value of the attribute of that name; empty when absent. Namespace declarations are not attributes here.
    ///
    ///     <a xsi:type="x" type="y"/>  attribute(L"type") -> "y"
    ///     <a xsi:type="x"/>           attribute(L"type") -> ""
    std::wstring_view attribute(std::wstring_view name) const noexcept;
    bool hasAttribute(std::wstring_view name) const noexcept;
    /// The name, as written, of the first attribute that has a prefix before that local name; empty when there is none.
    /// For those who tell people that it is not read.
    std::wstring_view prefixedAttribute(std::wstring_view localName) const noexcept;

    /// The text of the element and its descendants, concatenated in document order, white space kept.
    String innerText() const;
    /// The same without building a String, as the text of a document is one array in document order. The views of an
    /// element's descendants are pieces of its own, so the text between two children is what lies between the end of
    /// the first one's view and the start of the second one's.
    std::wstring_view innerTextView() const noexcept;
    /// Appends the inner text.
    void appendInnerText(StringBufferBase& out) const;

    /// First child element, or null.
    const XmlElement* firstChild() const noexcept;
    /// Next sibling element, or null.
    const XmlElement* nextSibling() const noexcept;

    static constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();
    /// The elements below this one that match the path, in document order, at most `limit` of them.
    std::vector<NonOwningPtr<const XmlElement>> select(const XmlPath& path, std::size_t limit = kNoLimit) const;

    /// The element written out as XML text that parses back to the same tree: names with prefixes, attributes and
    /// namespace declarations as they stand on it, text escaped. Of a text longer than `longest` characters, that many;
    /// no more than those are made.
    ///
    ///     <a x='1'>5 &lt; 6<b/></a>  ->  <a x="1">5 &lt; 6<b/></a>
    String toXmlText(std::size_t longest = kNoLimit) const;

    /// Where its start tag begins: line and column in characters, both from 1.
    std::uint32_t line() const noexcept;
    std::uint32_t column() const noexcept;

protected:
    // Built only by its document.
    XmlElement() noexcept = default;
    ~XmlElement() = default;
};

/// Iterates over the child elements: `for (const XmlElement& child : children(element))`.
class XmlChildren
{
public:
    class Iterator
    {
    public:
        explicit Iterator(const XmlElement* element) noexcept : m_pElement(element) {}
        const XmlElement& operator*() const noexcept { return *m_pElement; }
        Iterator& operator++() noexcept
        {
            m_pElement = m_pElement->nextSibling();
            return *this;
        }
        friend bool operator==(const Iterator&, const Iterator&) noexcept = default;

    private:
        const XmlElement* m_pElement;
    };

    explicit XmlChildren(const XmlElement& parent) noexcept : m_pFirst(parent.firstChild()) {}
    Iterator begin() const noexcept { return Iterator(m_pFirst); }
    Iterator end() const noexcept { return Iterator(nullptr); }

private:
    const XmlElement* m_pFirst;
};

inline XmlChildren children(const XmlElement& parent) noexcept
{
    return XmlChildren(parent);
}

}  // namespace vel
