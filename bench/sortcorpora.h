#pragma once

#include <vector>

#include "namecorpora.h"

namespace bench {

using testsupport::SortCorpus;

/// The corpora of names, and a list of English words behind the first. Throws std::runtime_error when the word list is
/// not installed.
const std::vector<SortCorpus>& sortCorpora();

}  // namespace bench
