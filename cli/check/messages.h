#pragma once

#include <unordered_set>

#include "check/findings.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Judges a message file and adds its keys to those that are known.
void checkMessages(const vel::XmlElement& root, std::unordered_set<vel::String>& keys, Findings& findings);

}  // namespace cli
