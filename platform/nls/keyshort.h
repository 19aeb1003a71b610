#pragma once

#include <cstddef>

#include "sortdata.h"
#include "vel/nls/sorttable.h"

namespace vel::nls {

/// Makes the key of any text: the number of its bytes, also where they do not fit. Throws std::bad_alloc.
using LongKeyMaker = std::size_t (*)(const SortData& data, const unsigned char* utf16be, std::size_t byteCount,
                                     SortStrength strength, unsigned char* out, std::size_t capacity);

/// Makes the key of a short text in which nothing is hard to read, by the shortest way; what `otherwise` gives for
/// others. Writes the same bytes as KeyWriter, and returns their number even where they do not fit. `out` may be
/// written to in any case, up to `capacity`. Throws std::bad_alloc.
using ShortKeyMaker = std::size_t (*)(const SortData& data, const unsigned char* utf16be, std::size_t byteCount,
                                      unsigned char* out, std::size_t capacity, LongKeyMaker otherwise);

/// The one for keys of that strength.
ShortKeyMaker shortKeyMaker(const SortData& data, SortStrength strength) noexcept;

}  // namespace vel::nls
