#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "vel/core/string.h"
#include "webi18n/collator.h"

namespace cli {

/// The options that name an order.
class SortArguments
{
public:
    /// Adds --sort, which is required unless `isOptional`, and --strength.
    void addTo(CLI::App& app, bool isOptional = false);

    bool isGiven() const noexcept { return !m_sSort.empty(); }
    /// Throws UsageError for text that is no UTF-8.
    vel::String sort() const;
    /// Throws UsageError for any other value than 0, 1, 2, 4, 8 and 16.
    vel::i18n::CollationStrength strength() const;

private:
    std::string m_sSort;
    std::string m_sStrength = "0";
};

/// "0" to "16" as a strength; throws UsageError, which names `where`.
vel::i18n::CollationStrength readStrength(const std::string& text, const std::string& where);

}  // namespace cli
