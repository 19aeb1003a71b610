#include "net/access.h"

#include <algorithm>

namespace server {

namespace {

char lowerCase(char character) noexcept
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

bool isSame(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowerCase(x) == lowerCase(y); });
}

bool isOneOf(std::string_view text, const std::vector<std::string>& texts)
{
    return std::any_of(texts.begin(), texts.end(), [&](const std::string& each) { return isSame(text, each); });
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
    const std::size_t end = text.find_last_not_of(" \t") + 1;
    return begin < end ? text.substr(begin, end - begin) : std::string_view();
}

bool isPort(std::string_view text)
{
    return text.size() <= 5 && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Host's value without its port; empty when it is no such value.
std::string_view nameIn(std::string_view host)
{
    const std::size_t colon = host.find(':', host.starts_with('[') ? std::min(host.find(']'), host.size()) : 0);
    if (colon == std::string_view::npos) {
        return host;
    }
    return isPort(host.substr(colon + 1)) ? host.substr(0, colon) : std::string_view();
}

/// Whether the page stands on the host that is asked. It may have come through a proxy that speaks TLS.
bool isFromHost(std::string_view origin, std::string_view host)
{
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (origin.starts_with(scheme) && isSame(origin.substr(scheme.size()), host)) {
            return true;
        }
    }
    return false;
}

/// application/json, as UTF-8 if it says so.
bool isJson(std::string_view type)
{
    const std::size_t semicolon = std::min(type.find(';'), type.size());
    if (!isSame(trimmed(type.substr(0, semicolon)), "application/json")) {
        return false;
    }
    const std::string_view parameter = trimmed(type.substr(std::min(semicolon + 1, type.size())));
    return parameter.empty() || isSame(parameter, "charset=utf-8") || isSame(parameter, "charset=\"utf-8\"");
}

std::optional<Refusal> originFault(const Claims& claims, const Access& access)
{
    if (claims.m_tOrigins.size() != 1 || !(isFromHost(claims.m_tOrigins.front(), claims.m_tHosts.front()) ||
                                           isOneOf(claims.m_tOrigins.front(), access.m_tOrigins))) {
        return Refusal{403, "wrong-origin", "What is sent must come from this server's page: its Origin is not ours."};
    }
    return std::nullopt;
}

}  // namespace

std::optional<Refusal> accessFault(const Claims& claims, const Access& access)
{
    if (claims.m_tHosts.size() != 1) {
        return Refusal{400, "bad-host", "The field Host must stand once."};
    }
    if (!isOneOf(nameIn(claims.m_tHosts.front()), access.m_tHosts)) {
        return Refusal{421, "wrong-host", "There is no such host here."};
    }
    if (claims.m_sMethod == "GET" || claims.m_sMethod == "HEAD") {
        return std::nullopt;
    }
    if (auto fault = originFault(claims, access)) {
        return fault;
    }
    if (claims.m_tContentTypes.size() != 1 || !isJson(claims.m_tContentTypes.front())) {
        return Refusal{415, "wrong-media-type", "What is sent must be application/json, in UTF-8."};
    }
    return std::nullopt;
}

}  // namespace server
