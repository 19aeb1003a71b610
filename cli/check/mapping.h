#pragma once

#include "check/findings.h"
#include "check/knowledge.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Judges a mapping file. Time is linear in the file.
void checkMapping(const vel::XmlElement& root, const Knowledge& knowledge, Findings& findings);

}  // namespace cli
