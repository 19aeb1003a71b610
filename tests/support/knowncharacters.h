#pragma once

#include <unicode/uchar.h>

namespace testsupport {

/// The Unicode version of the library's own tables of cases (platform/core/casetables.cpp).
constexpr unsigned kUnicodeOfTables = 17;

/// Whether both the library's tables and the ICU that runs know the character: one of them may be of an older Unicode.
inline bool isKnownToBoth(UChar32 character)
{
    UVersionInfo age{};
    u_charAge(character, age);
    return age[0] != 0 && age[0] <= kUnicodeOfTables;
}

/// Whether the library's tables and the ICU that runs say the same of a character's case, as far as both can.
inline bool isSameCase(UChar32 character, UChar32 ours, UChar32 icus)
{
    return ours == icus || !isKnownToBoth(character) || !isKnownToBoth(ours) || !isKnownToBoth(icus);
}

}  // namespace testsupport
