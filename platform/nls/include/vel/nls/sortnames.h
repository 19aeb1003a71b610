#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vel/core/api.h"

namespace vel::nls {

/// Names of sorts that come nearest to one that is none, the nearest first: at most three, none where nothing is near.
/// A language is recognised by its tag and by its English name; of one that is known the sorts that it has are named.
/// Any thread. Throws std::bad_alloc.
///
///     "SWEDISH"         -> sv          "en_US"           -> en-US
///     "fr-u-co-phonebk" -> fr, ...     "no such sort"    -> (none)
WEBI18N_API std::vector<std::string> nearestSortNames(std::string_view name);

}  // namespace vel::nls
