#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vel/core/string.h"

namespace server {

/// The bytes that a percent-encoded text stands for; nothing for a "%" without two hexadecimal digits. In forms "+" is
/// a blank.
///
///     a%20b+c -> "a b c"     %C3%A9 -> "\xC3\xA9"     100% -> nothing
std::optional<std::string> percentDecoded(std::string_view text);

/// The inverse: letters, digits, "-", ".", "_" and "~" stand for themselves.
///
///     "a b" -> a%20b     "\xC3\xA9" -> %C3%A9
std::string percentEncoded(std::string_view bytes);

/// Names and values in the order in which they were sent.
using Parameters = std::vector<std::pair<std::string, vel::String>>;

/// The parameters of "name=value&name=value". Empty parts are skipped. Throws Refusal 400 for what is no
/// percent-encoding or no UTF-8, and for more than kParameters.
///
///     locale=fr-ca&text=1%2F2 -> locale: "fr-ca", text: "1/2"     a -> a: ""     a=%FF -> Refusal
Parameters parametersOf(std::string_view query);

/// The request's target, split at the first "?".
struct Target
{
    std::string m_sPath;  ///< as it was sent, not decoded: no route needs it
    Parameters m_tParameters;

    static Target of(std::string_view target);

    /// The value of a parameter that may stand once; nothing when it is absent. Throws Refusal 400 when it stands
    /// twice.
    std::optional<vel::String> find(std::string_view name) const;
    /// The same, with a default and a greatest length; Refusal 400 for a longer one.
    vel::String text(std::string_view name, std::size_t greatestLength) const;
};

}  // namespace server
