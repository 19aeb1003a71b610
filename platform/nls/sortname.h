#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "icuhandles.h"

namespace vel::nls {

/// What the name of a sort stands for.
struct SortName
{
    /// The canonical BCP 47 tag.
    std::string m_sCanonical;
    /// Equal for the names that have the same order.
    std::string m_sOrder;
    /// ICU's name of the locale whose order it is.
    std::string m_sLocale;
    CollatorPtr m_pCollator;
};

/// Reads the name of a sort other than "binary"; nothing when there is no such sort. SortTable::open states the rules.
/// Throws std::bad_alloc.
std::optional<SortName> resolveSortName(std::string_view name);

/// Whether the name is that of the order of code points, which has no collator.
bool isBinaryName(std::string_view name) noexcept;

/// Whether ICU lists the language, or it is the root's; of a tag or of ICU's name of a locale the first part counts.
bool isSortLanguage(const std::string& name);

}  // namespace vel::nls
