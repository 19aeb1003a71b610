#include "client.h"

#include <arpa/inet.h>
#include <sys/poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <stdexcept>

namespace tests {

Client::Client(std::uint16_t port) : m_nSocket(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const timeval longest{60, 0};
    setsockopt(m_nSocket, SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof longest);
    setsockopt(m_nSocket, SOL_SOCKET, SO_SNDTIMEO, &longest, sizeof longest);
    if (connect(m_nSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::runtime_error("no connection");
    }
}

Client::~Client()
{
    close(m_nSocket);
}

bool Client::send(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(m_nSocket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

void Client::finishSending()
{
    shutdown(m_nSocket, SHUT_WR);
}

bool Client::readMore()
{
    char buffer[16384];
    const ssize_t count = recv(m_nSocket, buffer, sizeof buffer, 0);
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
        throw std::runtime_error("the server neither answers nor closes");
    }
    m_sRead.append(buffer, count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
}

std::size_t Client::readSome(std::size_t most)
{
    std::string bytes(most, '\0');
    const ssize_t count = recv(m_nSocket, bytes.data(), most, 0);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

bool Client::hasSomething(std::chrono::milliseconds longest)
{
    pollfd waiting{m_nSocket, POLLIN, 0};
    return !m_sRead.empty() || poll(&waiting, 1, static_cast<int>(longest.count())) > 0;
}

bool Client::isClosed()
{
    return m_sRead.empty() && !readMore();
}

std::optional<Reply> Client::receive(bool withoutBody)
{
    while (m_sRead.find("\r\n\r\n") == std::string::npos) {
        if (!readMore()) {
            if (!m_sRead.empty()) {
                throw std::runtime_error("half an answer: " + m_sRead);
            }
            return std::nullopt;
        }
    }
    Reply reply;
    std::string head = m_sRead.substr(0, m_sRead.find("\r\n\r\n") + 2);
    m_sRead.erase(0, head.size() + 2);
    reply.m_nStatus = static_cast<unsigned>(std::stoul(head.substr(head.find(' '))));
    for (head.erase(0, head.find('\n') + 1); !head.empty(); head.erase(0, head.find('\n') + 1)) {
        const std::size_t colon = head.find(':');
        std::string name = head.substr(0, colon);
        for (char& each : name) {
            each = static_cast<char>(std::tolower(static_cast<unsigned char>(each)));
        }
        reply.m_tHeaders[name] = head.substr(colon + 2, head.find('\r') - colon - 2);
    }
    const auto length = reply.m_tHeaders.find("content-length");
    const std::size_t size =
        withoutBody || length == reply.m_tHeaders.end() ? 0 : static_cast<std::size_t>(std::stoul(length->second));
    while (m_sRead.size() < size) {
        if (!readMore()) {
            throw std::runtime_error("the body is cut off");
        }
    }
    reply.m_sBody = m_sRead.substr(0, size);
    m_sRead.erase(0, size);
    return reply;
}

Reply get(std::uint16_t port, std::string_view target, std::string_view headers)
{
    Client client(port);
    client.send("GET " + std::string(target) + " HTTP/1.1\r\nHost: localhost\r\n" + std::string(headers) + "\r\n");
    return client.receive().value();
}

Reply post(std::uint16_t port, std::string_view target, std::string_view body, std::string_view headers)
{
    Client client(port);
    client.send("POST " + std::string(target) + " HTTP/1.1\r\nHost: localhost\r\n" + ksFromOurPage +
                "Content-Length: " + std::to_string(body.size()) + "\r\n" + std::string(headers) + "\r\n" +
                std::string(body));
    return client.receive().value();
}

}  // namespace tests
