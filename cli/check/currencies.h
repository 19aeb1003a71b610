#pragma once

#include "check/findings.h"
#include "check/knowledge.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Judges a currencies file and adds its symbols to those that are known.
void checkCurrencies(const vel::XmlElement& root, Knowledge& knowledge, Findings& findings);

}  // namespace cli
