#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "eightthreads.h"
#include "utf16text.h"
#include "vel/nls/sorttable.h"

namespace {

using vel::nls::SortStrength;
using vel::nls::SortTable;

constexpr int kThreads = 16;

std::string keyOf(const SortTable& table, std::u16string_view text, SortStrength strength)
{
    const std::string bytes = testsupport::bytesOf(text);
    std::string key(32 * bytes.size() + 64, '\0');
    key.resize(table.makeKey(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), strength,
                             reinterpret_cast<unsigned char*>(key.data()), key.size()));
    return key;
}

TEST(SortThreads, ThatOpenASortAtOnceGetOneTable)
{
    const char* const spellings[] = {"lt", "LT", "Lt", "lT"};
    std::vector<std::shared_ptr<const SortTable>> tables(kThreads);
    EXPECT_EQ(testsupport::faultsOf(
                  [&](int thread) {
                      auto& table = tables[static_cast<std::size_t>(thread)];
                      table = SortTable::open(spellings[thread % 4]);
                      return table == nullptr ? 1 : 0;
                  },
                  kThreads),
              0);
    EXPECT_EQ(std::count(tables.begin(), tables.end(), tables[0]), kThreads);
}

TEST(SortThreads, ATableIsGoneWithItsLastHolderAndMadeAgain)
{
    // Between two rounds of a thread the others may hold it, or nobody. "binary" costs nothing to make.
    const auto openAndLeave = [](int thread) {
        int faults = 0;
        for (int round = 0; round < 2'000; ++round) {
            const auto table = SortTable::open((thread + round) % 2 == 0 ? "binary" : "BINARY");
            faults += table != nullptr && table->name() == "binary" ? 0 : 1;
        }
        return faults;
    };
    EXPECT_EQ(testsupport::faultsOf(openAndLeave, kThreads), 0);
}

TEST(SortThreads, MeetTheFirstIdeographBeyondTheBasicPlaneAtOnce)
{
    // The weights of all such ideographs are asked for when the first is met. The two differ in their last place only.
    const auto table = SortTable::open("und");
    ASSERT_NE(table, nullptr);
    std::vector<std::string> smaller(kThreads);
    std::vector<std::string> greater(kThreads);
    EXPECT_EQ(testsupport::faultsOf(
                  [&](int thread) {
                      const auto i = static_cast<std::size_t>(thread);
                      smaller[i] = keyOf(*table, u"\U00020BB6", SortStrength::kPrimary);
                      greater[i] = keyOf(*table, u"\U00020BB7", SortStrength::kPrimary);
                      return smaller[i] < greater[i] ? 0 : 1;
                  },
                  kThreads),
              0);
    EXPECT_EQ(std::count(smaller.begin(), smaller.end(), smaller[0]), kThreads);
    EXPECT_EQ(std::count(greater.begin(), greater.end(), greater[0]), kThreads);
}

TEST(SortThreads, ShareATableOnAllItsWays)
{
    const auto table = SortTable::open("th-u-ka-shifted-kn");
    ASSERT_NE(table, nullptr);
    // Short and long, marks in and out of order, what only ICU reads, digits, and characters of many elements.
    const std::u16string texts[] = {u"Bangkok",
                                    u"หมู่เกาะ-ก",
                                    u"ห\u0E48\u0E39\u0E40",
                                    u"\uE000\uE001 a\u0301\u0323",
                                    u"No. 1,024",
                                    u"\uFDFA \u0DD2\u0DCF",
                                    std::u16string(700, u'é') + u"\U0010FFFF"};
    std::vector<std::string> alone;
    for (const std::u16string& text : texts) {
        alone.push_back(keyOf(*table, text, SortStrength::kIdentical));
        ASSERT_FALSE(alone.back().empty());
    }
    const auto makeKeys = [&](int thread) {
        int faults = 0;
        for (int round = 0; round < 50; ++round) {
            const std::size_t i = static_cast<std::size_t>(thread + round) % std::size(texts);
            const std::size_t k = static_cast<std::size_t>(round) % std::size(texts);
            faults += keyOf(*table, texts[i], SortStrength::kIdentical) == alone[i] ? 0 : 1;
            const std::wstring left(texts[i].begin(), texts[i].end());
            const std::wstring right(texts[k].begin(), texts[k].end());
            const int order =
                table->compare(left.data(), left.size(), right.data(), right.size(), SortStrength::kPrimary);
            faults += order == 0 && i != k ? 1 : 0;
        }
        return faults;
    };
    EXPECT_EQ(testsupport::faultsOf(makeKeys, kThreads), 0);
}

}  // namespace
