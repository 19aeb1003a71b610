/// \file
/// Writes an XML document into memory: UTF-8, one element a line, indented by two blanks, line feeds.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace datapack {

/// The attributes of an element in the order in which they are written.
using Attributes = std::vector<std::pair<std::string_view, std::string_view>>;

/// Builds one document. Names are written as given; values and texts are escaped. One thread.
///
///     XmlWriter writer;
///     writer.open("list", {{"name", "a<b"}});
///     writer.leaf("item", {}, "x & y");
///     writer.close();
///     writer.text()  -> <?xml version="1.0" encoding="UTF-8"?>
///                       <list name="a&lt;b">
///                         <item>x &amp; y</item>
///                       </list>
class XmlWriter
{
public:
    XmlWriter();

    /// Starts an element that will hold other elements.
    void open(std::string_view name, const Attributes& attributes = {});

    /// Ends the element opened last. There must be one.
    void close();

    /// Writes an element that holds `text` only. An empty text gives an empty-element tag.
    void leaf(std::string_view name, const Attributes& attributes, std::string_view text);

    /// Writes an element whose content is `markup` as it stands, which must be well-formed.
    void leafWithMarkup(std::string_view name, const Attributes& attributes, std::string_view markup);

    /// The document so far; complete when every opened element is closed.
    const std::string& text() const { return m_sText; }

private:
    void startTag(std::string_view name, const Attributes& attributes);

    std::string m_sText;
    std::vector<std::string> m_vOpen;
};

/// Escapes what may not stand bare in a text or an attribute value: `a<b & "c"` -> `a&lt;b &amp; &quot;c&quot;`
std::string escapeXml(std::string_view text);

}  // namespace datapack
