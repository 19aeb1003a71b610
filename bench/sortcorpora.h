#pragma once

#include <string>
#include <vector>

namespace bench {

/// Texts of one kind, and the sort for them.
struct SortCorpus
{
    std::string m_sName;
    std::string m_sTag;  ///< BCP 47
    std::vector<std::u16string> m_tTexts;
};

/// The names of languages, scripts, regions, currencies and time zones in eleven languages as ICU has them, a list of
/// English words, ASCII alone, and names of all these languages mixed; in no order. Throws std::runtime_error when the
/// word list is not installed.
const std::vector<SortCorpus>& sortCorpora();

}  // namespace bench
