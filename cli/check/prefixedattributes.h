#pragma once

#include "check/findings.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Finds the attributes of a file's elements that would be read if they had no prefix, such as "x:tag" of a "Currency".
/// One that stands alone is taken for an accident; beside the attribute itself it is only told.
void checkPrefixedAttributes(const vel::XmlElement& root, Findings& findings);

}  // namespace cli
