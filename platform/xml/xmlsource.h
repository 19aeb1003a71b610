#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "vel/core/filepath.h"
#include "vel/xml/xmldocument.h"
#include "xmlencoding.h"
#include "xmlparser.h"

namespace vel::xml_details {

/// The text of a document as UTF-8 in the parser's own buffer, where the file was read to: parsing needs no copy of it.
/// kPlaceSlack zero bytes follow it. Used for one document.
class XmlSource
{
public:
    /// `parser` and `name` outlive this.
    XmlSource(XML_Parser parser, const XmlLimits& limits, const String& name);

    /// Both throw XmlException for what cannot be read or is in no encoding that is read.
    void readFile(const FilePath& file);
    void takeBytes(std::string_view bytes);

    /// Valid until the parser is gone. Up to 2^30 bytes.
    std::string_view text() const noexcept { return {m_pData, m_nSize}; }
    XmlEncoding encoding() const noexcept { return m_eEncoding; }

private:
    void readAll(int file, std::size_t expected);
    void provideRoom(std::size_t size);
    void checkSize(std::size_t size) const;
    void decode();
    [[noreturn]] void fail(const String& problem) const;

    XML_Parser m_hParser;
    const String& m_sName;
    std::size_t m_nMaxBytes;
    char* m_pData = nullptr;
    std::size_t m_nSize = 0;
    XmlEncoding m_eEncoding = kUtf8;
};

}  // namespace vel::xml_details
