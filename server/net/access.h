#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "http.h"

namespace server {

/// By which names the server may be called, and from which other sites. A browser sends what any page tells it to, also
/// to a server of its own machine: these are what it says truly of where a request goes and where it comes from.
struct Access
{
    /// Names and addresses as they stand in Host, without a port: any port is taken. An IPv6 address has its brackets.
    std::vector<std::string> m_tHosts = {"localhost", "127.0.0.1", "[::1]"};
    /// Sites beside the server's own, as they stand in Origin.
    std::vector<std::string> m_tOrigins = {};
};

/// What a request says of where it goes, where it comes from and what it brings: the values of each field, in order.
struct Claims
{
    std::string_view m_sMethod;
    std::vector<std::string_view> m_tHosts;
    std::vector<std::string_view> m_tOrigins;
    std::vector<std::string_view> m_tContentTypes;
};

/// Why the request is not taken: 400 without exactly one Host, 421 for one that is none of ours; and where the method
/// is neither GET nor HEAD, 403 without exactly one Origin that is ours or configured, 415 without exactly one media
/// type, application/json (a charset may be named, if it is UTF-8). Nothing when it is taken.
///
///     Host: LOCALHOST:8080 -> taken          Host: example.com -> 421        Host: localhost:x -> 421
///     POST from http://localhost:8080 to localhost:8080 -> taken             from http://localhost:81 -> 403
///     application/json; charset=utf-8 -> taken       text/plain -> 415
std::optional<Refusal> accessFault(const Claims& claims, const Access& access);

}  // namespace server
