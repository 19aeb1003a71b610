#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "vel/core/string.h"
#include "vel/log/logger.h"

namespace cli {

/// The options that every subcommand takes.
struct Options
{
    std::optional<vel::String> m_sData;  ///< a folder, or "none"
    vel::String m_sConfig;
    std::vector<std::pair<vel::String, vel::String>> m_tSettings;
    std::vector<vel::String> m_tDefinitions;
    std::vector<vel::String> m_tCurrencies;
    vel::String m_sMapping;
    std::optional<vel::LogSeverity> m_eLog;
    bool m_bJson = false;
    bool m_bTextAfterMark = false;  ///< something stands after "--"
};

}  // namespace cli
