/// \file
/// The plainest reader of the XML that the generator writes: elements, attributes, texts and the five entities.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace shipped {

struct Element
{
    std::string name;
    std::map<std::string, std::string> attributes;
    std::string text;  ///< the text directly inside, children's markers left out
    std::vector<Element> children;

    /// The attribute, or the empty text.
    std::string attribute(const std::string& attributeName) const;
};

/// Reads a whole document from a file. \throws std::runtime_error that names the file and the byte offset.
Element readXml(const std::string& path);

/// The bytes of a file. \throws std::runtime_error when it cannot be read.
std::string readBytes(const std::string& path);

}  // namespace shipped
