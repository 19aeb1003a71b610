#pragma once

#include <string>
#include <vector>

#include "answers/json.h"
#include "answers/keymaker.h"

namespace answers {

/// The lines, UTF-8, in the order of the maker's sort; equal ones keep theirs. `sort`, `strength` and `version` of the
/// keys, and `lines`: each has its `key` in hexadecimal digits, its `text`, and its `place` in the input, from 0.
Json describeSorted(const std::vector<std::string>& lines, KeyMaker& maker);

}  // namespace answers
