#pragma once

#include "check/findings.h"
#include "check/knowledge.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Judges the definitions below the root and adds them to what is known, as the catalogue would: later definitions are
/// based on earlier ones. Time is linear in the file.
void checkDefinitions(const vel::XmlElement& root, Knowledge& knowledge, Findings& findings);

}  // namespace cli
