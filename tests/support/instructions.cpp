#include "instructions.h"

#include <sys/ptrace.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace testsupport {

namespace {

[[noreturn]] void runStopped(const std::function<void()>& work)
{
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
        _exit(1);
    }
    raise(SIGSTOP);
    work();
    _exit(0);
}

/// Waits for the child's next stop; false when it has ended.
bool waitForStop(pid_t child)
{
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFSTOPPED(status);
}

}  // namespace

std::size_t instructionsOf(const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0) {
        runStopped(work);
    }
    std::size_t steps = 0;
    if (child > 0 && waitForStop(child)) {
        while (ptrace(PTRACE_SINGLESTEP, child, nullptr, nullptr) == 0 && waitForStop(child)) {
            ++steps;
        }
    }
    return steps;
}

}  // namespace testsupport
