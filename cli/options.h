#pragma once

#include <optional>

#include "answers/datafiles.h"
#include "vel/log/logger.h"

namespace cli {

/// The options that every subcommand takes.
struct Options : answers::DataOptions
{
    std::optional<vel::LogSeverity> m_eLog;
    bool m_bJson = false;
    bool m_bTextAfterMark = false;  ///< something stands after "--"
};

}  // namespace cli
