#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "vel/core/api.h"
#include "vel/core/filepath.h"
#include "vel/core/string.h"
#include "vel/xml/xmlelement.h"
#include "vel/xml/xmlexception.h"

namespace vel {

/// What a document may not exceed.
struct XmlLimits
{
    std::size_t m_nMaxBytes = std::size_t{64}
                              << 20;      ///< size of the file or text; default 64 MiB; over 512 MiB counts as that
    std::size_t m_nMaxDepth = 256;        ///< nested elements, the root being 1; default 256
    std::size_t m_nMaxAttributes = 1024;  ///< of one element, namespace declarations included; default 1,024
};

/// A place in a document that was read, and what people should know of it.
struct XmlRemark
{
    std::uint32_t m_nLine;    ///< from 1
    std::uint32_t m_nColumn;  ///< in characters, from 1
    String m_sText;           ///< what is wrong and how to mend it
};

/// A loaded XML 1.0 document: an element tree of wide text in one piece of memory. Movable, not copyable; elements stay
/// where they are when it moves. Immutable after loading: reading is safe from any thread.
///
/// Encoding: by byte-order mark (UTF-8, UTF-16 LE, UTF-16 BE), whatever the encoding declaration says; without one
/// UTF-8. Refused, with what to do about it: without a mark a declaration of another encoding, UTF-32, XML 1.1, DOCTYPE
/// (so there are no entities but the five built-in ones), ill-formed text, anything over a limit, and a file that is no
/// regular file. Comments and processing instructions are dropped.
class WEBI18N_API XmlDocument
{
public:
    /// An empty document, without a root.
    XmlDocument() noexcept;
    ~XmlDocument();
    XmlDocument(XmlDocument&&) noexcept;
    XmlDocument& operator=(XmlDocument&&) noexcept;

    /// Reads a file. Throws XmlException (or std::bad_alloc); then nothing exists of the document.
    static XmlDocument load(const FilePath& file, const XmlLimits& limits = {});
    /// Reads a document from bytes in memory, which need not outlive the call. `name` stands for the file in errors.
    static XmlDocument parse(std::string_view bytes, const XmlLimits& limits = {}, const String& name = L"(text)");

    bool hasRoot() const noexcept { return m_pRoot != nullptr; }
    /// The root element. An empty document is reported as "m_p != 0" and throws InvalidHandleException.
    const XmlElement& root() const;
    /// The elements that match the path from the document on: its first step names the root. In document order.
    std::vector<NonOwningPtr<const XmlElement>> select(const XmlPath& path) const;
    /// Where the encoding declaration says otherwise than the byte-order mark, and how to mend it; null when it does
    /// not. Valid while the document lives.
    const XmlRemark* encodingRemark() const noexcept;
    /// Bytes of memory that the tree takes; 0 for an empty document. Address space of four times the file's size is
    /// held besides, of which the part that no text fills is never touched.
    std::size_t memoryUsed() const noexcept;

private:
    struct Storage;
    template <typename Fill>
    static XmlDocument read(const String& name, const XmlLimits& limits, Fill fill);

    std::unique_ptr<Storage> m_pStorage;
    const XmlElement* m_pRoot = nullptr;
};

}  // namespace vel
