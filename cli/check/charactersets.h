#pragma once

#include "check/findings.h"
#include "check/knowledge.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Judges a file of character set definitions and adds them to those that are known.
void checkCharacterSets(const vel::XmlElement& root, Knowledge& knowledge, Findings& findings);

/// Judges a file of character set lists and adds them to those that are known.
void checkCharacterSetLists(const vel::XmlElement& root, Knowledge& knowledge, Findings& findings);

}  // namespace cli
