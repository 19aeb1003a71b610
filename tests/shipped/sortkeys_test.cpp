// How much room the sort keys of the pack's texts take: the first that a collator asks for is meant to be enough.

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "packfiles.h"
#include "vel/core/string.h"
#include "vel/nls/sorttable.h"
#include "vel/transcoding/utf16.h"

namespace shipped {
namespace {

using vel::nls::SortStrength;
using vel::nls::SortTable;

constexpr std::size_t kStrengths = 5;

/// Of the keys of some texts how many do not fit, at each strength.
struct Count
{
    std::size_t m_nTexts = 0;
    std::array<std::size_t, kStrengths> m_aTooLong{};
};

/// A text goes first into 5 bytes a character and 6 more, and a key as long as that counts as one that does not fit.
void add(Count& count, const SortTable& table, const std::string& utf8)
{
    const vel::String text = vel::stringFromUtf8(utf8).value();
    std::vector<unsigned char> bytes(4 * text.length() + 1);
    const std::size_t size =
        vel::encodeUtf16BigEndian(text.data(), text.length(), reinterpret_cast<char*>(bytes.data()));
    ++count.m_nTexts;
    for (std::size_t i = 0; i < kStrengths; ++i) {
        const std::size_t length = table.makeKey(bytes.data(), size, static_cast<SortStrength>(i), nullptr, 0);
        count.m_aTooLong[i] += length < 5 * text.length() + 6 ? 0 : 1;
    }
}

/// The texts in each language: the messages, and the names in the definitions of its locales.
std::map<std::string, std::vector<std::string>> textsByLanguage()
{
    std::map<std::string, std::vector<std::string>> texts;
    for (const auto& entry : std::filesystem::directory_iterator(packFile("messages"))) {
        const std::string language = entry.path().filename().string();
        for (const Element& message : readXml(packFile("messages/" + language + "/i18nmessages.xml")).children) {
            texts[language].push_back(message.text);
        }
    }
    for (const auto& [name, locale] : loadedLocales()) {
        for (const char* list :
             {"monthNames", "genetiveMonthNames", "abbrevMonthNames", "dayNames", "abbrevDayNames"}) {
            for (const std::string& each : locale.list(list)) {
                texts[locale.scalar("collationNLS_SORT")].push_back(each);
            }
        }
    }
    return texts;
}

TEST(SortKeys, ofNinetyNineInAHundredTextsFitTheFirstRoom)
{
    Count all;
    for (const auto& [sort, texts] : textsByLanguage()) {
        const auto table = SortTable::open(sort);
        ASSERT_NE(table, nullptr) << sort;
        Count count;
        for (const std::string& each : texts) {
            add(count, *table, each);
        }
        all.m_nTexts += count.m_nTexts;
        for (std::size_t i = 0; i < kStrengths; ++i) {
            all.m_aTooLong[i] += count.m_aTooLong[i];
            // Katakana with voicing marks needs more: a byte on each of three levels.
            EXPECT_LE(count.m_aTooLong[i], 2 + count.m_nTexts / (sort == "ja" ? 33 : 100))
                << sort << " at strength " << i << " of " << count.m_nTexts;
        }
    }
    EXPECT_GT(all.m_nTexts, 10'000U);
    for (const std::size_t tooLong : all.m_aTooLong) {
        EXPECT_LE(tooLong, all.m_nTexts / 100);
    }
}

}  // namespace
}  // namespace shipped
