#pragma once

#include <expat.h>

#include <memory>

namespace vel::xml_details {

struct XmlParserDeleter
{
    void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
};
using XmlParserPointer = std::unique_ptr<XML_ParserStruct, XmlParserDeleter>;

/// A parser for UTF-8, whatever the document declares, whose memory comes from allocatePiece. Throws std::bad_alloc.
XmlParserPointer createParser();

}  // namespace vel::xml_details
