#pragma once

#include <cstddef>

#include "sortdata.h"
#include "vel/nls/sorttable.h"

namespace vel::nls {

/// What a ShortKeyMaker gives when KeyWriter has to make the key.
inline constexpr std::size_t kNoShortKey = static_cast<std::size_t>(-1);

/// The key of a short text in which nothing is hard to read, by the shortest way; otherwise kNoShortKey. Writes the
/// same bytes as KeyWriter, and returns their number even where they do not fit. `out` may be written to in any case,
/// up to `capacity`. Throws std::bad_alloc.
using ShortKeyMaker = std::size_t (*)(const SortData& data, const unsigned char* utf16be, std::size_t byteCount,
                                      unsigned char* out, std::size_t capacity);

/// The one for keys of that strength.
ShortKeyMaker shortKeyMaker(const SortData& data, SortStrength strength) noexcept;

}  // namespace vel::nls
