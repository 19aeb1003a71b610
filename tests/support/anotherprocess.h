#pragma once

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

// What differs from process to process is seen in a second process of the same test program, which runs one disabled
// test that shows it.
namespace testsupport {

inline constexpr const char* kShownMark = "shown: ";

inline void showToTheOtherProcess(const std::string& text)
{
    std::printf("%s%s\n", kShownMark, text.c_str());
}

/// What that test of this program shows; empty when it shows nothing.
inline std::string shownByAnotherProcess(const std::string& test)
{
    const std::string program = std::filesystem::read_symlink("/proc/self/exe");
    const std::string command = "'" + program + "' --gtest_also_run_disabled_tests --gtest_filter=" + test;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> out(::popen(command.c_str(), "r"), &::pclose);
    std::string all;
    char part[256];
    while (out != nullptr && std::fgets(part, sizeof part, out.get()) != nullptr) {
        all += part;
    }
    const std::size_t start = all.find(kShownMark);
    return start == std::string::npos ? "" : all.substr(start, all.find('\n', start) - start);
}

}  // namespace testsupport
