/// \file
/// The character sets that a response can be encoded in: charactersets.xml.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace datapack {

/// A character set of the pack.
struct CharacterSetEntry
{
    std::string_view label;                         ///< WHATWG's or IANA's, in lower case
    std::vector<std::string_view> implementations;  ///< names of ICU's converters, the best first
    bool isSupported;                               ///< in the list "supported": browsers read it
};

/// Every character set, UTF-8 first.
///
/// A label means what browsers take it for, which is often not what its standard says: "iso-8859-1" is windows-1252
/// there. So implementations are named by the converters' own names ("ibm-5348_P100-1997"), never by an alias, whose
/// meaning is ICU's choice: ICU's "windows-1252" has no euro sign in one version of its tables, its "EUC-KR" lacks half
/// of the syllables that browsers read under that label. Which converter comes nearest was found by comparing all of
/// them, character by character, with the tables of the WHATWG Encoding Standard; tests do so again and list what is
/// left.
const std::vector<CharacterSetEntry>& characterSets();

/// The text of charactersets.xml.
///
///     <characterSet name="gbk"><impl>ibm-1386_P100-2001</impl><impl>windows-936-2000</impl></characterSet>
std::string characterSetsFile();

}  // namespace datapack
