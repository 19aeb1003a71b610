#include "command.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "temporaryfolder.h"

namespace clitest {

namespace {

/// Three descriptors for the standard streams of a child.
struct Streams
{
    int m_nIn;
    int m_nOut;
    int m_nError;
};

void enterSetting(const Setting& setting)
{
    if (!setting.m_sFolder.empty() && chdir(setting.m_sFolder.c_str()) != 0) {
        _exit(126);
    }
    if (setting.m_sData.empty()) {
        unsetenv("WEBI18N_DATA");
    } else {
        setenv("WEBI18N_DATA", setting.m_sData.c_str(), 1);
    }
    // Some test drivers ignore it, and a child inherits that.
    std::signal(SIGPIPE, SIG_DFL);
}

int start(const Arguments& arguments, const Setting& setting, const Streams& streams)
{
    std::vector<char*> argv = {const_cast<char*>("webi18n")};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    const std::string program = setting.m_sProgram.empty() ? WEBI18N_COMMAND : setting.m_sProgram;
    const pid_t child = fork();
    if (child == 0) {
        enterSetting(setting);
        dup2(streams.m_nIn, STDIN_FILENO);
        dup2(streams.m_nOut, STDOUT_FILENO);
        if (streams.m_nError >= 0) {
            dup2(streams.m_nError, STDERR_FILENO);
        }
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    return child;
}

/// What an ended process has written, before it is waited for.
std::size_t writtenBy(int child)
{
    std::ifstream in("/proc/" + std::to_string(child) + "/io");
    for (std::string name, value; in >> name >> value;) {
        if (name == "wchar:") {
            return std::stoul(value);
        }
    }
    return 0;
}

/// Its exit status, and what it took.
Outcome waitFor(int child)
{
    Outcome outcome;
    siginfo_t info{};
    while (waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT) < 0) {
        if (errno != EINTR) {
            throw std::runtime_error("the command cannot be waited for");
        }
    }
    outcome.m_nWritten = writtenBy(child);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    outcome.m_nPeakKilobytes = static_cast<std::size_t>(usage.ru_maxrss);
    outcome.m_nExit = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return outcome;
}

std::string contents(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

int openTo(const std::string& file)
{
    return open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
}

}  // namespace

std::vector<std::string> Outcome::lines() const
{
    std::vector<std::string> all;
    std::istringstream in(m_sOut);
    for (std::string line; std::getline(in, line);) {
        all.push_back(line);
    }
    return all;
}

std::vector<Json> Outcome::objects() const
{
    std::vector<Json> all;
    for (const std::string& line : lines()) {
        all.push_back(Json::parse(line));
    }
    return all;
}

Json Outcome::object() const
{
    const std::vector<Json> all = objects();
    EXPECT_EQ(all.size(), 1U) << m_sOut << m_sError;
    return all.empty() ? Json() : all.front();
}

Outcome run(const Arguments& arguments, const Setting& setting)
{
    const testsupport::TemporaryFolder folder;
    folder.write("in", setting.m_sInput);
    const std::string out = (folder.native() / "out").string();
    const std::string error = (folder.native() / "error").string();
    const std::string in = setting.m_sInputFile.empty() ? (folder.native() / "in").string() : setting.m_sInputFile;
    const Streams streams = {open(in.c_str(), O_RDONLY | O_CLOEXEC),
                             openTo(setting.m_sOutput.empty() ? out : setting.m_sOutput), openTo(error)};
    Outcome outcome = waitFor(start(arguments, setting, streams));
    for (const int each : {streams.m_nIn, streams.m_nOut, streams.m_nError}) {
        close(each);
    }
    outcome.m_sOut = contents(out);
    outcome.m_sError = contents(error);
    return outcome;
}

Arguments onFolder(Arguments arguments)
{
    arguments.insert(arguments.begin(), {"--data", dataFile("folder")});
    return arguments;
}

std::string dataFile(const std::string& name)
{
    return std::string(WEBI18N_SOURCE_DIR) + "/data/" + name;
}

std::string packFolder()
{
    return WEBI18N_PACK_DIR;
}

Dialogue::Dialogue(const Arguments& arguments)
{
    int toChild[2];
    int fromChild[2];
    if (pipe2(toChild, O_CLOEXEC) != 0 || pipe2(fromChild, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    m_nChild = start(arguments, {}, {toChild[0], fromChild[1], -1});
    close(toChild[0]);
    close(fromChild[1]);
    m_nToChild = toChild[1];
    m_nFromChild = fromChild[0];
}

Dialogue::~Dialogue()
{
    close(m_nFromChild);
    if (m_nChild >= 0) {
        finish();
    }
}

void Dialogue::send(const std::string& bytes)
{
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t count = write(m_nToChild, bytes.data() + sent, bytes.size() - sent);
        if (count < 0) {
            throw std::runtime_error("the command reads no more");
        }
        sent += static_cast<std::size_t>(count);
    }
}

std::string Dialogue::ask(const std::string& line)
{
    send(line + "\n");
    std::string answer;
    char character = 0;
    while (read(m_nFromChild, &character, 1) == 1 && character != '\n') {
        answer += character;
    }
    return answer;
}

int Dialogue::finish()
{
    close(m_nToChild);
    const int status = waitFor(m_nChild).m_nExit;
    m_nChild = -1;
    return status;
}

}  // namespace clitest
