#pragma once

#include <string>
#include <vector>

namespace testsupport {

/// Texts of one kind, and the sort for them.
struct SortCorpus
{
    std::string m_sName;
    std::string m_sTag;  ///< BCP 47
    std::vector<std::u16string> m_tTexts;
};

/// The names of languages, scripts, regions, currencies and time zones in ten languages as ICU has them, before them
/// those of the first that are ASCII alone, after them names of all these languages mixed; in no order.
std::vector<SortCorpus> nameCorpora();

/// Brings the texts out of order, always into the same one, each once.
void shuffleTexts(std::vector<std::u16string>& texts);

}  // namespace testsupport
