// What `sort` takes of memory and of temporary files, counted from outside. Inputs are written piece by piece: a
// child's peak begins with what the test itself holds when it starts it.

#include <fcntl.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "command.h"
#include "temporaryfolder.h"

namespace clitest {

namespace {

constexpr std::size_t kKilobytesOfMegabyte = 1024;

/// A file of so many lines; its path.
std::string writeLines(const testsupport::TemporaryFolder& folder, std::size_t count,
                       const std::function<std::string(std::size_t)>& line)
{
    const std::string path = (folder.native() / "lines").string();
    std::ofstream out(path, std::ios::binary);
    for (std::size_t i = 0; i < count; ++i) {
        out << line(i) << '\n';
    }
    return path;
}

/// Pseudo-random, the same on every machine.
std::size_t scattered(std::size_t number)
{
    return number * 2654435761U % 4294967291U;
}

std::string repeated(const std::string& text, std::size_t count)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

/// Sorts the file with so many megabytes; its lines come out again.
Outcome sortWithin(std::size_t megabytes, const std::string& path, const Arguments& more = {})
{
    Arguments arguments = {"sort", "--sort", "en", "--memory", std::to_string(megabytes), path};
    arguments.insert(arguments.end(), more.begin(), more.end());
    Setting setting;
    setting.m_sOutput = path + ".sorted";
    Outcome outcome = run(arguments, setting);
    EXPECT_EQ(outcome.m_nExit, 0) << outcome.m_sError;
    if (more.empty()) {
        EXPECT_EQ(std::filesystem::file_size(setting.m_sOutput), std::filesystem::file_size(path));
    }
    return outcome;
}

/// The flags of an open file, from what the system says of it.
unsigned long flagsOf(const std::string& info)
{
    std::ifstream in(info);
    for (std::string name, value; in >> name >> value;) {
        if (name == "flags:") {
            return std::stoul(value, nullptr, 8);
        }
    }
    return 0;
}

struct Lines
{
    const char* m_pName;
    std::size_t m_nCount;
    std::function<std::string(std::size_t)> m_tLine;
    Arguments m_tMore = {};
};

}  // namespace

TEST(SortMemory, takesAtMostAFifthMoreThanWasAskedForWhateverTheLines)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer takes memory of its own";
#endif
    constexpr std::size_t kMegabytes = 64;
    const Lines all[] = {
        {"empty lines", 3'000'000, [](std::size_t) { return std::string(); }},
        {"one letter", 3'000'000, [](std::size_t i) { return std::string(1, static_cast<char>('a' + i % 26)); }},
        {"pairs of equal lines", 1'000'000, [](std::size_t i) { return std::to_string(scattered(i / 2)) + "ab"; }},
        {"sixteen letters", 1'000'000,
         [](std::size_t i) { return "abcdef" + std::to_string(1'000'000'000 + scattered(i)); }},
        {"a character with a long key", 500'000, [](std::size_t i) { return repeated("\xEF\xB7\xBA", 1 + i % 7); }},
        {"a kilobyte", 60'000,
         [](std::size_t i) { return std::to_string(scattered(i)) + repeated("lorem ipsum ", 80); }},
        {"a kilobyte as JSON",
         40'000,
         [](std::size_t i) { return std::to_string(scattered(i)) + repeated("\x01\x02", 400); },
         {"--json"}},
        {"short lines, then long ones", 1'000'000,
         [](std::size_t i) { return i < 980'000 ? std::string("x") : repeated("y", 2000); }},
    };
    for (const Lines& each : all) {
        SCOPED_TRACE(each.m_pName);
        const testsupport::TemporaryFolder folder;
        const Outcome outcome = sortWithin(kMegabytes, writeLines(folder, each.m_nCount, each.m_tLine), each.m_tMore);
        EXPECT_LE(outcome.m_nPeakKilobytes, kMegabytes * kKilobytesOfMegabyte * 12 / 10);
        EXPECT_LT(0U, outcome.m_nPeakKilobytes);
    }
}

TEST(SortMemory, whatIsWrittenGrowsAsTheInputDoesHoweverManyRunsThereAre)
{
    const auto writtenFor = [](std::size_t lines) {
        const testsupport::TemporaryFolder folder;
        const std::string path =
            writeLines(folder, lines, [](std::size_t i) { return std::to_string(scattered(i) % 10); });
        return sortWithin(1, path).m_nWritten;
    };
    constexpr std::size_t kLines = 1'000'000;
    const std::size_t once = writtenFor(kLines);
    const std::size_t four = writtenFor(4 * kLines);
    EXPECT_LT(kLines * 20, once) << "nothing went to temporary files";
    EXPECT_LE(four, once * 46 / 10);
}

TEST(SortMemory, linesOfEqualKeysKeepTheirOrderThroughThousandsOfRuns)
{
    const testsupport::TemporaryFolder folder;
    constexpr std::size_t kLines = 400'000;
    // With strength 1 the case of letters does not count, so their order is that of the input.
    const auto line = [](std::size_t i) { return std::string(scattered(i) % 2 == 0 ? "a" : "A"); };
    const std::string path = writeLines(folder, kLines, line);
    sortWithin(1, path, {"--strength", "1"});
    std::ifstream in(path + ".sorted");
    std::string text;
    std::size_t index = 0;
    for (; std::getline(in, text); ++index) {
        ASSERT_EQ(text, line(index)) << "line " << index + 1;
    }
    EXPECT_EQ(index, kLines);
}

TEST(SortMemory, temporaryFilesAreClosedInProgramsThatAreStarted)
{
    Dialogue dialogue({"sort", "--sort", "en", "--memory", "1"});
    // Read by the time that it is sent, but for what the pipe holds.
    dialogue.send(repeated("some text of a line\n", 200'000));
    std::size_t found = 0;
    const std::string process = "/proc/" + std::to_string(dialogue.process());
    for (const auto& each : std::filesystem::directory_iterator(process + "/fd")) {
        if (std::filesystem::read_symlink(each.path()).string().find("webi18n-sort-") != std::string::npos) {
            ++found;
            EXPECT_NE(flagsOf(process + "/fdinfo/" + each.path().filename().string()) & O_CLOEXEC, 0U);
        }
    }
    EXPECT_LT(0U, found) << "no temporary file was seen";
}

}  // namespace clitest
