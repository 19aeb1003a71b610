#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "http.h"
#include "vel/core/string.h"

namespace server {

/// What is wanted of the JSON object in a request's body, and what was found of it.
struct WantedFields
{
    /// By name; nothing for what is absent or null.
    std::map<std::string, std::optional<vel::String>, std::less<>> m_tTexts;
    /// The field that is an array; empty for none.
    std::string_view m_sArray;
    std::vector<std::string> m_tArray;
};

/// The refusal of a field: "The field NAME is not EXPECTED."
Refusal badField(std::string_view name, const std::string& expected);

/// Reads a body from its beginning to its end, once, and keeps what is wanted. Throws Refusal 400 as Fields says.
///
///     {"sort":"sv","lines":["a"],"x":[{}]}, wanted sort and the array lines -> sort: sv, lines: a
///     {"sort":1} -> sort: 1       {"sort":null} -> none       {"sort":[]}, {"sort":"a","sort":"b"}, [], {"a":1 ->
///     Refusal
void readJsonBody(const std::string& body, WantedFields& wanted);

}  // namespace server
