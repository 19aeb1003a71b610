#include <dlfcn.h>

#include <cstdio>
#include <ctime>

namespace {

double processorTime()
{
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

}  // namespace

// Prints how many nanoseconds of processor time loading a library takes: loadprobe LIBRARY.
int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("usage: loadprobe LIBRARY\n", stderr);
        return 2;
    }
    const double begin = processorTime();
    void* const library = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    const double end = processorTime();
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    std::printf("%.0f\n", end - begin);
    return 0;
}
