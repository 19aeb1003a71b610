#pragma once

#include <cstddef>
#include <optional>

#include "sortdata.h"
#include "vel/nls/sorttable.h"

namespace vel::nls {

/// The order of two texts as their keys have it, without making them; nothing where only keys can tell.
std::optional<int> compareTexts(const SortData& data, const wchar_t* a, std::size_t na, const wchar_t* b,
                                std::size_t nb, SortStrength strength);

}  // namespace vel::nls
