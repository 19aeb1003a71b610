#include "net/responsehead.h"

#include <ostream>  // which the next one needs and does not include

#include <algorithm>
#include <boost/beast/http/status.hpp>
#include <stdexcept>

namespace server {

namespace {

constexpr std::string_view ksSecurity =
    "Content-Security-Policy: default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; "
    "img-src 'self' data:; base-uri 'none'; form-action 'self'; frame-ancestors 'none'\r\n"
    "X-Content-Type-Options: nosniff\r\n"
    "X-Frame-Options: DENY\r\n"
    "Referrer-Policy: no-referrer\r\n";

void addField(std::string_view name, std::string_view value, std::string& head)
{
    if (!isFieldValue(value)) {
        throw std::invalid_argument("a field of the header has a value that is none");
    }
    head.append(name).append(": ").append(value).append("\r\n");
}

}  // namespace

bool isFieldValue(std::string_view text) noexcept
{
    return std::all_of(text.begin(), text.end(), [](char each) { return each >= 0x20 && each < 0x7F; });
}

std::string headOf(const HttpAnswer& answer, bool keepAlive)
{
    const auto reason = boost::beast::http::obsolete_reason(static_cast<boost::beast::http::status>(answer.m_nStatus));
    std::string head = "HTTP/1.1 " + std::to_string(answer.m_nStatus) + " ";
    head.append(reason.data(), reason.size()).append("\r\n");
    if (!answer.m_sContentType.empty()) {
        addField("Content-Type", answer.m_sContentType, head);
    }
    addField("Cache-Control", answer.m_pCacheControl, head);
    head += ksSecurity;
    for (const auto& [name, value] : answer.m_tHeaders) {
        addField(name, value, head);
    }
    if (!keepAlive) {
        addField("Connection", "close", head);
    }
    if (answer.m_nStatus != 304) {
        addField("Content-Length", std::to_string(answer.m_sBody.size()), head);
    }
    return head + "\r\n";
}

}  // namespace server
