#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "command.h"
#include "temporaryfolder.h"

namespace clitest {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

Outcome runOn(const std::string& input, const Arguments& arguments)
{
    Setting setting;
    setting.m_sInput = input;
    return run(arguments, setting);
}

std::string sorted(const std::string& input, const std::string& sort, const Arguments& more = {})
{
    Arguments arguments = {"sort", "--sort", sort};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const Outcome outcome = runOn(input, arguments);
    EXPECT_EQ(outcome.m_nExit, 0) << outcome.m_sError;
    EXPECT_EQ(outcome.m_sError, "");
    return outcome.m_sOut;
}

/// A file in a folder that goes with the test.
std::string write(const testsupport::TemporaryFolder& folder, const std::string& name, const std::string& bytes)
{
    const std::string path = (folder.native() / name).string();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

TEST(Sort, sortsAsEachLanguageSorts)
{
    EXPECT_EQ(sorted("z\n\xC3\xA4\na\n", "sv"), "a\nz\n\xC3\xA4\n");
    EXPECT_EQ(sorted("z\n\xC3\xA4\na\n", "de"), "a\n\xC3\xA4\nz\n");
    EXPECT_EQ(sorted("b\na\nB\nA\n", "en"), "a\nA\nb\nB\n");
    EXPECT_EQ(sorted("b\na\nB\nA\n", "da-u-kf-upper"), "A\na\nB\nb\n");
    EXPECT_EQ(sorted("b\na\nB\nA\n", "binary"), "A\nB\na\nb\n");
    EXPECT_EQ(sorted("item 10\nitem 9\n", "en-u-kn"), "item 9\nitem 10\n");
}

TEST(Sort, linesThatCompareEqualKeepTheirOrder)
{
    EXPECT_EQ(sorted("r\xC3\xB4le\nROLE\nrole\nRole\na\n", "en", {"--strength", "1"}),
              "a\nr\xC3\xB4le\nROLE\nrole\nRole\n");
    EXPECT_EQ(sorted("\x01"
                     "a\na\n\n\x01\n",
                     "en"),
              "\n\x01\n\x01"
              "a\na\n");
}

/// A letter, then the number as eighteen letters x of either case: at the first strength the letter alone decides.
std::string lineOf(char letter, std::size_t number)
{
    std::string line(1, letter);
    for (std::size_t bit = 0; bit < 18; ++bit) {
        line += (number >> bit & 1U) != 0 ? 'X' : 'x';
    }
    return line + '\n';
}

TEST(Sort, manyLinesThatCompareEqualKeepTheirOrderThoughSeveralThreadsSortAndMerge)
{
    constexpr std::size_t kLines = 200'000;
    std::string input;
    std::map<char, std::string> groups;
    for (std::size_t i = 0; i < kLines; ++i) {
        // Half of the lines are equal, more than threads share out at once.
        const char letter = i % 2 == 0 ? 'm' : static_cast<char>('a' + i / 2 % 26);
        const std::string line = lineOf(letter, i);
        input += line;
        groups[letter] += line;
    }
    std::string expected;
    for (const auto& [letter, lines] : groups) {
        expected += lines;
    }
    EXPECT_TRUE(sorted(input, "en", {"--strength", "1"}) == expected);
}

TEST(Sort, whereNoThreadCanBeStartedOneDoesAll)
{
    std::string input;
    std::string expected;
    for (int i = 0; i < 100'000; ++i) {
        input += std::to_string(199'999 - i) + '\n';
        expected += std::to_string(100'000 + i) + '\n';
    }
    // A thread's stack would be as large as this limit, beyond what there are addresses for.
    const std::string script = "ulimit -s 200000000000 || exit 99; exec '" WEBI18N_COMMAND "' sort --sort en";
    clitest::Setting setting;
    setting.m_sProgram = "/bin/sh";
    setting.m_sInput = input;
    const Outcome outcome = run({"-c", script}, setting);
    if (outcome.m_nExit == 99) {
        GTEST_SKIP() << "the limit of the stack cannot be raised here";
    }
    EXPECT_EQ(outcome.m_nExit, 0);
    EXPECT_TRUE(outcome.m_sOut == expected) << outcome.m_sError;
}

TEST(Sort, theLastLineNeedsNoLineFeedAndLinesMayBeEmpty)
{
    EXPECT_EQ(sorted("", "sv"), "");
    EXPECT_EQ(sorted("b\na", "sv"), "a\nb\n");
    EXPECT_EQ(sorted("b\n\na\n\n", "sv"), "\n\na\nb\n");
    EXPECT_EQ(sorted("\n", "sv"), "\n");
    EXPECT_EQ(sorted("b\r\na\r\n", "sv"), "a\r\nb\r\n");
}

TEST(Sort, withNulTextsMayHoldLineFeeds)
{
    const std::string input("b\nx\0a\ny\0c", 9);
    EXPECT_EQ(sorted(input, "en", {"-0"}), std::string("a\ny\0b\nx\0c\0", 10));
}

TEST(Sort, filesAreSortedTogether)
{
    const testsupport::TemporaryFolder folder;
    const std::string first = write(folder, "first", "d\nb");
    const std::string empty = write(folder, "empty", "");
    const std::string second = write(folder, "second", "c\n");
    EXPECT_EQ(sorted("a\n", "en", {first, empty, "-", second}), "a\nb\nc\nd\n");
    const Outcome absent = run({"sort", "--sort", "en", first, (folder.native() / "absent").string()});
    EXPECT_EQ(absent.m_nExit, 3);
    EXPECT_THAT(absent.m_sError, HasSubstr("absent: cannot be opened: No such file"));
    EXPECT_EQ(absent.m_sOut, "");
}

TEST(Sort, jsonIsOneObjectALine)
{
    const std::vector<Json> objects = runOn("b\n\"a\"\n", {"--json", "sort", "--sort", "en"}).objects();
    ASSERT_EQ(objects.size(), 2U);
    EXPECT_EQ(objects[0].dump(), R"({"text":"\"a\""})");
    EXPECT_EQ(objects[1].dump(), R"({"text":"b"})");
}

TEST(Sort, invalidUtf8NamesTheFileTheLineAndTheOffset)
{
    const Outcome outcome = runOn("a\nbc\xFF\nd\n\xFF\n", {"sort", "--sort", "en"});
    EXPECT_EQ(outcome.m_nExit, 2);
    EXPECT_EQ(outcome.m_sOut, "");
    EXPECT_THAT(outcome.m_sError, HasSubstr("standard input, line 2: invalid UTF-8 at byte offset 2"));
    const testsupport::TemporaryFolder folder;
    const std::string good = write(folder, "good", "a\nb");
    const std::string bad = write(folder, "bad", "a\nb\nc\xC3");
    EXPECT_THAT(run({"sort", "--sort", "en", good, bad}).m_sError,
                HasSubstr(bad + ", line 3: invalid UTF-8 at byte offset 1"));
}

TEST(Sort, anUnknownSortOrStrengthIsWrongUsage)
{
    for (const std::string name : {"en_US", "", "no such sort", "fr-u-co-phonebk", "swedish", "xx", "sv-u-zz-foo"}) {
        const Outcome outcome = runOn("a\n", {"sort", "--sort", name});
        EXPECT_EQ(outcome.m_nExit, 2) << name;
        EXPECT_THAT(outcome.m_sError, StartsWith("webi18n: error: --sort " + name));
    }
    for (const std::string strength : {"3", "32", "x", "", "-1", "04"}) {
        const Outcome outcome = runOn("a\n", {"sort", "--sort", "en", "--strength=" + strength});
        EXPECT_EQ(outcome.m_nExit, 2) << strength;
        EXPECT_THAT(outcome.m_sError, HasSubstr("accepted are 0, 1, 2, 4, 8 and 16"));
    }
    EXPECT_EQ(runOn("a\n", {"sort"}).m_nExit, 2);
    EXPECT_EQ(runOn("a\n", {"sort", "--sort", "en", "--memory", "0"}).m_nExit, 2);
}

TEST(Sort, anUnknownNameIsRefusedWithTheNearestOnes)
{
    for (const Arguments& arguments : {Arguments{"sort"}, {"keys"}, {"compare", "a", "b"}}) {
        const auto errorOn = [&](const std::string& sort) {
            Arguments all = arguments;
            all.insert(all.end(), {"--sort", sort});
            const Outcome outcome = runOn("b\na\n", all);
            EXPECT_EQ(outcome.m_nExit, 2) << sort;
            EXPECT_EQ(outcome.m_sOut, "") << sort;
            return outcome.m_sError;
        };
        EXPECT_THAT(errorOn("SWEDISH"), HasSubstr("--sort SWEDISH: there is no such sort; nearest: sv; accepted are"));
        EXPECT_THAT(errorOn("en_US"), HasSubstr("nearest: en-US; "));
        EXPECT_THAT(errorOn("de-u-co-phonebook"), HasSubstr("nearest: de, de-u-co-phonebk"));
        EXPECT_THAT(errorOn("nosuch"), HasSubstr("--sort nosuch: there is no such sort; accepted are"));
    }
}

TEST(Sort, knownLanguagesAreTakenHoweverTheyAreWritten)
{
    for (const std::string name : {"SV", "swe", "iw", "zh-min-nan", "i-klingon", "root", "binary", "en-x-foo",
                                   "sr-Latn-RS", "de-u-co-phonebk"}) {
        const Outcome outcome = runOn("a\n", {"sort", "--sort", name});
        EXPECT_EQ(outcome.m_sError, "") << name;
        EXPECT_EQ(outcome.m_sOut, "a\n") << name;
    }
}

/// Numbered lines without an order, with repetitions; about 16 bytes each.
std::string manyLines(std::size_t count)
{
    std::string text;
    unsigned long long state = 12345;
    for (std::size_t i = 0; i < count; ++i) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        text += "item " + std::to_string((state >> 33) % (count / 2)) + (i % 3 == 0 ? " a" : " A") + "\n";
    }
    return text;
}

TEST(Sort, whatDoesNotFitIntoTheMemoryGoesThroughTemporaryFiles)
{
    // At one megabyte a round holds about 200 kilobytes: here are more runs than are merged at once.
    const std::string input = manyLines(1'050'000);
    ASSERT_GT(input.size(), 14'000'000U);
    const std::string whole = sorted(input, "en", {"--strength", "1"});
    EXPECT_EQ(whole.size(), input.size());
    EXPECT_TRUE(sorted(input, "en", {"--strength", "1", "--memory", "1"}) == whole);
    const testsupport::TemporaryFolder folder;
    Setting setting;
    setting.m_sInput = input;
    setting.m_sProgram = "/usr/bin/env";
    const Outcome nowhere = run(
        {"TMPDIR=" + (folder.native() / "absent").string(), WEBI18N_COMMAND, "sort", "--sort", "en", "--memory", "1"},
        setting);
    EXPECT_EQ(nowhere.m_nExit, 3);
    EXPECT_THAT(nowhere.m_sError, HasSubstr("a temporary file cannot be made"));
}

TEST(Sort, aFaultBehindTheFirstRoundIsFoundInItsLine)
{
    std::string input = manyLines(50'000);
    const auto lines = std::count(input.begin(), input.end(), '\n');
    input += "x\xFF\n";
    EXPECT_THAT(runOn(input, {"sort", "--sort", "en", "--memory", "1"}).m_sError,
                HasSubstr("standard input, line " + std::to_string(lines + 1) + ": invalid UTF-8 at byte offset 1"));
}

TEST(Sort, aLongLineOfCharactersWithLongKeysIsSortedToo)
{
    // Characters for private use sort by their code points, behind all letters; the end of the line decides.
    std::string privateUse;
    for (int i = 0; i < 200'000; ++i) {
        privateUse += "\xEE\x80\x80";
    }
    const std::string first = privateUse + "a\n";
    const std::string second = privateUse + "b\n";
    EXPECT_TRUE(sorted(second + first + "z\n", "und") == "z\n" + first + second);
}

TEST(Sort, aLineLongerThanTheMemoryIsSortedToo)
{
    const std::string longLine(3'000'000, 'b');
    EXPECT_TRUE(sorted("c\n" + longLine + "\na\n", "en", {"--memory", "1"}) == "a\n" + longLine + "\nc\n");
}

TEST(Keys, firstComesTheStampThenTheKeysInTheOrderOfTheInput)
{
    const std::vector<Json> objects = runOn("b\na\n", {"--json", "keys", "--sort", "sv", "--strength", "1"}).objects();
    ASSERT_EQ(objects.size(), 3U);
    EXPECT_EQ(objects[0]["sort"], "sv");
    EXPECT_EQ(objects[0]["strength"], 1);
    EXPECT_NE(objects[0]["version"], "");
    EXPECT_EQ(objects[1]["text"], "b");
    EXPECT_EQ(objects[2]["text"], "a");
    EXPECT_GT(objects[1]["key"].get<std::string>(), objects[2]["key"].get<std::string>());
    const std::vector<std::string> lines = runOn("b\n\n", {"keys", "--sort", "sv", "--strength", "1"}).lines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], "# sort=sv strength=1 version=" + objects[0]["version"].get<std::string>());
    EXPECT_EQ(lines[1], objects[1]["key"].get<std::string>() + "\tb");
    EXPECT_EQ(lines[2], "\t");
}

/// The lines behind the stamp and the tabs, in the order of the bytes.
std::string sortedByKeys(const std::string& input, const std::string& sort)
{
    Setting setting;
    setting.m_sInput = runOn(input, {"keys", "--sort", sort}).m_sOut;
    setting.m_sProgram = "/usr/bin/env";
    // By the key alone, and stable: what compares equal keeps its order.
    const Outcome outcome = run({"LC_ALL=C", "sort", "-s", "-t", "\t", "-k", "1,1"}, setting);
    EXPECT_EQ(outcome.m_nExit, 0);
    std::string texts;
    for (const std::string& line : outcome.lines()) {
        if (!line.starts_with("# ")) {
            texts += line.substr(line.find('\t') + 1) + "\n";
        }
    }
    return texts;
}

TEST(Keys, sortedByBytesTheyGiveTheSortsOrder)
{
    const std::string input =
        "z\n\xC3\xA4\na\nA\n\xC3\xA5ngstr\xC3\xB6m\nco-"
        "op\ncoop\n\xE4\xB8\x80\n\n10\n9\n\xEF\xBB\xBF\n\xF0\x9F\x98\x80\n" +
        manyLines(1000);
    for (const std::string sort : {"sv", "de", "ja", "en-u-ka-shifted", "fr-CA", "binary"}) {
        EXPECT_TRUE(sortedByKeys(input, sort) == sorted(input, sort)) << sort;
    }
}

TEST(Keys, whatIsStoredIsVerifiedByItsStamp)
{
    const testsupport::TemporaryFolder folder;
    const std::string text = write(folder, "text", runOn("a\n", {"keys", "--sort", "sv"}).m_sOut);
    EXPECT_EQ(run({"keys", "--verify", text}).m_nExit, 0);
    const std::string json = runOn("a\n", {"--json", "keys", "--sort", "sv", "--strength", "16"}).m_sOut;
    const Json same = run({"--json", "keys", "--verify", write(folder, "json", json)}).object();
    EXPECT_EQ(same["comparable"], true);
    EXPECT_EQ(same["sort"], "sv");
    EXPECT_EQ(same["strength"], 16);
    EXPECT_EQ(same["current"], same["version"]);

    const Outcome old =
        run({"--json", "keys", "--verify", write(folder, "old", "# sort=sv strength=0 version=1.0/0\n61\ta\n")});
    EXPECT_EQ(old.m_nExit, 1);
    EXPECT_EQ(old.object()["comparable"], false);
    const Outcome unknown =
        run({"--json", "keys", "--verify", write(folder, "unknown", "# sort=x_y strength=0 version=1.0/0\n")});
    EXPECT_EQ(unknown.m_nExit, 1);
    EXPECT_EQ(unknown.object()["current"], nullptr);
}

TEST(Keys, aFileThatHoldsNoKeysCannotBeVerified)
{
    const testsupport::TemporaryFolder folder;
    for (const std::string bytes : {"", "a\n", "# sort=sv version=1 strength=0\n", "{\"sort\":1}\n", "{\n", "{}\n",
                                    "{\"sort\":\"sv\",\"version\":\"1\",\"strength\":-1}\n"}) {
        const Outcome outcome = run({"keys", "--verify", write(folder, "bad", bytes)});
        EXPECT_EQ(outcome.m_nExit, 3) << bytes;
        EXPECT_THAT(outcome.m_sError, HasSubstr("the first line is no stamp"));
    }
    EXPECT_EQ(run({"keys", "--verify", write(folder, "bad", "# sort=sv strength=x version=1\n")}).m_nExit, 2);
    EXPECT_EQ(run({"keys"}).m_nExit, 2);
    EXPECT_EQ(run({"keys", "--sort", "sv", "--verify", "x"}).m_nExit, 2);
}

TEST(Keys, invalidUtf8NamesTheLineAndTheOffset)
{
    const Outcome outcome = runOn("a\nb\xFF\n", {"keys", "--sort", "sv"});
    EXPECT_EQ(outcome.m_nExit, 2);
    EXPECT_THAT(outcome.m_sError, HasSubstr("standard input, line 2: invalid UTF-8 at byte offset 1"));
    EXPECT_EQ(outcome.lines().size(), 2U) << "the stamp and the first line's key";
}

TEST(Keys, runsAsACoProcess)
{
    Dialogue dialogue({"keys", "--sort", "binary"});
    EXPECT_THAT(dialogue.ask("a"), StartsWith("# sort=binary"));
    EXPECT_EQ(dialogue.finish(), 0);
}

TEST(Compare, resultIsMinusOneZeroOrOne)
{
    const auto compared = [](const Arguments& options, const std::string& a, const std::string& b) {
        Arguments arguments = {"--json", "compare"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.insert(arguments.end(), {"--", a, b});
        return run(arguments).m_sOut;
    };
    EXPECT_EQ(compared({"--sort", "sv"}, "z", "\xC3\xA4"), "{\"result\":-1}\n");
    EXPECT_EQ(compared({"--sort", "de"}, "z", "\xC3\xA4"), "{\"result\":1}\n");
    EXPECT_EQ(compared({"--sort", "en", "--strength", "1"}, "role", "R\xC3\xB4le"), "{\"result\":0}\n");
    EXPECT_EQ(compared({"--sort", "en", "--strength", "2"}, "role", "R\xC3\xB4le"), "{\"result\":-1}\n");
    EXPECT_EQ(compared({"--sort", "en"}, "", ""), "{\"result\":0}\n");
    EXPECT_EQ(compared({"--sort", "en"}, "", "-"), "{\"result\":-1}\n");
    EXPECT_EQ(run({"compare", "--sort", "en", "b", "a"}).m_sOut, "result: 1\n");
    EXPECT_EQ(run({"compare", "--sort", "x_y", "b", "a"}).m_nExit, 2);
    EXPECT_EQ(run({"compare", "--sort", "en", "b"}).m_nExit, 2);
}

TEST(Java, aLocaleAsJavaWritesIt)
{
    EXPECT_EQ(run(onFolder({"java", "fr-ca"})).m_sOut, "fr_CA\n");
    EXPECT_EQ(run(onFolder({"--json", "java", "fr-ca"})).m_sOut,
              "{\"language\":\"fr\",\"country\":\"CA\",\"variant\":\"\",\"string\":\"fr_CA\"}\n");
    EXPECT_EQ(run(onFolder({"java", "en-us", "--ui-language", "de"})).m_sOut, "de_US\n");
    EXPECT_EQ(run(onFolder({"java", "en-us", "--ui-language", "zh-Hant-TW"})).m_sOut, "zh_HANT-TW\n");
    EXPECT_EQ(run(onFolder({"java", "en-us", "--ui-language", ""})).m_sOut, "_US\n");
}

TEST(Java, anUnknownLocaleExitsWithOneAndABatchGoesOn)
{
    const Outcome unknown = run(onFolder({"java", "xx-yy"}));
    EXPECT_EQ(unknown.m_nExit, 1);
    EXPECT_THAT(unknown.m_sError, HasSubstr("xx-yy: there is no locale of that name"));
    EXPECT_EQ(run(onFolder({"java"})).m_nExit, 2);
    const Outcome batch = runOn("fr-ca\nxx-yy\nen-us\n", onFolder({"--json", "java", "-"}));
    EXPECT_EQ(batch.m_nExit, 0);
    const std::vector<Json> objects = batch.objects();
    ASSERT_EQ(objects.size(), 3U);
    EXPECT_EQ(objects[0]["string"], "fr_CA");
    EXPECT_EQ(objects[1]["error"], "there is no locale of that name");
    EXPECT_EQ(objects[2]["string"], "en_US");
}

}  // namespace clitest
