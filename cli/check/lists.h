#pragma once

#include "check/findings.h"
#include "check/knowledge.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Judges a locale lists file.
void checkLists(const vel::XmlElement& root, const Knowledge& knowledge, Findings& findings);

/// The names in the lists "supported" that are defined.
NameSet supportedNames(const vel::XmlElement& root, const Knowledge& knowledge);

}  // namespace cli
