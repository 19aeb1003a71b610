#pragma once

#include <string_view>
#include <vector>

namespace cli {

/// What browsers take a label for.
struct WebEncoding
{
    std::string_view m_sName;                     ///< its name in the WHATWG Encoding Standard
    std::vector<std::string_view> m_vConverters;  ///< ICU's converters for it by their own names, the best first;
                                                  ///< none: browsers do not take it, or ICU does not have it
};

/// Null for a label that browsers do not know. Any letter case.
///
///     "Latin1" -> windows-1252, by ibm-5348_P100-1997    "sjis" -> shift_jis    "ibm500" -> (null)
const WebEncoding* webEncodingOf(std::wstring_view label);

/// Whether browsers know the label or IANA registers it.
bool isRegisteredLabel(std::wstring_view label);

}  // namespace cli
