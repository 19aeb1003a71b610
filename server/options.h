#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "answers/datafiles.h"
#include "net/access.h"
#include "vel/log/logger.h"

namespace server {

/// The program was called wrongly; the text says what is accepted.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The server's command line: where the data is, as the command has it, and how to serve.
struct Options
{
    answers::DataOptions m_tData;
    std::uint16_t m_nPort = 8080;  ///< 0: any that is free
    unsigned m_nThreads = 2;       ///< 1 to 256
    Access m_tAccess;              ///< what is named is added to the loopback names
    vel::LogSeverity m_eLog = vel::kLogWarning;
    bool m_bAccessLog = true;
    bool m_bHelp = false;
};

/// Reads the arguments behind the program's name: "--name value" or "--name=value". Throws UsageError.
Options readOptions(const std::vector<std::string>& arguments);

/// What --help shows.
extern const char* const ksUsage;

}  // namespace server
