#pragma once

#include <set>

#include "check/findings.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Judges a message file and adds its keys to those that are known.
void checkMessages(const vel::XmlElement& root, std::set<vel::String>& keys, Findings& findings);

}  // namespace cli
