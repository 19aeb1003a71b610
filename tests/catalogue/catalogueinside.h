#pragma once

#include <string>
#include <vector>

#include "webi18n/localetaglookup.h"

namespace testsupport {

// The keys under which a catalogue holds its locales, in order. No operation returns them: they are what keeps two
// spellings of a name one entry.

/// Of every definition that was loaded.
std::vector<std::string> keysOfAll(const vel::LocaleTagLookup& lookup);
/// Of the allowed ones.
std::vector<std::string> keysOfAllowed(const vel::LocaleTagLookup& lookup);

}  // namespace testsupport
