#include "serverload.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>
#include <utility>

namespace bench {

namespace {

constexpr std::size_t kThreads = 2;
constexpr std::size_t kConnections = 8;  // a thread

using Clock = std::chrono::steady_clock;

double nanosecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double, std::nano>(Clock::now() - begin).count();
}

std::string requestFor(const std::string& target)
{
    return "GET " + target +
           " HTTP/1.1\r\nHost: localhost\r\nUser-Agent: webi18n_bench\r\nAccept: */*\r\n"
           "Accept-Language: fr-CA,fr;q=0.9,en;q=0.8\r\nAccept-Encoding: identity\r\n\r\n";
}

int connectTo(std::uint16_t port)
{
    const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(connection);
        throw std::runtime_error("no connection to the server");
    }
    return connection;
}

void sendAll(int connection, const std::string& text)
{
    if (send(connection, text.data(), text.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(text.size())) {
        throw std::runtime_error("the server takes no request");
    }
}

std::size_t receiveSome(int connection, char* buffer, std::size_t size)
{
    const ssize_t got = recv(connection, buffer, size, 0);
    if (got <= 0) {
        throw std::runtime_error("the server gives no answer");
    }
    return static_cast<std::size_t>(got);
}

/// A whole answer with a Content-Length.
std::string receiveAnswer(int connection)
{
    constexpr const char* kLength = "Content-Length: ";
    std::string answer;
    char buffer[16384];
    std::size_t size = std::string::npos;
    while (answer.size() < size) {
        answer.append(buffer, receiveSome(connection, buffer, sizeof buffer));
        if (const std::size_t end = answer.find("\r\n\r\n"); end != std::string::npos) {
            const std::size_t length = answer.find(kLength);
            size = end + 4 + std::stoul(answer.substr(length + std::char_traits<char>::length(kLength)));
        }
    }
    return answer;
}

/// The line that the server prints when it listens.
std::string readLine(int input)
{
    std::string line;
    for (char each = 0; read(input, &each, 1) == 1 && each != '\n';) {
        line += each;
    }
    return line;
}

}  // namespace

ServerProcess::ServerProcess(const std::string& data)
{
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    m_nProcess = fork();
    if (m_nProcess == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        execl(WEBI18N_BENCH_SERVER, "webi18n-server", "--port", "0", "--access-log", "off", "--data", data.c_str(),
              static_cast<char*>(nullptr));
        _exit(127);
    }
    close(ends[1]);
    const std::string address = readLine(ends[0]);
    close(ends[0]);
    if (address.empty()) {
        throw std::runtime_error("the server does not start");
    }
    m_nPort = static_cast<std::uint16_t>(std::stoul(address.substr(address.rfind(':') + 1)));
}

ServerProcess::~ServerProcess()
{
    if (m_nProcess > 0) {
        kill(m_nProcess, SIGTERM);
        waitpid(m_nProcess, nullptr, 0);
    }
}

ServerLoad::ServerLoad(std::uint16_t port, std::string target) : m_sRequest(requestFor(target))
{
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        m_tSockets.emplace_back();
        for (std::size_t each = 0; each < kConnections; ++each) {
            m_tSockets.back().push_back(connectTo(port));
        }
    }
    const int first = m_tSockets.front().front();
    sendAll(first, m_sRequest);
    const std::string answer = receiveAnswer(first);
    if (!answer.starts_with("HTTP/1.1 200 ")) {
        throw std::runtime_error("the server refuses " + target);
    }
    m_nAnswerBytes = answer.size();
}

ServerLoad::~ServerLoad()
{
    for (const auto& sockets : m_tSockets) {
        for (const int each : sockets) {
            close(each);
        }
    }
}

double ServerLoad::nanosecondsPerRequest(std::size_t requests)
{
    const std::size_t rounds = requests / (kThreads * kConnections) + 1;
    std::atomic<bool> isFaulty = false;
    std::vector<std::thread> threads;
    const auto begin = Clock::now();
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            try {
                ask(thread, rounds);
            } catch (const std::exception&) {
                isFaulty = true;
            }
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    const double took = nanosecondsSince(begin);
    if (isFaulty) {
        throw std::runtime_error("the server gave no answer, or another one");
    }
    return took / static_cast<double>(rounds * kThreads * kConnections);
}

/// A request on each connection, then the answers: the server always has something to do.
void ServerLoad::ask(std::size_t thread, std::size_t rounds)
{
    char buffer[16384];
    for (std::size_t round = 0; round < rounds; ++round) {
        for (const int each : m_tSockets[thread]) {
            sendAll(each, m_sRequest);
        }
        for (const int each : m_tSockets[thread]) {
            for (std::size_t left = m_nAnswerBytes; left != 0;) {
                const std::size_t got = receiveSome(each, buffer, sizeof buffer);
                if (got > left) {
                    throw std::runtime_error("the answer is longer than the first one");
                }
                left -= got;
            }
        }
    }
}

double nanosecondsToFirstAnswer(const std::string& data)
{
    const auto begin = Clock::now();
    const ServerProcess server(data);
    const int connection = connectTo(server.port());
    sendAll(connection, requestFor("/api/resolve"));
    receiveAnswer(connection);
    const double took = nanosecondsSince(begin);
    close(connection);
    return took;
}

}  // namespace bench
