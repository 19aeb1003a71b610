#include "http.h"

#include <string_view>

namespace server {

namespace {

/// The text as JSON's string.
std::string quoted(std::string_view text)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char each : text) {
        const auto byte = static_cast<unsigned char>(each);
        if (byte < 0x20) {
            quoted += {'\\', 'u', '0', '0', kDigits[byte >> 4], kDigits[byte & 15]};
        } else {
            quoted += each == '"' || each == '\\' ? std::string{'\\', each} : std::string(1, each);
        }
    }
    return quoted + "\"";
}

}  // namespace

// Written without a tree of values: what is refused because memory has run out is to need little of it.
HttpAnswer answerOf(const Refusal& refusal)
{
    HttpAnswer answer;
    answer.m_nStatus = refusal.m_nStatus;
    answer.m_sContentType = "application/json; charset=utf-8";
    answer.m_sBody = "{\"error\":{\"status\":" + std::to_string(refusal.m_nStatus) +
                     ",\"code\":" + quoted(refusal.m_pCode) + ",\"message\":" + quoted(refusal.m_sText);
    if (!refusal.m_sField.empty()) {
        answer.m_sBody += ",\"field\":" + quoted(refusal.m_sField);
    }
    answer.m_sBody += "}}\n";
    answer.m_tHeaders = refusal.m_tHeaders;
    return answer;
}

}  // namespace server
