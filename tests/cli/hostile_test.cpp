// Input that means harm: file names that a terminal would obey, bytes that are no text, streams without an end.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "command.h"
#include "temporaryfolder.h"

namespace clitest {

using testing::HasSubstr;
using testing::Not;

namespace {

/// Sets the title of a terminal, and colours what follows; the eight-bit form of an escape sequence; a line's end.
const std::string kName =
    "a\x1B]0;gone\x07\x1B[31m\xC2\x9B"
    "31m\nb\xE2\x80\xA8";
const std::string kShown = R"(a\u{1B}]0;gone\u{7}\u{1B}[31m\u{9B}31m\nb\u{2028})";

std::string writeFile(const testsupport::TemporaryFolder& folder, const std::string& name, const std::string& bytes)
{
    const std::string path = (folder.native() / name).string();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

void expectShown(const std::string& text)
{
    EXPECT_THAT(text, HasSubstr(kShown));
    for (const char* each : {"\x1B", "\x07", "\xC2\x9B", "\xE2\x80\xA8"}) {
        EXPECT_THAT(text, Not(HasSubstr(each)));
    }
}

}  // namespace

TEST(Hostile, aFileNameThatATerminalWouldObeyIsSpelledOutInErrors)
{
    const Arguments all[] = {
        {"sort", "--sort", "en", kName},     {"keys", "--sort", "en", kName}, {"keys", "--verify", kName},
        {"--definitions", kName, "locales"}, {"--config", kName, "locales"},  {"--data", kName, "locales"},
        {"--messages", kName, "locales"},    {"--set", kName, "locales"},     {"locales", kName},
    };
    for (const Arguments& each : all) {
        SCOPED_TRACE(each.front());
        const Outcome outcome = run(each);
        EXPECT_GE(outcome.m_nExit, 2);
        expectShown(outcome.m_sError);
        EXPECT_EQ(outcome.m_sOut, "");
    }
}

TEST(Hostile, andInFindings)
{
    const testsupport::TemporaryFolder folder;
    const std::string file = writeFile(folder, kName, "<localeDefinitions><localeDefinition/></localeDefinitions>");
    const Outcome outcome = run(onFolder({"check", file}));
    EXPECT_EQ(outcome.m_nExit, 1);
    expectShown(outcome.m_sOut + outcome.m_sError);
    // Programs get the name as it is.
    for (const Json& each : run(onFolder({"--json", "check", file})).objects()) {
        EXPECT_EQ(each["file"], file);
    }
}

TEST(Hostile, aStampThatIsNoUtf8IsAnErrorWithItsOffset)
{
    const testsupport::TemporaryFolder folder;
    const std::string plain = writeFile(folder, "plain", "# sort=s\xFFv strength=0 version=1\n");
    const std::string json = writeFile(folder, "json", "{\"sort\":\"s\xFFv\",\"strength\":0,\"version\":\"1\"}\n");
    for (const std::string& file : {plain, json}) {
        for (const Arguments& arguments : {Arguments{"keys", "--verify", file}, {"--json", "keys", "--verify", file}}) {
            const Outcome outcome = run(arguments);
            EXPECT_EQ(outcome.m_nExit, 2);
            const std::string offset = file == plain ? "8" : "10";
            EXPECT_THAT(outcome.m_sError,
                        HasSubstr("webi18n: error: " + file + ", line 1: invalid UTF-8 at byte offset " + offset));
        }
    }
}

TEST(Hostile, aStampIsShownOnOneLine)
{
    const testsupport::TemporaryFolder folder;
    const Outcome outcome =
        run({"keys", "--verify", writeFile(folder, "stored", "# sort=sv strength=0 version=\x1B[31m\n")});
    EXPECT_EQ(outcome.m_nExit, 1);
    EXPECT_THAT(outcome.m_sOut, HasSubstr("version: \\u{1B}[31m\n"));
}

TEST(Hostile, aLineHasAMaximum)
{
    Setting endless;
    endless.m_sInputFile = "/dev/zero";
    const std::pair<Arguments, std::string> all[] = {
        {{"keys", "--verify", "/dev/zero"}, "/dev/zero, line 1"},
        {{"keys", "--sort", "en", "/dev/zero"}, "/dev/zero, line 1"},
        {{"sort", "--sort", "en", "/dev/zero"}, "/dev/zero, line 1"},
        {{"explain", "-"}, "standard input, line 1"},
    };
    for (const auto& [arguments, place] : all) {
        const Outcome outcome = run(arguments, endless);
        EXPECT_EQ(outcome.m_nExit, 2);
        EXPECT_EQ(outcome.m_sError.substr(0, outcome.m_sError.find('\n')),
                  "webi18n: error: " + place + ": longer than 67108864 bytes");
    }
}

TEST(Hostile, aLineOfTheGreatestLengthIsTaken)
{
    const testsupport::TemporaryFolder folder;
    constexpr std::size_t kMost = std::size_t{64} << 20;
    // Text in binary order is its own key; a shorter line stands in front of each.
    const std::string fits = writeFile(folder, "fits", "b\n" + std::string(kMost, 'a') + "\n");
    const std::string isTooLong = writeFile(folder, "long", "b\n" + std::string(kMost + 1, 'a') + "\n");
    Setting setting;
    setting.m_sOutput = "/dev/null";
    EXPECT_EQ(run({"sort", "--sort", "binary", fits}, setting).m_nExit, 0);
    const Outcome outcome = run({"sort", "--sort", "binary", isTooLong}, setting);
    EXPECT_EQ(outcome.m_nExit, 2);
    EXPECT_THAT(outcome.m_sError, HasSubstr(isTooLong + ", line 2: longer than 67108864 bytes"));
}

}  // namespace clitest
