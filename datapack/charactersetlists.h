/// \file
/// Which character sets a response may have, and which a locale prefers: charactersetlists.xml.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "locales.h"

namespace datapack {

/// The character sets that were customary for a locale's language before UTF-8 was, the commonest first; none where
/// there was no standard one that browsers read.
///
///     de-de -> windows-1252, iso-8859-15, iso-8859-1        zh-hk -> big5-hkscs, big5
///     ja-jp -> shift_jis, euc-jp, iso-2022-jp               hi-in -> (none)
std::vector<std::string_view> customaryCharacterSets(const PackLocale& locale);

/// The text of charactersetlists.xml: the list "supported" with every character set that browsers read, and for every
/// locale the list "locale:<definition>", which the locale's property characterSetList names: UTF-8, then its
/// customary ones.
std::string characterSetLists(const std::vector<PackLocale>& locales);

}  // namespace datapack
