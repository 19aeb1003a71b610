#include "vel/xml/xmldocument.h"

#include <optional>
#include <utility>

#include "vel/core/assertion.h"
#include "xmlnode.h"
#include "xmlparser.h"
#include "xmlsource.h"
#include "xmltreebuilder.h"

namespace vel {

using xml_details::XmlParserPointer;
using xml_details::XmlSource;
using xml_details::XmlTreeBuilder;

struct XmlDocument::Storage
{
    xml_details::XmlMemory m_tMemory;
    std::optional<XmlRemark> m_tEncodingRemark;

    explicit Storage(std::size_t nBytes) : m_tMemory(nBytes) {}
};

XmlDocument::XmlDocument() noexcept = default;
XmlDocument::~XmlDocument() = default;

XmlDocument::XmlDocument(XmlDocument&& other) noexcept
    : m_pStorage(std::move(other.m_pStorage)), m_pRoot(std::exchange(other.m_pRoot, nullptr))
{}

XmlDocument& XmlDocument::operator=(XmlDocument&& other) noexcept
{
    m_pStorage = std::move(other.m_pStorage);
    m_pRoot = std::exchange(other.m_pRoot, nullptr);
    return *this;
}

XmlDocument XmlDocument::load(const FilePath& file, const XmlLimits& limits)
{
    return read(file.toString(), limits, [&](XmlSource& source) { source.readFile(file); });
}

XmlDocument XmlDocument::parse(std::string_view bytes, const XmlLimits& limits, const String& name)
{
    return read(name, limits, [&](XmlSource& source) { source.takeBytes(bytes); });
}

template <typename Fill>
XmlDocument XmlDocument::read(const String& name, const XmlLimits& limits, Fill fill)
{
    const XmlParserPointer parser = xml_details::createParser();
    XmlSource source(parser.get(), limits, name);
    fill(source);
    XmlDocument document;
    document.m_pStorage = std::make_unique<Storage>(source.text().size());
    XmlTreeBuilder builder(parser.get(), source, limits, name, document.m_pStorage->m_tMemory);
    document.m_pRoot = builder.build();
    document.m_pStorage->m_tEncodingRemark = std::move(builder.encodingRemark());
    return document;
}

const XmlElement& XmlDocument::root() const
{
    return *NonOwningPtr<const XmlElement>(m_pRoot);
}

std::vector<NonOwningPtr<const XmlElement>> XmlDocument::select(const XmlPath& path) const
{
    const auto* root = m_pRoot == nullptr ? nullptr : &xml_details::XmlElementNode::of(*m_pRoot);
    return xml_details::selectAmong(root, path, XmlElement::kNoLimit);
}

const XmlRemark* XmlDocument::encodingRemark() const noexcept
{
    return m_pStorage == nullptr || !m_pStorage->m_tEncodingRemark ? nullptr : &*m_pStorage->m_tEncodingRemark;
}

std::size_t XmlDocument::memoryUsed() const noexcept
{
    if (m_pStorage == nullptr) {
        return 0;
    }
    const xml_details::XmlMemory& memory = m_pStorage->m_tMemory;
    return sizeof(Storage) + memory.m_tArena.bytes() + memory.m_nTextLength * sizeof(wchar_t);
}

}  // namespace vel
