#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "check/findings.h"
#include "vel/xml/xmlelement.h"

namespace cli {

/// Judges how the attributes of a "Currency" element are written, each by itself.
void checkCurrencyAttributes(const vel::XmlElement& currency, Findings& findings);

/// Judges a picture of amounts; `what` names it in messages. The first thing wrong with it explains the rest.
///
///     "$#" -> (nothing)    "$" -> missing-token    "#" -> missing-token    "$ # $" -> repeated-token
std::optional<Problem> checkPicture(const std::string& what, std::wstring_view picture);

}  // namespace cli
