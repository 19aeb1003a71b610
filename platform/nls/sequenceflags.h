#pragma once

#include "sortcontexts.h"
#include "sortpages.h"

namespace vel::nls {

/// Sets `kInner` and `kOpen` of all characters of the sequences: texts can be parted between two characters unless the
/// first is open and the second inner. Marks, which join by rules of their own, have neither for it. Throws
/// std::bad_alloc.
void markSequences(SortPages& pages, const SortContexts& contexts);

}  // namespace vel::nls
