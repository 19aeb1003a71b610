#pragma once

#include <string>
#include <string_view>

#include "http.h"

namespace server {

/// Whether a text may be the value of a header's field: printable ASCII and blanks, so that no text begins a field or
/// an answer of its own.
///
///     "application/json" -> yes       "utf-8\r\nSet-Cookie: a=b" -> no        "caf\xC3\xA9" -> no
bool isFieldValue(std::string_view text) noexcept;

/// The answer's status line and header, with the empty line behind; the security headers are among them. Throws
/// std::invalid_argument for a field whose value is none.
std::string headOf(const HttpAnswer& answer, bool keepAlive);

}  // namespace server
