#include <dlfcn.h>

#include <chrono>
#include <cstdio>

// Prints how many nanoseconds loading a library takes: loadprobe LIBRARY.
int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("usage: loadprobe LIBRARY\n", stderr);
        return 2;
    }
    const auto begin = std::chrono::steady_clock::now();
    void* const library = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    const auto end = std::chrono::steady_clock::now();
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    std::printf("%.0f\n", std::chrono::duration<double, std::nano>(end - begin).count());
    return 0;
}
