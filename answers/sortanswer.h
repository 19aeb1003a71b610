#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "answers/json.h"
#include "answers/keymaker.h"
#include "answers/toolarge.h"

namespace answers {

/// The lines, UTF-8, in the order of the maker's sort; equal ones keep theirs. `sort`, `strength` and `version` of the
/// keys, and `lines`: each has its `key` in hexadecimal digits, its `text`, and its `place` in the input, from 0.
/// Throws TooLarge as soon as keys and texts alone would take more than so many bytes of JSON.
Json describeSorted(const std::vector<std::string>& lines, KeyMaker& maker, std::size_t mostBytes);

}  // namespace answers
