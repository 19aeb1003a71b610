#pragma once

#include <cstddef>
#include <optional>

#include "sortdata.h"
#include "vel/nls/sorttable.h"

namespace vel::nls {

/// The key of a short text in which nothing is hard to read, by the shortest way; nothing when KeyWriter has to make
/// it. Writes the same bytes. `out` may be written to in any case, up to `capacity`.
std::optional<std::size_t> makeShortKey(const SortData& data, const unsigned char* utf16be, std::size_t units,
                                        SortStrength strength, unsigned char* out, std::size_t capacity);

}  // namespace vel::nls
