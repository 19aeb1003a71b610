#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace server {

/// A request as it came. Header fields that were sent several times are joined as HTTP says.
struct HttpRequest
{
    std::string m_sMethod;
    std::string m_sTarget;
    std::string m_sAcceptLanguage;
    std::string m_sAcceptCharset;
    std::string m_sCookie;
    std::string m_sIfNoneMatch;
    std::string m_sBody;
};

/// An answer; the security headers are added where it is sent.
struct HttpAnswer
{
    unsigned m_nStatus = 200;
    std::string m_sContentType;
    std::string m_sBody;
    std::vector<std::pair<std::string, std::string>> m_tHeaders;
    const char* m_pCacheControl = "no-store";
    const char* m_pRoute = "none";  ///< what metrics and log file it under
};

/// What was sent, for metrics and log.
struct Served
{
    std::string_view m_sMethod;  ///< empty when no request could be read
    std::string_view m_sTarget;
    const char* m_pRoute;
    unsigned m_nStatus;
    double m_nSeconds;  ///< from the whole request to the answer's last byte
};

/// Called on the server's threads, by several at once.
using Handler = std::function<HttpAnswer(const HttpRequest&)>;
using Observer = std::function<void(const Served&)>;

/// A request that is refused; caught by the router.
struct Refusal
{
    unsigned m_nStatus;
    const char* m_pCode;  ///< one word for programs, such as "bad-cookie"
    std::string m_sText;  ///< for people; must be UTF-8
    std::vector<std::pair<std::string, std::string>> m_tHeaders = {};
    std::string m_sField = {};  ///< what is at fault among several fields; empty when nothing is to be named
};

/// The answer of a refusal: {"error":{"status":404,"code":"not-found","message":"..."}},
/// with the "field" where one is at fault.
HttpAnswer answerOf(const Refusal& refusal);

}  // namespace server
