#pragma once

#include <expat.h>

#include <memory>
#include <string>

namespace bench {

using ExpatParser = std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)>;

/// Reads the file and lets expat walk over it, with handlers that do nothing: the least that any loader of XML has to
/// do. Throws std::runtime_error.
ExpatParser parseBare(const std::string& name);

}  // namespace bench
