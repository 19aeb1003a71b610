#pragma once

#include <memory>
#include <string>

#include "sortdata.h"

namespace vel::nls {

/// Builds the table of a sort. `order` is the locale whose order it is, as ICU names it: the letters of its language
/// get the shortest codes. Throws std::bad_alloc.
std::unique_ptr<const SortData> buildSortData(const UCollator* collator, const std::string& order);

}  // namespace vel::nls
