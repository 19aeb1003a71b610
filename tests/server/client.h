#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace tests {

/// What came back: an HTTP answer, taken apart.
struct Reply
{
    unsigned m_nStatus = 0;
    std::map<std::string, std::string> m_tHeaders;  // names in lower case
    std::string m_sBody;

    nlohmann::json json() const { return nlohmann::json::parse(m_sBody); }
};

/// A client that says exactly the bytes that it is told to say. Every read ends after a minute at most, which fails
/// the test by an exception.
class Client
{
public:
    explicit Client(std::uint16_t port);
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// False when the server has closed.
    bool send(std::string_view bytes);
    /// Says that nothing more will be sent.
    void finishSending();
    /// The next answer; nothing when the server closes without one.
    std::optional<Reply> receive(bool withoutBody = false);
    /// Takes at most so many bytes, which are thrown away; how many came, 0 when the server has closed.
    std::size_t readSome(std::size_t most);
    /// Whether there is something to read, or the server has closed; waits for it so long at most.
    bool hasSomething(std::chrono::milliseconds longest);
    /// Whether the server has closed, and nothing is left to read.
    bool isClosed();

private:
    bool readMore();

    int m_nSocket;
    std::string m_sRead;
};

/// What a browser says of a page of this server that sends JSON: whole lines.
inline constexpr const char* ksFromOurPage = "Origin: http://localhost\r\nContent-Type: application/json\r\n";

/// One request on a connection of its own. `headers` are whole lines with their ends.
Reply get(std::uint16_t port, std::string_view target, std::string_view headers = {});

/// The same with a body that comes from our page.
Reply post(std::uint16_t port, std::string_view target, std::string_view body, std::string_view headers = {});

}  // namespace tests
