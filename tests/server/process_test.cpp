// The program as a process: what happens to its log, its terminal and its signals.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "client.h"
#include "net/descriptor.h"

namespace {

using server::Descriptor;
using tests::Client;

struct Pipe
{
    Pipe()
    {
        int ends[2] = {-1, -1};
        if (pipe2(ends, O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
        m_tRead = Descriptor(ends[0]);
        m_tWrite = Descriptor(ends[1]);
    }

    Descriptor m_tRead;
    Descriptor m_tWrite;
};

/// The program on a free port, without data.
class Program
{
public:
    Program()
    {
        m_nProcess = fork();
        if (m_nProcess == 0) {
            dup2(m_tOutput.m_tWrite.get(), STDOUT_FILENO);
            dup2(m_tLog.m_tWrite.get(), STDERR_FILENO);
            execl(WEBI18N_SERVER, WEBI18N_SERVER, "--port", "0", "--data", "none", static_cast<char*>(nullptr));
            _exit(127);
        }
        m_tOutput.m_tWrite.reset();
        m_tLog.m_tWrite.reset();
        const std::string address = readLine(m_tOutput.m_tRead);
        m_nPort = static_cast<std::uint16_t>(std::stoul(address.substr(address.rfind(':') + 1)));
    }
    ~Program()
    {
        kill(m_nProcess, SIGKILL);
        waitpid(m_nProcess, nullptr, 0);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    static std::string readLine(const Descriptor& from)
    {
        std::string line;
        for (char each = 0; read(from.get(), &each, 1) == 1 && each != '\n';) {
            line += each;
        }
        return line;
    }
    unsigned health() const { return tests::get(m_nPort, "/healthz").m_nStatus; }
    void signal(int number) const { kill(m_nProcess, number); }
    /// The exit status; -1 when it has not ended in a time that is long for everything it may wait for.
    int exitStatus() const
    {
        for (int round = 0; round < 3000; ++round) {
            int status = 0;
            if (waitpid(m_nProcess, &status, WNOHANG) == m_nProcess) {
                return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return -1;
    }

    Pipe m_tOutput;
    Pipe m_tLog;
    pid_t m_nProcess = -1;
    std::uint16_t m_nPort = 0;
};

TEST(Process, servesWhenTheReaderOfItsLogHasGone)
{
    Program program;
    program.m_tLog.m_tRead.reset();
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(program.health(), 200U);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    program.signal(SIGTERM);
    EXPECT_EQ(program.exitStatus(), 0);
}

TEST(Process, servesWhenItsTerminalIsClosed)
{
    const Program program;
    program.signal(SIGHUP);
    EXPECT_EQ(program.health(), 200U);
    program.signal(SIGINT);
    EXPECT_EQ(program.exitStatus(), 0);
}

TEST(Process, neverWaitsForTheReaderOfItsLog)
{
    const Program program;
    Client client(program.m_nPort);
    const std::string request = "GET /" + std::string(500, 'a') + " HTTP/1.1\r\nHost: localhost\r\n\r\n";
    for (int round = 0; round < 2000; ++round) {  // more than pipe and queue hold
        client.send(request);
        ASSERT_EQ(client.receive()->m_nStatus, 404U);
    }
    const std::string metrics = tests::get(program.m_nPort, "/metrics").m_sBody;
    const std::string name = "\nwebi18n_log_dropped_total ";
    ASSERT_NE(metrics.find(name), std::string::npos);
    EXPECT_GT(std::stoul(metrics.substr(metrics.find(name) + name.size())), 0U);
    program.signal(SIGTERM);
    EXPECT_EQ(program.exitStatus(), 0);
}

TEST(Process, logsWhatClientsSayOnOneLineAndAsItIsWritten)
{
    const Program program;
    Client client(program.m_nPort);
    client.send("GET /\xE2\x80\xAEgpj.exe\xC2\x85 HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_EQ(client.receive()->m_nStatus, 404U);
    const std::string first = Program::readLine(program.m_tLog.m_tRead);
    EXPECT_NE(first.find("GET /\\u{202E}gpj.exe\\u{85} 404 "), std::string::npos) << first;
    EXPECT_EQ(first.find("\xE2\x80\xAE"), std::string::npos) << first;
    client.send(std::string(5000, 'M') + " / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 0\r\n" +
                tests::ksFromOurPage + "\r\n");
    EXPECT_EQ(client.receive()->m_nStatus, 405U);
    const std::string second = Program::readLine(program.m_tLog.m_tRead);
    EXPECT_NE(second.find(" " + std::string(16, 'M') + " / 405 "), std::string::npos) << second;
}

}  // namespace
