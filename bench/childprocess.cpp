#include "childprocess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <stdexcept>

namespace bench {

namespace {

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
    int status = 1;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("a measuring process failed");
    }
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

double numberPrintedBy(const std::string& program, const std::vector<std::string>& arguments)
{
    std::vector<char*> list{const_cast<char*>(program.c_str())};
    for (const std::string& each : arguments) {
        list.push_back(const_cast<char*>(each.c_str()));
    }
    list.push_back(nullptr);
    return std::stod(outputOfChild([&](int output) {
        dup2(output, STDOUT_FILENO);
        execv(program.c_str(), list.data());
        return false;
    }));
}

}  // namespace bench
