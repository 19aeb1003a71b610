// Loads the library with one allocation failing, or all from one on, at every position, each time in a process of its
// own: loading ends no process, and what could not be built is told by the first call of a host. failingload PROBE

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <exception>
#include <limits>

extern "C" {
// The C library's own functions, behind those that are replaced here for the whole process.
void* __libc_malloc(std::size_t size);                     // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size);  // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, std::size_t size);       // NOLINT(bugprone-reserved-identifier)
}

namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

std::size_t g_allocations = 0;
std::size_t g_failFrom = kNever;
std::size_t g_failures = kNever;  // how many fail
bool g_hasFailed = false;

bool mayAllocate()
{
    const std::size_t number = g_allocations++;
    const bool fails = number >= g_failFrom && number - g_failFrom < g_failures;
    g_hasFailed = g_hasFailed || fails;
    return !fails;
}

/// What a child tells by its exit status; the probe's own faults are other numbers.
enum Outcome
{
    kWorks = 0,
    kNotLoaded = 100,      ///< dlopen said so
    kFirstCallTold = 101,  ///< as the probe did
    kNothingFailed = 102
};

Outcome load(const char* probe, std::size_t nth, std::size_t failures)
{
    g_failures = failures;
    g_failFrom = g_allocations + nth;
    void* const library = dlopen(probe, RTLD_NOW | RTLD_LOCAL);
    g_failFrom = kNever;
    if (!g_hasFailed) {
        return kNothingFailed;
    }
    if (library == nullptr) {
        return kNotLoaded;
    }
    const auto use = reinterpret_cast<int (*)()>(dlsym(library, "useTheLibrary"));
    return use == nullptr ? kNotLoaded : static_cast<Outcome>(use());
}

int inChild(const char* probe, std::size_t nth, std::size_t failures)
{
    const pid_t child = fork();
    if (child == 0) {
        _exit(load(probe, nth, failures));
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child) {
        return -1;
    }
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

/// Whether every position was survived; says which was not.
bool loadsEverywhere(const char* probe, std::size_t failures)
{
    std::size_t counts[3] = {};
    std::size_t faults = 0;
    for (std::size_t nth = 0; nth < 100000; ++nth) {
        const int outcome = inChild(probe, nth, failures);
        if (outcome == kNothingFailed) {
            std::printf("%zu positions: %zu work, %zu not loaded, %zu told by the first call\n", nth, counts[0],
                        counts[1], counts[2]);
            // Each kind is met: those that are not show that nothing was tried.
            return faults == 0 && counts[0] > 0 && counts[2] > 0;
        }
        if (outcome == kWorks || outcome == kNotLoaded || outcome == kFirstCallTold) {
            ++counts[outcome == kWorks ? 0 : outcome - kNotLoaded + 1];
            continue;
        }
        ++faults;
        std::printf("allocation %zu: %s %d\n", nth, outcome < 0 ? "ended by signal" : "wrong in check",
                    outcome < 0 ? -outcome : outcome);
    }
    return false;
}

}  // namespace

extern "C" void* malloc(std::size_t size)
{
    return mayAllocate() ? __libc_malloc(size) : nullptr;
}

extern "C" void* calloc(std::size_t count, std::size_t size)
{
    return mayAllocate() ? __libc_calloc(count, size) : nullptr;
}

extern "C" void* realloc(void* block, std::size_t size)
{
    return mayAllocate() ? __libc_realloc(block, size) : nullptr;
}

int main(int count, char** texts)
{
    // A host in C++, whose library for that is there from the beginning.
    if (count != 2 || std::uncaught_exceptions() != 0) {
        return 2;
    }
    const bool one = loadsEverywhere(texts[1], 1);
    const bool all = loadsEverywhere(texts[1], kNever);
    return one && all ? 0 : 1;
}
