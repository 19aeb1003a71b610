#include "sorting/sortarguments.h"

#include "failures.h"
#include "text.h"

namespace cli {

using vel::i18n::CollationStrength;

void SortArguments::addTo(CLI::App& app, bool isOptional)
{
    app.add_option("--sort", m_sSort,
                   "the order: a language tag with collation keywords, such as sv or de-u-co-phonebk")
        ->required(!isOptional)
        ->type_name("NAME")
        ->take_last();
    app.add_option("--strength", m_sStrength,
                   "what counts: 0 or 4 letters, accents and case (default), 1 letters, 2 letters and accents, 8 also "
                   "what the order sets aside, 16 every difference")
        ->type_name("N")
        ->take_last();
}

vel::String SortArguments::sort() const
{
    return wideText(m_sSort, "--sort");
}

CollationStrength SortArguments::strength() const
{
    return readStrength(m_sStrength, "--strength");
}

CollationStrength readStrength(const std::string& text, const std::string& where)
{
    for (const unsigned each : {0U, 1U, 2U, 4U, 8U, 16U}) {
        if (text == std::to_string(each)) {
            return static_cast<CollationStrength>(each);
        }
    }
    throw UsageError(where + " " + text + ": accepted are 0, 1, 2, 4, 8 and 16");
}

}  // namespace cli
