#pragma once

#include <cstddef>
#include <exception>
#include <optional>
#include <string_view>

#include "vel/xml/xmldocument.h"
#include "xmlnames.h"
#include "xmlnode.h"
#include "xmlplace.h"
#include "xmlsource.h"
#include "xmlvalues.h"

namespace vel::xml_details {

/// Turns the parser's events into the tree. Used for one document; whatever goes wrong is thrown by build(), never
/// through the parser's C frames.
class XmlTreeBuilder
{
public:
    /// Everything named here outlives this; the source has been read.
    XmlTreeBuilder(XML_Parser parser, const XmlSource& source, const XmlLimits& limits, const String& name,
                   XmlMemory& memory);

    /// The root element. Throws XmlException and std::bad_alloc.
    const XmlElement* build();
    /// What is wrong with the encoding declaration of a document that was built all the same.
    std::optional<XmlRemark>& encodingRemark() noexcept { return m_tEncodingRemark; }

private:
    static void XMLCALL onStart(void* user, const XML_Char* name, const XML_Char** attributes);
    static void XMLCALL onEnd(void* user, const XML_Char* name);
    static void XMLCALL onText(void* user, const XML_Char* text, int length);
    static void XMLCALL onDeclaration(void* user, const XML_Char* version, const XML_Char* encoding, int standalone);
    static void XMLCALL onDocType(void* user, const XML_Char* name, const XML_Char* system, const XML_Char* publicId,
                                  int hasSubset);

    template <typename Action>
    void guarded(Action action) noexcept;
    void setHandlers();
    void start(const XML_Char* name, const XML_Char** attributes);
    XmlElementNode* createNode(const XmlPlace& place, const XML_Char** attributes);
    void link(XmlElementNode* node) noexcept;
    void end() noexcept;
    void checkDeclaration(const XML_Char* version, const XML_Char* encoding);
    [[noreturn]] void throwParserError() const;
    [[noreturn]] void throwAt(std::size_t offset, const String& problem) const;
    std::size_t currentOffset() const noexcept;

    XML_Parser m_hParser;
    const XmlSource& m_tSource;
    const XmlLimits& m_tLimits;
    const String& m_sName;
    XmlMemory& m_tMemory;
    XmlNames m_tNames;
    XmlValues m_tValues;
    XmlPlaceCounter m_tPlaces;
    wchar_t* m_pTextEnd;
    std::size_t m_nTextLeft;
    XmlElementNode* m_pRoot = nullptr;
    XmlElementNode* m_pOpen = nullptr;        ///< the innermost open element
    XmlElementNode* m_pLastClosed = nullptr;  ///< its last child so far
    std::size_t m_nDepth = 0;
    bool m_bStopped = false;
    std::exception_ptr m_tFailure;
    std::optional<XmlRemark> m_tEncodingRemark;
};

}  // namespace vel::xml_details
