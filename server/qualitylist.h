#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace server {

/// One entry of an Accept-Language or Accept-Charset header.
struct QualityEntry
{
    std::string m_sName;
    unsigned m_nThousandths;  ///< its q value, 0 to 1000
};

/// What was sent and could not be taken, and why.
struct MalformedEntry
{
    std::string m_sText;  ///< as it was sent, any bytes
    const char* m_pReason;
};

/// The entries best first, in the order of the header where q is the same. At most kQualityEntries are taken.
struct QualityList
{
    std::vector<QualityEntry> m_tEntries;
    std::vector<MalformedEntry> m_tMalformed;
};

/// Reads an Accept-Language header: language ranges of 1 to 8 letters, then digits and letters, joined by "-".
///
///     fr-CA,fr;q=0.9    -> fr-CA 1000, fr 900
///     en;q=0.5, de      -> de 1000, en 500
///     fr;q=1.5, de;q=0  -> de 0; malformed: "fr;q=1.5"
///     , ,*;q=0.001      -> * 1
///     fr_CA             -> malformed
QualityList parseAcceptLanguage(std::string_view header);

/// Reads an Accept-Charset header: names as HTTP's tokens.
QualityList parseAcceptCharset(std::string_view header);

}  // namespace server
