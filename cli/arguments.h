#pragma once

#include <memory>
#include <string>
#include <vector>

#include "options.h"
#include "subcommand.h"

namespace cli {

/// What the command line asks for.
struct Request
{
    Options m_tOptions;
    std::unique_ptr<Subcommand> m_pSubcommand;  ///< null when only `m_sText` is to be shown
    std::string m_sText;                        ///< help or version
};

/// Reads the command line without the program's name. Throws UsageError.
Request readArguments(std::vector<std::string> arguments);

}  // namespace cli
