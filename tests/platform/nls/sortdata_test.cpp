#include <gtest/gtest.h>

#include <string>

#include "builtsort.h"
#include "failingallocator.h"

// What the order does not show: that the table holds what it should, and that texts take the short way.

namespace {

using namespace vel::nls;
using namespace builtsort;
using testsupport::bytesOf;

TEST(SortEntries, OneLoadTellsOfALetterWithAnAccent)
{
    const auto data = build("en");
    const SortEntry e = data->m_tPages.find(U'e');
    EXPECT_EQ(entry::primaryLength(e), 1U);
    EXPECT_EQ(entry::elements(e), 1U);
    EXPECT_EQ(entry::secondary(e), 0);
    EXPECT_EQ(entry::tertiary(e), 0);
    EXPECT_EQ(e & entry::kSpecial, 0U);
    const SortEntry capital = data->m_tPages.find(U'É');
    EXPECT_EQ(entry::primaryBytes(capital), entry::primaryBytes(e));
    EXPECT_EQ(entry::primaryLength(capital), 1U);
    EXPECT_EQ(entry::elements(capital), 2U);
    EXPECT_GT(entry::secondary(capital), kSecondaryTop);
    EXPECT_GT(entry::tertiary(capital), kTertiaryTop);
    EXPECT_EQ(capital & entry::kSpecial, 0U);
}

TEST(SortEntries, MarksAndWhatTheyMayJoinAreKnown)
{
    const auto data = build("sv");
    const SortEntry ring = data->m_tPages.find(0x30A);
    EXPECT_NE(ring & entry::kMark, 0U);
    EXPECT_EQ(entry::primaryLength(ring), 0U);
    EXPECT_EQ(entry::elements(ring), 1U);
    EXPECT_NE(data->m_tPages.find(U'a') & entry::kCare, 0U);
    EXPECT_EQ(data->m_tPages.find(U'b') & entry::kCare, 0U);
}

TEST(SortEntries, WhatMayJoinItsNeighboursIsKnown)
{
    const auto joins = [](const SortData& data, char32_t first, char32_t second) {
        return entry::mayJoin(data.m_tPages.find(first), data.m_tPages.find(second));
    };
    const auto czech = build("cs");
    EXPECT_TRUE(joins(*czech, U'c', U'h'));
    EXPECT_TRUE(joins(*czech, U'C', U'h'));
    EXPECT_FALSE(joins(*czech, U'h', U'c'));
    EXPECT_FALSE(joins(*czech, U'a', U'h'));
    EXPECT_FALSE(joins(*czech, U'c', U'a'));
    // Hungarian "dzs" is one letter.
    const auto hungarian = build("hu");
    EXPECT_TRUE(joins(*hungarian, U'd', U'z'));
    EXPECT_TRUE(joins(*hungarian, U'z', U's'));
    const auto swedish = build("sv");
    EXPECT_TRUE(joins(*swedish, U'a', 0x30A));
    EXPECT_FALSE(joins(*swedish, U'b', 0x30A));
    EXPECT_TRUE(joins(*swedish, U'l', 0xB7));
    EXPECT_TRUE(joins(*build("th"), 0x0E40, 0x0E01));
    EXPECT_TRUE(joins(*build("ja"), 0x30AB, 0x30FC));
    EXPECT_FALSE(joins(*build("ja"), 0x30AB, 0x30AC));
}

TEST(SortEntries, CharactersHaveTheirKind)
{
    const auto swedish = build("sv");
    EXPECT_TRUE(entry::isKind(swedish->m_tPages.find(0xFDFA), kElementsKind));
    EXPECT_TRUE(entry::isKind(swedish->m_tPages.find(0xE000), kSlowKind));
    EXPECT_TRUE(entry::isKind(swedish->m_tPages.find(0x0378), kSlowKind));
    EXPECT_TRUE(entry::isKind(swedish->m_tPages.find(0x10FFFF), kSlowKind));
    EXPECT_TRUE(entry::isKind(swedish->m_tPages.find(0xD83D), kSurrogateKind));
    EXPECT_TRUE(entry::isKind(swedish->m_tPages.find(0x0E40), kStartKind));
    EXPECT_TRUE(entry::isKind(swedish->m_tPages.find(0x00B7), kPrefixKind));
    EXPECT_TRUE(entry::isKind(build("cs")->m_tPages.find(U'c'), kStartKind));
    EXPECT_TRUE(entry::isKind(build("ja")->m_tPages.find(0x30FC), kPrefixKind));
    EXPECT_TRUE(entry::isKind(build("en-u-ka-shifted")->m_tPages.find(U'-'), kVariableKind));
    EXPECT_TRUE(entry::isKind(build("en-u-kn")->m_tPages.find(U'7'), kSlowKind));
}

TEST(SortEntries, LettersOfTheLanguageHaveOneByte)
{
    const auto primaryLength = [](const SortData& data, char32_t c) {
        return entry::primaryLength(data.m_tPages.find(c));
    };
    EXPECT_EQ(primaryLength(*build("sv"), U'ö'), 1U);
    EXPECT_EQ(primaryLength(*build("ru"), U'ж'), 1U);
    EXPECT_EQ(primaryLength(*build("ar"), 0x0639), 1U);
    EXPECT_EQ(primaryLength(*build("th"), 0x0E01), 1U);
    EXPECT_EQ(primaryLength(*build("ja"), 0x30AB), 1U);
    // Kana with a voicing mark, and syllables of two and three letters, are one entry.
    EXPECT_EQ(entry::elements(build("ja")->m_tPages.find(0x30AC)), 2U);
    const auto korean = build("ko");
    EXPECT_EQ(primaryLength(*korean, 0xAC00), 2U);
    EXPECT_EQ(primaryLength(*korean, 0xAC01), 3U);
    EXPECT_EQ(primaryLength(*build("zh"), 0x4E2D), 2U);
}

TEST(SortEntries, ATableStaysSmall)
{
    for (const char* tag : {"und", "sv", "ja", "ko", "th", "hi"}) {
        EXPECT_LE(build(tag)->memory(), std::size_t{4'000'000}) << tag;
    }
    EXPECT_LE(build("zh")->memory(), std::size_t{6'000'000});
    EXPECT_LE(build("zh-u-co-stroke")->memory(), std::size_t{6'000'000});
}

TEST(ShortKeys, NamesOfAllLanguagesTakeTheShortWay)
{
    EXPECT_TRUE(isShort(*build("en"), u"Central European Standard Time (Berlin), 1999-2005"));
    EXPECT_TRUE(isShort(*build("de"), u"Österreichischer Schilling"));
    EXPECT_TRUE(isShort(*build("sv"), u"Åland, Örebro och Malmö"));
    EXPECT_TRUE(isShort(*build("fr-CA"), u"côté élevé"));
    EXPECT_TRUE(isShort(*build("ru"), u"Российский рубль"));
    EXPECT_TRUE(isShort(*build("ar"), u"الدرهم الإماراتي"));
    EXPECT_TRUE(isShort(*build("th"), u"เขตเวลา แปซิฟิก"));
    EXPECT_TRUE(isShort(*build("th"), u"เขตเวลา (แปซิฟิก)", SortStrength::kQuaternary));
    EXPECT_TRUE(isShort(*build("th"), u"เขตเวลา (แปซิฟิก)", SortStrength::kIdentical));
    EXPECT_TRUE(isShort(*build("ja"), u"アメリカ・ドル、ガーナ"));
    EXPECT_TRUE(isShort(*build("ja"), u"アメリカ・ドル、ガーナ", SortStrength::kIdentical));
    EXPECT_TRUE(isShort(*build("ko"), u"대한민국 원"));
    EXPECT_TRUE(isShort(*build("zh"), u"中国（人民币）"));
    EXPECT_TRUE(isShort(*build("und"), u"대한민국 中国 Россия"));
    EXPECT_TRUE(isShort(*build("cs"), u"chci český chléb"));
}

TEST(ShortKeys, WhatIsHardGoesToTheWriter)
{
    EXPECT_FALSE(isShort(*build("sv"), u"a\u030Anger"));
    EXPECT_FALSE(isShort(*build("en"), u"a\uE000"));
    EXPECT_FALSE(isShort(*build("en"), u"\uFDFA"));
    EXPECT_FALSE(isShort(*build("en"), std::u16string(257, u'a')));
}

TEST(ShortKeys, RunsTooLongForThemGoToTheWriter)
{
    // A capital is below what is common here; 252 elements stand before it.
    const auto data = build("ko-u-kf-upper");
    EXPECT_TRUE(isShort(*data, std::u16string(80, u'\uAC01') + u"A"));
    EXPECT_FALSE(isShort(*data, std::u16string(84, u'\uAC01') + u"A"));
}

TEST(SlowWay, WhatIcuHasNoDataForIsComputed)
{
    EXPECT_EQ(slowUnits(*build("en"), u"\uE000a\u0378\U0010FFFD"), 0U);
    EXPECT_EQ(slowUnits(*build("zh"), u"\uF8FF\u0301\U000F0000"), 0U);
}

TEST(SlowWay, IdeographsBeyondTheBasicPlaneAreLookedUp)
{
    EXPECT_EQ(slowUnits(*build("en"), u"\U00020000\U00020BB7\u5BB6\U000323AF"), 0U);
    EXPECT_EQ(slowUnits(*build("zh-u-co-stroke"), u"\U00020000\U0002A6DD\U00030000"), 0U);
    EXPECT_NE(slowUnits(*build("en"), u"\U0002F800"), 0U);  // one that stands for another
}

TEST(SlowWay, NumbersAreComputed)
{
    EXPECT_EQ(slowUnits(*build("en-u-kn"), u"7"), 0U);
    EXPECT_EQ(slowUnits(*build("sv-u-kn"), u"bild 0012, \u0967\u0968 och " + std::u16string(600, u'9')), 0U);
    EXPECT_EQ(slowUnits(*build("ja-u-kn-kr-digit-latn"), u"2024\u5E7412\u6708"), 0U);
}

TEST(SlowWay, SequencesOfManyCharactersAreNoneOfIcus)
{
    const auto burmese = build("my");
    EXPECT_EQ(slowUnits(*burmese, u"\u1019\u103C\u1014\u103A\u1019\u102C"), 0U);  // a sequence of two
    EXPECT_EQ(slowUnits(*burmese, u"\u1021\u1004\u103A\u1039\u1002"), 0U);        // two marks in order within one
    EXPECT_EQ(slowUnits(*burmese, u"\u1018\u103A\u1001\u102B"), 0U);              // the beginning of one, then others
    EXPECT_EQ(slowUnits(*build("ta"), u"\u0B95\u0BCD\u0BB7\u0BCD \u0B95\u0BBF"), 0U);
    EXPECT_EQ(slowUnits(*build("ml"), u"\u0D28\u0D4D\u200D\u0D31\u0D46"), 0U);
}

TEST(SlowWay, OnlyWhatStandsAroundGoesThroughIcu)
{
    const auto data = build("en");
    const std::u16string letters(5'000, u'a');
    EXPECT_EQ(slowUnits(*data, letters), 0U);
    const std::size_t hard = slowUnits(*data, letters + u"\U0002F800" + letters);
    EXPECT_GE(hard, 2U);
    EXPECT_LE(hard, 12U);
    EXPECT_EQ(slowUnits(*build("sv"), u"a\u030Anger"), 0U);
    const auto thai = build("th");
    EXPECT_EQ(slowUnits(*thai, u"เขตเวลา"), 0U);
    EXPECT_EQ(slowUnits(*thai, u"หมู่เกาะ"), 0U);
}

TEST(SteadyState, NeitherKeysNorComparisonAllocate)
{
    for (const char* tag : {"en", "fr-CA", "ja", "th"}) {
        const auto table = SortTable::open(tag);
        const std::u16string text = std::u16string(300, u'é') + u"ガーเก-a\u0301\uFDFA";
        const std::wstring wide(text.begin(), text.end());
        const std::wstring other = wide + L"a\u0300\u0323";
        const std::string bytes = bytesOf(text);
        std::string key(20 * bytes.size(), '\0');
        const auto run = [&] {
            for (int i = 0; i < 5; ++i) {
                table->makeKey(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(),
                               static_cast<SortStrength>(i), reinterpret_cast<unsigned char*>(key.data()), key.size());
                table->compare(wide.data(), wide.size(), other.data(), other.size(), static_cast<SortStrength>(i));
            }
        };
        run();
        const testsupport::AllocationCount count;
        run();
        EXPECT_EQ(count.value(), 0U) << tag;
    }
}

TEST(LongTexts, EachNumberTakesRoomForItselfOnly)
{
    // Room for all that follows a number would be too large to be kept, and be allocated for each of them.
    constexpr std::size_t kNumbers = 200'000;
    const auto table = SortTable::open("en-u-kn");
    std::u16string text;
    for (std::size_t i = 0; i < kNumbers; ++i) {
        text += u"7a";
    }
    const std::string bytes = bytesOf(text);
    std::string key(4 * bytes.size(), '\0');
    const testsupport::AllocationCount count;
    EXPECT_LT(table->makeKey(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), SortStrength::kPrimary,
                             reinterpret_cast<unsigned char*>(key.data()), key.size()),
              key.size());
    EXPECT_LT(count.value(), kNumbers / 100);
}

TEST(LongTexts, AHundredMegabytesHaveAKey)
{
    const auto table = SortTable::open("sv");
    std::string bytes;
    for (const std::u16string_view part : {u"Göteborg och a\u030Angermanland, ", u"\uE000\uFDFA c\u0327\u0301h "}) {
        bytes += bytesOf(part);
    }
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr std::size_t kSize = 4'000'000;
#else
    constexpr std::size_t kSize = 100'000'000;
#endif
    std::string text;
    text.reserve(kSize + bytes.size());
    while (text.size() < kSize) {
        text += bytes;
    }
    std::string key(2 * text.size(), '\0');
    const std::size_t size =
        table->makeKey(reinterpret_cast<const unsigned char*>(text.data()), text.size(), SortStrength::kTertiary,
                       reinterpret_cast<unsigned char*>(key.data()), key.size());
    EXPECT_GT(size, text.size() / 2);
    EXPECT_LE(size, key.size());
}

}  // namespace
