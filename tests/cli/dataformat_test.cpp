#include <gtest/gtest.h>

#include "command.h"

namespace clitest {

TEST(DataFormat, aStandardFormatExitsWithZero)
{
    for (const std::string text : {"M/d/yyyy", "h:mm tt", "lundi", "[MMMM]", "[DDD]"}) {
        SCOPED_TRACE(text);
        const Outcome outcome = run(onFolder({"--json", "data-format", text}));
        EXPECT_EQ(outcome.m_nExit, 0);
        EXPECT_EQ(outcome.m_sOut, "{\"text\":\"" + text + "\",\"valid\":true}\n");
    }
}

TEST(DataFormat, anotherTextExitsWithOne)
{
    for (const std::string text : {"m/d/yyyy", "1000", "[mmmm]", ""}) {
        SCOPED_TRACE(text);
        const Outcome outcome = run(onFolder({"--json", "data-format", text}));
        EXPECT_EQ(outcome.m_nExit, 1);
        EXPECT_EQ(outcome.m_sOut, "{\"text\":\"" + text + "\",\"valid\":false}\n");
    }
    EXPECT_EQ(run(onFolder({"data-format", "x"})).m_sOut, "text: \"x\"\nvalid: false\n");
}

TEST(DataFormat, theDefinitionsFileLoadedLastCounts)
{
    const Arguments last = {"--definitions", dataFile("check/definitions-duplicate.xml")};
    EXPECT_EQ(run(onFolder({"--json", last[0], last[1], "data-format", "lundi"})).m_nExit, 1);
    EXPECT_EQ(run(onFolder({"--json", last[0], last[1], "data-format", "[MMM]"})).m_nExit, 0);
}

}  // namespace clitest
