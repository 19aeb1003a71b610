#include "childprocess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <exception>
#include <stdexcept>

namespace bench {

namespace {

/// The form that the system takes, which refers to the texts.
std::vector<char*> argumentList(const std::vector<std::string>& command)
{
    std::vector<char*> list;
    for (const std::string& each : command) {
        list.push_back(const_cast<char*>(each.c_str()));
    }
    list.push_back(nullptr);
    return list;
}

void waitFor(pid_t child)
{
    int status = 1;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("a measuring process failed");
    }
}

/// Forks; the child writes to the pipe in `writeResult` and ends. Returns what it wrote.
std::string outputOfChild(const std::function<bool(int output)>& writeResult)
{
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        _exit(writeResult(ends[1]) ? 0 : 1);
    }
    close(ends[1]);
    std::string text;
    char block[256];
    for (ssize_t got = 0; (got = read(ends[0], block, sizeof block)) > 0;) {
        text.append(block, static_cast<std::size_t>(got));
    }
    close(ends[0]);
    waitFor(child);
    return text;
}

bool measureAndWrite(const std::function<double()>& measure, int output) noexcept
{
    try {
        const std::string text = std::to_string(measure());
        return write(output, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

double inChildProcess(const std::function<double()>& measure)
{
    return std::stod(outputOfChild([&](int output) { return measureAndWrite(measure, output); }));
}

double nanosecondsToRun(const std::vector<std::string>& command, const std::string& outputFile)
{
    using Clock = std::chrono::steady_clock;
    const std::vector<char*> list = argumentList(command);
    const auto begin = Clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const int output = open(outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (output >= 0 && dup2(output, STDOUT_FILENO) >= 0) {
            execvp(list.front(), list.data());
        }
        _exit(127);
    }
    waitFor(child);
    return std::chrono::duration<double, std::nano>(Clock::now() - begin).count();
}

double numberPrintedBy(const std::string& program, const std::vector<std::string>& arguments)
{
    std::vector<std::string> command{program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const std::vector<char*> list = argumentList(command);
    return std::stod(outputOfChild([&](int output) {
        dup2(output, STDOUT_FILENO);
        execv(program.c_str(), list.data());
        return false;
    }));
}

}  // namespace bench
