#pragma once

#include <expat.h>

#include <string_view>

#include "vel/core/string.h"
#include "xmlnode.h"

namespace vel::xml_details {

/// What is wrong and how to mend it. `rest`: the text from the fault on; `open`: the innermost open element or null.
String describeFault(XML_Error code, std::string_view rest, const XmlElementNode* open);

}  // namespace vel::xml_details
