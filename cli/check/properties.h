#pragma once

#include "check/findings.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Judges one element below a definition by itself: its name, and its value for what the name stands for. Adds at most
/// one finding for the element, and one for each of its entries.
void checkProperty(const vel::XmlElement& element, Findings& findings);

}  // namespace cli
