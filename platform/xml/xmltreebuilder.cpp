#include "xmltreebuilder.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "vel/core/assertion.h"
#include "vel/xml/xmlexception.h"
#include "xmlfault.h"
#include "xmlwiden.h"

namespace vel::xml_details {

XmlTreeBuilder::XmlTreeBuilder(XML_Parser parser, const XmlSource& source, const XmlLimits& limits, const String& name,
                               XmlMemory& memory)
    : m_hParser(parser),
      m_tSource(source),
      m_tLimits(limits),
      m_sName(name),
      m_tMemory(memory),
      m_tNames(memory.m_tArena),
      m_tValues(memory.m_tArena),
      m_tPlaces(source.text()),
      m_pTextEnd(memory.m_tText.get()),
      m_nTextLeft(source.text().size())
{}

const XmlElement* XmlTreeBuilder::build()
{
    setHandlers();
    const int size = static_cast<int>(m_tSource.text().size());
    const XML_Status status = XML_ParseBuffer(m_hParser, size, 1);
    if (m_tFailure != nullptr) {
        std::rethrow_exception(m_tFailure);
    }
    if (status != XML_STATUS_OK) {
        throwParserError();
    }
    m_tMemory.m_nTextLength = static_cast<std::size_t>(m_pTextEnd - m_tMemory.m_tText.get());
    return m_pRoot;
}

void XmlTreeBuilder::setHandlers()
{
    XML_SetUserData(m_hParser, this);
    XML_SetElementHandler(m_hParser, onStart, onEnd);
    XML_SetCharacterDataHandler(m_hParser, onText);
    XML_SetXmlDeclHandler(m_hParser, onDeclaration);
    XML_SetStartDoctypeDeclHandler(m_hParser, onDocType);
}

template <typename Action>
void XmlTreeBuilder::guarded(Action action) noexcept
{
    // The parser may deliver the rest of a tag after it was told to stop.
    if (m_bStopped) {
        return;
    }
    try {
        action();
    } catch (...) {
        m_tFailure = std::current_exception();
        m_bStopped = true;
        XML_StopParser(m_hParser, XML_FALSE);
    }
}

void XMLCALL XmlTreeBuilder::onStart(void* user, const XML_Char* name, const XML_Char** attributes)
{
    XmlTreeBuilder& self = *static_cast<XmlTreeBuilder*>(user);
    self.guarded([&] { self.start(name, attributes); });
}

void XMLCALL XmlTreeBuilder::onEnd(void* user, const XML_Char*)
{
    XmlTreeBuilder& self = *static_cast<XmlTreeBuilder*>(user);
    if (!self.m_bStopped) {
        self.end();
    }
}

void XMLCALL XmlTreeBuilder::onText(void* user, const XML_Char* text, int length)
{
    XmlTreeBuilder& self = *static_cast<XmlTreeBuilder*>(user);
    const std::size_t size = static_cast<std::size_t>(length);
    VEL_ASSERT(size <= self.m_nTextLeft);
    if (self.m_bStopped || size > self.m_nTextLeft) {
        return;
    }
    const std::size_t written = widen(text, size, self.m_pTextEnd);
    self.m_pTextEnd += written;
    self.m_nTextLeft -= written;
}

void XMLCALL XmlTreeBuilder::onDeclaration(void* user, const XML_Char* version, const XML_Char* encoding, int)
{
    XmlTreeBuilder& self = *static_cast<XmlTreeBuilder*>(user);
    self.guarded([&] { self.checkDeclaration(version, encoding); });
}

void XMLCALL XmlTreeBuilder::onDocType(void* user, const XML_Char*, const XML_Char*, const XML_Char*, int)
{
    XmlTreeBuilder& self = *static_cast<XmlTreeBuilder*>(user);
    self.guarded([&] {
        const std::size_t offset = self.currentOffset();
        const std::size_t start = self.m_tSource.text().rfind("<!DOCTYPE", offset);
        self.throwAt(start == std::string_view::npos ? offset : start,
                     L"a DOCTYPE is not accepted: remove the declaration, and write what its entities stand for");
    });
}

void XmlTreeBuilder::start(const XML_Char* name, const XML_Char** attributes)
{
    const std::size_t offset = currentOffset();
    if (++m_nDepth > m_tLimits.m_nMaxDepth) {
        throwAt(offset, String(L"elements are nested deeper than the limit of ") +
                            decimalString(m_tLimits.m_nMaxDepth) + L": make the document flatter");
    }
    XmlElementNode* const node = createNode(m_tPlaces.at(offset), attributes);
    node->m_pName = m_tNames.intern(name, m_pLastClosed == nullptr ? nullptr : m_pLastClosed->m_pName);
    link(node);
}

XmlElementNode* XmlTreeBuilder::createNode(const XmlPlace& place, const XML_Char** attributes)
{
    std::size_t count = 0;
    while (attributes[2 * count] != nullptr) {
        ++count;
    }
    if (count > m_tLimits.m_nMaxAttributes) {
        throw XmlException(m_sName, place.m_nLine, place.m_nColumn,
                           String(L"an element has more attributes than the limit of ") +
                               decimalString(m_tLimits.m_nMaxAttributes) + L": write some of them as elements");
    }
    void* const memory = m_tMemory.m_tArena.allocate(sizeof(XmlElementNode) + count * sizeof(XmlAttribute));
    XmlElementNode* const node = new (memory) XmlElementNode;
    node->m_pFirstChild = nullptr;
    node->m_pText = m_pTextEnd;
    node->m_nTextLength = 0;
    node->m_nAttributes = static_cast<std::uint32_t>(count);
    node->m_nLine = place.m_nLine;
    node->m_nColumn = place.m_nColumn;
    // Siblings tend to carry the same attributes in the same order.
    const std::size_t guesses = m_pLastClosed == nullptr ? 0 : m_pLastClosed->m_nAttributes;
    for (std::size_t i = 0; i < count; ++i) {
        const XmlName* const guess = i < guesses ? m_pLastClosed->attributes()[i].m_pName : nullptr;
        const XmlName* const name = m_tNames.intern(attributes[2 * i], guess);
        new (node->attributes() + i) XmlAttribute{name, m_tValues.intern(attributes[2 * i + 1])};
    }
    return node;
}

void XmlTreeBuilder::link(XmlElementNode* node) noexcept
{
    node->m_pNextSibling = m_pOpen;
    if (m_pLastClosed != nullptr) {
        m_pLastClosed->m_pNextSibling = node;
    } else if (m_pOpen != nullptr) {
        m_pOpen->m_pFirstChild = node;
    } else {
        m_pRoot = node;
    }
    m_pOpen = node;
    m_pLastClosed = nullptr;
}

void XmlTreeBuilder::end() noexcept
{
    XmlElementNode* const node = m_pOpen;
    node->m_nTextLength = static_cast<std::uint32_t>(m_pTextEnd - node->m_pText);
    m_pOpen = node->m_pNextSibling;
    node->m_pNextSibling = nullptr;
    m_pLastClosed = node;
    --m_nDepth;
}

/// The bytes say what they are in where they begin with a mark; a declaration cannot make them anything else.
void XmlTreeBuilder::checkDeclaration(const XML_Char* version, const XML_Char* encoding)
{
    if (version != nullptr && std::string_view(version) != "1.0") {
        throwAt(currentOffset(), L"only XML 1.0 is read: change the XML declaration to version=\"1.0\"");
    }
    if (encoding == nullptr || agreesWith(m_tSource.encoding(), encoding)) {
        return;
    }
    const String problem = contradictionText(m_tSource.encoding(), encoding);
    if (!hasMark(m_tSource.encoding())) {
        throwAt(currentOffset(), problem);
    }
    const XmlPlace place = placeOf(m_tSource.text(), currentOffset());
    m_tEncodingRemark = XmlRemark{place.m_nLine, place.m_nColumn, problem};
}

void XmlTreeBuilder::throwParserError() const
{
    const XML_Error code = XML_GetErrorCode(m_hParser);
    if (code == XML_ERROR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    // For a wrong end tag the parser tells where its name starts.
    const std::size_t offset = currentOffset() - (code == XML_ERROR_TAG_MISMATCH ? 2 : 0);
    throwAt(offset, describeFault(code, m_tSource.text().substr(offset), m_pOpen));
}

void XmlTreeBuilder::throwAt(std::size_t offset, const String& problem) const
{
    const XmlPlace place = placeOf(m_tSource.text(), offset);
    throw XmlException(m_sName, place.m_nLine, place.m_nColumn, problem);
}

std::size_t XmlTreeBuilder::currentOffset() const noexcept
{
    const XML_Index index = XML_GetCurrentByteIndex(m_hParser);
    return index < 0 ? 0 : std::min(static_cast<std::size_t>(index), m_tSource.text().size());
}

}  // namespace vel::xml_details
