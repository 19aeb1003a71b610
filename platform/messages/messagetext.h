#pragma once

#include <optional>

#include "vel/core/string.h"
#include "vel/xml/xmlelement.h"

namespace vel::messages_details {

/// The key that a "message" element refers to when all it holds, but for white space, is one "ref" element with a key.
std::optional<String> referencedKey(const XmlElement& message);

/// The text of a "message" element: its character data as it is, with `<velm:param insert="N"/>` in the place of each
/// "param" element that names an insert by one to four digits. Other elements leave their text only.
///
///     Total: %1                                   -> Total: %1
///     <velm:param insert="1"/> of <b>many</b>     -> <velm:param insert="1"/> of many
///     a <x:param insert="2"></x:param> b          -> a <velm:param insert="2"/> b
///     5 &lt; 6, 100 % sure                        -> 5 < 6, 100 % sure
String messageText(const XmlElement& message);

}  // namespace vel::messages_details
