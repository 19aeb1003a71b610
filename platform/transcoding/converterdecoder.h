#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "vel/core/string.h"

namespace vel::transcoding_details {

/// Decodes a whole text through ICU's converter of that name, which exists; appends to `out`. Result: nothing, or the
/// offset of the first sequence at fault.
std::optional<std::size_t> decodeByConverter(const std::string& icuName, const char* bytes, std::size_t size,
                                             String& out);

}  // namespace vel::transcoding_details
