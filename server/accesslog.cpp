#include "accesslog.h"

#include <string>

#include "call.h"
#include "spdlogsink.h"
#include "vel/core/message.h"

namespace server {

namespace {

// Of what is long the beginning tells enough.
constexpr std::size_t kMethodBytes = 16;
constexpr std::size_t kTargetBytes = 512;

}  // namespace

void logAccess(const Served& served)
{
    const vel::ScopedLogSource source(klsAccess);
    if (!vel::Logger::isEnabled(vel::kLogInformation)) {
        return;
    }
    const std::string method = served.m_sMethod.empty() ? "-" : printable(served.m_sMethod.substr(0, kMethodBytes));
    const std::string target = served.m_sTarget.empty() ? "-" : printable(served.m_sTarget.substr(0, kTargetBytes));
    const std::string line =
        method + " " + target + " " + std::to_string(served.m_nStatus) + " " + std::to_string(served.m_nSeconds);
    VEL_LOG(vel::kLogInformation, vel::Message::text(*vel::stringFromUtf8(line)));
}

}  // namespace server
