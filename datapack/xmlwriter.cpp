#include "xmlwriter.h"

namespace datapack {

std::string escapeXml(std::string_view text)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

XmlWriter::XmlWriter() : m_sText("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")
{}

void XmlWriter::startTag(std::string_view name, const Attributes& attributes)
{
    m_sText.append(2 * m_vOpen.size(), ' ');
    m_sText.append("<").append(name);
    for (const auto& [attribute, value] : attributes) {
        m_sText.append(" ").append(attribute).append("=\"").append(escapeXml(value)).append("\"");
    }
}

void XmlWriter::open(std::string_view name, const Attributes& attributes)
{
    startTag(name, attributes);
    m_sText += ">\n";
    m_vOpen.emplace_back(name);
}

void XmlWriter::close()
{
    const std::string name = m_vOpen.back();
    m_vOpen.pop_back();
    m_sText.append(2 * m_vOpen.size(), ' ');
    m_sText.append("</").append(name).append(">\n");
}

void XmlWriter::leaf(std::string_view name, const Attributes& attributes, std::string_view text)
{
    leafWithMarkup(name, attributes, escapeXml(text));
}

void XmlWriter::leafWithMarkup(std::string_view name, const Attributes& attributes, std::string_view markup)
{
    startTag(name, attributes);
    if (markup.empty()) {
        m_sText += "/>\n";
        return;
    }
    m_sText.append(">").append(markup).append("</").append(name).append(">\n");
}

}  // namespace datapack
