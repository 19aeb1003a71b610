#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "command.h"

// Every row of data/check/cases.txt: a file with one accident has exactly that finding, a correct one has none.

namespace clitest {

namespace {

struct Case
{
    std::string m_sPlace;  // of the row
    std::string m_sData;
    std::string m_sFile;
    std::string m_sExpected;  // "line:column severity rule" or "clean"
    std::string m_sWords;
};

std::string trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<Case> readCases()
{
    std::vector<Case> cases;
    std::ifstream in(dataFile("check/cases.txt"));
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::istringstream columns(line);
        Case each;
        each.m_sPlace = "cases.txt:" + std::to_string(number);
        for (std::string* field : {&each.m_sData, &each.m_sFile, &each.m_sExpected, &each.m_sWords}) {
            std::getline(columns, *field, '|');
            *field = trimmed(*field);
        }
        cases.push_back(each);
    }
    return cases;
}

/// "line:column severity rule", with spaces for runs of them.
std::string singleSpaced(const std::string& text)
{
    std::istringstream words(text);
    std::string all;
    for (std::string word; words >> word;) {
        all += (all.empty() ? "" : " ") + word;
    }
    return all;
}

std::string summary(const Json& finding, bool withColumn)
{
    const std::string column = withColumn ? std::to_string(finding["column"].get<int>()) : "*";
    return std::to_string(finding["line"].get<int>()) + ":" + column + " " + finding["severity"].get<std::string>() +
           " " + finding["rule"].get<std::string>();
}

std::string dataOf(const Case& each)
{
    return each.m_sData == "folder" ? dataFile("folder") : "none";
}

void expectFinding(const Case& each, const Outcome& outcome)
{
    EXPECT_EQ(outcome.m_nExit, 1);
    const Json finding = outcome.object();
    if (!finding.is_object()) {
        return;
    }
    const std::string expected = singleSpaced(each.m_sExpected);
    EXPECT_EQ(finding["file"], each.m_sFile);
    EXPECT_EQ(summary(finding, expected.find(":*") == std::string::npos), expected);
    EXPECT_THAT(finding["message"].get<std::string>(), testing::HasSubstr(each.m_sWords));
    EXPECT_FALSE(each.m_sWords.empty());
}

}  // namespace

TEST(CheckCases, eachFileHasExactlyItsFinding)
{
    const std::vector<Case> cases = readCases();
    ASSERT_GT(cases.size(), 100U);
    for (const Case& each : cases) {
        SCOPED_TRACE(each.m_sPlace + ": " + each.m_sFile);
        Setting setting;
        setting.m_sFolder = dataFile("check");
        const Outcome outcome = run({"--data", dataOf(each), "--json", "check", each.m_sFile}, setting);
        EXPECT_EQ(outcome.m_sError, "");
        if (each.m_sExpected == "clean") {
            EXPECT_EQ(outcome.m_sOut, "");
            EXPECT_EQ(outcome.m_nExit, 0);
        } else {
            expectFinding(each, outcome);
        }
    }
}

TEST(CheckCases, everyFileHasARow)
{
    std::set<std::string> named;
    for (const Case& each : readCases()) {
        named.insert(each.m_sFile);
    }
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(dataFile("check"))) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == ".xml") {
            ++files;
            EXPECT_TRUE(named.contains(name)) << name;
        }
    }
    EXPECT_GT(files, 100);
}

}  // namespace clitest
