#pragma once

#include <memory>

#include "answers/keymaker.h"

namespace cli {

using answers::KeyMaker;

/// For the sort that was given with --sort. Throws UsageError when there is none of that name.
std::unique_ptr<KeyMaker> makeKeyMaker(const vel::String& sort, vel::i18n::CollationStrength strength);

}  // namespace cli
