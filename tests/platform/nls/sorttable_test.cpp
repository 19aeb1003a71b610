#include "vel/nls/sorttable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "faileverywhere.h"
#include "utf16text.h"

namespace {

using testsupport::bytesOf;
using vel::nls::SortStrength;
using vel::nls::SortTable;

std::string keyOfBytes(const SortTable& table, std::string_view bytes, SortStrength strength)
{
    std::string key(16 * bytes.size() + 64, '\0');
    const std::size_t size = table.makeKey(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), strength,
                                           reinterpret_cast<unsigned char*>(key.data()), key.size());
    EXPECT_LE(size, key.size());
    key.resize(std::min(size, key.size()));
    return key;
}

std::string keyOf(const SortTable& table, std::u16string_view text, SortStrength strength = SortStrength::kTertiary)
{
    return keyOfBytes(table, bytesOf(text), strength);
}

std::shared_ptr<const SortTable> open(std::string_view name)
{
    std::shared_ptr<const SortTable> table = SortTable::open(name);
    EXPECT_NE(table, nullptr) << name;
    return table;
}

std::vector<std::u16string> sorted(std::string_view name, std::vector<std::u16string> texts)
{
    const auto table = open(name);
    std::sort(texts.begin(), texts.end(), [&](const std::u16string& left, const std::u16string& right) {
        return keyOf(*table, left) < keyOf(*table, right);
    });
    return texts;
}

TEST(SortTable, EachLanguageHasItsOrder)
{
    using Texts = std::vector<std::u16string>;
    EXPECT_EQ(sorted("sv", {u"z", u"ä", u"a"}), (Texts{u"a", u"z", u"ä"}));
    EXPECT_EQ(sorted("de", {u"z", u"ä", u"a"}), (Texts{u"a", u"ä", u"z"}));
    EXPECT_EQ(sorted("de-u-co-phonebk", {u"af", u"ä", u"ad"}), (Texts{u"ad", u"ä", u"af"}));
    EXPECT_EQ(sorted("cs", {u"d", u"ch", u"h", u"i"}), (Texts{u"d", u"h", u"ch", u"i"}));
    EXPECT_EQ(sorted("en", {u"côté", u"cote", u"coté", u"côte"}), (Texts{u"cote", u"coté", u"côte", u"côté"}));
    EXPECT_EQ(sorted("fr-CA", {u"côté", u"cote", u"coté", u"côte"}), (Texts{u"cote", u"côte", u"coté", u"côté"}));
    EXPECT_EQ(sorted("en", {u"a", u"A"}), (Texts{u"a", u"A"}));
    EXPECT_EQ(sorted("da-u-kf-upper", {u"a", u"A"}), (Texts{u"A", u"a"}));
    EXPECT_EQ(sorted("en", {u"a10", u"a9"}), (Texts{u"a10", u"a9"}));
    EXPECT_EQ(sorted("en-u-kn", {u"a10", u"a9"}), (Texts{u"a9", u"a10"}));
    EXPECT_EQ(sorted("binary", {u"b", u"A", u"a", u"\U00010000", u"\uFFFF", u"é"}),
              (Texts{u"A", u"a", u"b", u"é", u"\uFFFF", u"\U00010000"}));
}

TEST(SortTable, NamesThatAreNoSortHaveNoTable)
{
    for (const char* name :
         {"", "en_US", "a b", "fr-u-co-phonebk", "zh-u-co-phonebk", "en-u-co-bogus", "en-u-ka-what", "en-u-kn-what",
          "en-u-kr-what", "binary_", "-", "e", "en-", "xx", "SWEDISH", "nosuch", "en-u-zz-foo"}) {
        EXPECT_EQ(SortTable::open(name), nullptr) << name;
    }
    EXPECT_EQ(SortTable::open(std::string_view("en\0sv", 5)), nullptr);
    EXPECT_EQ(SortTable::open(std::string(100'000, 'a')), nullptr);
}

TEST(SortTable, TheNameIsCanonical)
{
    EXPECT_EQ(open("SV")->name(), "sv");
    EXPECT_EQ(open("de-u-co-phonebk")->name(), "de-u-co-phonebk");
    EXPECT_EQ(open("Binary")->name(), "binary");
    EXPECT_EQ(open("und")->name(), "und");
}

TEST(SortTable, ATableIsSharedWhileAnyoneHoldsIt)
{
    const auto first = open("sv");
    EXPECT_EQ(first, open("sv"));
    EXPECT_EQ(first, open("SV"));
    EXPECT_NE(first, open("de"));
    EXPECT_EQ(open("binary").use_count(), 1);
}

TEST(SortTable, NothingIsKeptWhenTheLastHolderIsGone)
{
    open("sv").reset();
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    open("fi").reset();
    open("zh-u-co-stroke").reset();
    open("binary").reset();
    EXPECT_EQ(testsupport::outstandingBlocks(), before);
}

TEST(SortTable, TheKeyOfNothingIsEmpty)
{
    for (const char* name : {"sv", "th", "en-u-ka-shifted", "fr-CA", "en-u-kc", "binary"}) {
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(keyOf(*open(name), u"", static_cast<SortStrength>(i)), "") << name << i;
        }
    }
    EXPECT_EQ(keyOf(*open("sv"), std::u16string_view(u"\0\u200D", 2)), "");
}

TEST(SortTable, IllFormedTextCountsAsReplacementCharacters)
{
    for (const char* name : {"sv", "binary", "en-u-kc"}) {
        const auto table = open(name);
        EXPECT_EQ(keyOf(*table, u"a\xD800z"), keyOf(*table, u"a\uFFFDz"));
        EXPECT_EQ(keyOf(*table, u"a\xDC00\xD800"), keyOf(*table, u"a\uFFFD\uFFFD"));
        EXPECT_EQ(keyOfBytes(*table, bytesOf(u"ab") + "x", SortStrength::kTertiary), keyOf(*table, u"ab\uFFFD"));
        EXPECT_EQ(keyOfBytes(*table, "x", SortStrength::kTertiary), keyOf(*table, u"\uFFFD"));
    }
}

/// Whatever room there is: the length is told, and nothing is written behind it.
void expectWrittenOnlyWhereItFits(const SortTable& table, const std::string& text, SortStrength strength,
                                  std::size_t fewest)
{
    const std::string key = keyOfBytes(table, text, strength);
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    for (std::size_t capacity = fewest; capacity <= key.size() + 2; ++capacity) {
        std::string out(capacity + 8, '#');
        EXPECT_EQ(table.makeKey(bytes, text.size(), strength, reinterpret_cast<unsigned char*>(out.data()), capacity),
                  key.size());
        EXPECT_EQ(out.substr(capacity), "########") << capacity;
        if (capacity >= key.size()) {
            EXPECT_EQ(out.substr(0, key.size()), key);
        }
    }
    EXPECT_EQ(table.makeKey(bytes, text.size(), strength, nullptr, 0), key.size());
}

TEST(SortTable, AKeyIsWrittenOnlyWhenItFits)
{
    for (const char* name : {"sv", "binary", "en-u-kc", "fr-CA", "th", "ja", "en-u-ka-shifted"}) {
        const auto table = open(name);
        for (int i = 0; i < 5; ++i) {
            const auto strength = static_cast<SortStrength>(i);
            for (const char16_t* text :
                 {u"Göteborg", u"หมู่เกาะ", u"アメリカ・ドル", u"a\u0301\u0323", u"-\uE000\uFDFA!"}) {
                expectWrittenOnlyWhereItFits(*table, bytesOf(text), strength, 0);
            }
            // Longer than what is written in one go; where it is short by one and by two.
            for (const std::u16string& text : {std::u16string(255, u'é'), std::u16string(256, u'é'),
                                               std::u16string(257, u'é'), std::u16string(3'000, u'A')}) {
                const std::string bytes = bytesOf(text);
                const std::size_t size = keyOfBytes(*table, bytes, strength).size();
                expectWrittenOnlyWhereItFits(*table, bytes, strength, size - std::min<std::size_t>(size, 2));
            }
        }
    }
}

TEST(SortTable, WideTextComparesAsItsCodePoints)
{
    for (const char* name : {"en", "binary"}) {
        const auto table = open(name);
        const auto compare = [&](std::wstring_view a, std::wstring_view b) {
            return table->compare(a.data(), a.size(), b.data(), b.size(), SortStrength::kIdentical);
        };
        EXPECT_EQ(compare(L"", L""), 0);
        EXPECT_EQ(compare(L"", L"a"), -1);
        EXPECT_EQ(compare(L"b", L"a"), 1);
        EXPECT_EQ(compare(L"\U0001F600", L"\U0001F601"), -1);
        const wchar_t pair[] = {0xD83D, 0xDE00};  // no characters, not even together
        EXPECT_EQ(compare(std::wstring_view(pair, 2), L"\uFFFD\uFFFD"), 0);
        const wchar_t none[] = {static_cast<wchar_t>(0x110000), -1, 0xDC00};
        EXPECT_EQ(compare(std::wstring_view(none, 3), L"\uFFFD\uFFFD\uFFFD"), 0);
    }
}

/// In memory of just its size, so that a sanitizer sees what is read beyond it.
int compareExactly(const SortTable& table, std::wstring_view a, std::wstring_view b,
                   SortStrength strength = SortStrength::kTertiary)
{
    const std::vector<wchar_t> left(a.begin(), a.end());
    const std::vector<wchar_t> right(b.begin(), b.end());
    const int order = table.compare(left.data(), left.size(), right.data(), right.size(), strength);
    EXPECT_EQ(table.compare(right.data(), right.size(), left.data(), left.size(), strength), -order);
    return order;
}

TEST(SortTable, TheFirstDifferenceDecidesWhereverItIs)
{
    const auto table = open("en");
    for (std::size_t before = 0; before <= 20; ++before) {
        for (std::size_t behind = 0; behind <= 20; ++behind) {
            const std::wstring prefix(before, L'm');
            const std::wstring rest(behind, L'n');
            EXPECT_EQ(compareExactly(*table, prefix + L"a" + rest, prefix + L"b" + rest), -1);
            EXPECT_EQ(compareExactly(*table, prefix + L"b", prefix + L"a" + rest), 1);
            EXPECT_EQ(compareExactly(*table, prefix + L"a" + rest, prefix + L"A" + rest), -1);
            EXPECT_EQ(compareExactly(*table, prefix + L"A" + rest, prefix + L"\u00E1" + rest), -1);
            EXPECT_EQ(compareExactly(*table, prefix + L"A" + rest + L"a", prefix + L"a" + rest + L"b"), -1);
            EXPECT_EQ(compareExactly(*table, prefix + L"A" + rest, prefix + L"a" + rest, SortStrength::kSecondary), 0);
            EXPECT_EQ(compareExactly(*table, prefix + rest, prefix + rest + L"a"), -1);
            EXPECT_EQ(compareExactly(*table, prefix + rest, prefix + rest, SortStrength::kIdentical), 0);
        }
    }
}

TEST(SortTable, WhatStandsBesideADifferenceCounts)
{
    const auto czech = open("cs");  // h, ch, i
    EXPECT_EQ(compareExactly(*czech, L"xci", L"xch"), -1);
    EXPECT_EQ(compareExactly(*czech, L"xch", L"xi"), -1);
    EXPECT_EQ(compareExactly(*czech, L"xcha", L"xhz"), 1);
    EXPECT_EQ(compareExactly(*czech, L"xc", L"xch"), -1);
    EXPECT_EQ(compareExactly(*czech, L"xcza", L"xCZa"), -1);
    const auto hungarian = open("hu");  // c, cs, d, dz, dzs, e
    EXPECT_EQ(compareExactly(*hungarian, L"dzs", L"dzz"), 1);
    EXPECT_EQ(compareExactly(*hungarian, L"dzs", L"e"), -1);
    EXPECT_EQ(compareExactly(*hungarian, L"cza", L"csa"), -1);
    const auto swedish = open("sv");  // a, z, a with ring
    EXPECT_EQ(compareExactly(*swedish, L"xaz", L"xa\u030A"), -1);
    EXPECT_EQ(compareExactly(*swedish, L"xa\u030A", L"xz"), 1);
    EXPECT_EQ(compareExactly(*swedish, L"xb\u030A", L"xc"), -1);
    const auto thai = open("th");  // the consonant of a vowel before it comes first
    EXPECT_EQ(compareExactly(*thai, L"\u0E40\u0E02", L"\u0E01\u0E01"), 1);
    EXPECT_EQ(compareExactly(*thai, L"\u0E40\u0E01", L"\u0E02"), -1);
    EXPECT_EQ(compareExactly(*thai, L"\u0E01\u0E40\u0E02", L"\u0E01\u0E40\u0E01"), 1);
    const auto shifted = open("en-u-ka-shifted");
    EXPECT_EQ(compareExactly(*shifted, L"a-b", L"ab"), 0);
    EXPECT_EQ(compareExactly(*shifted, L"a-b", L"ab", SortStrength::kQuaternary), -1);
    EXPECT_EQ(compareExactly(*shifted, L"a-\u0301b", L"a-b"), 0);
    const auto numeric = open("en-u-kn");
    EXPECT_EQ(compareExactly(*numeric, L"a10", L"a9"), 1);
    EXPECT_EQ(compareExactly(*numeric, L"a10b", L"a10c"), -1);
    EXPECT_EQ(compareExactly(*numeric, L"a1", L"a10"), -1);
}

TEST(SortTable, TheLastAccentDecidesInCanadianFrenchUpToASeparator)
{
    const auto table = open("fr-CA");
    EXPECT_EQ(compareExactly(*table, L"c\u00F4te", L"cot\u00E9"), -1);
    EXPECT_EQ(compareExactly(*table, L"\u00E9x\u00E8", L"\u00E8x\u00E9"), 1);
    // What U+FFFE parts is compared part by part, from the first one on.
    EXPECT_EQ(compareExactly(*table, L"\u00E9\uFFFE\u00E8", L"\u00E8\uFFFE\u00E9"), -1);
}

/// Whether the work, by a thread of its own, ran out of memory at its allocation of that number.
template <typename Work>
bool failsOnAThreadAt(std::size_t nth, const Work& work)
{
    bool hasFailed = false;
    std::thread([&] { hasFailed = testsupport::failsAt(nth, work); }).join();
    return hasFailed;
}

template <typename Work>
void expectNothingLeftWhereverMemoryRunsOut(const Work& work)
{
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    for (std::size_t nth = 0; failsOnAThreadAt(nth, work); nth += nth < 20 ? 1 : nth / 4) {
        ASSERT_EQ(testsupport::outstandingBlocks(), before) << nth;
        ASSERT_LT(nth, 10'000U);
    }
    EXPECT_EQ(testsupport::outstandingBlocks(), before);
}

TEST(SortTable, AKeyForWhichMemoryRunsOutLeavesNothing)
{
    for (const char* name : {"ja", "en-u-kc", "binary"}) {
        const auto table = open(name);
        // Blocks that threads keep are too small for it.
        const std::u16string text = std::u16string(140'000, u'é') + u"\uE000ガa\u0323\u0301";
        const std::string bytes = bytesOf(text);
        const std::string key = keyOfBytes(*table, bytes, SortStrength::kIdentical);
        std::string out(key.size(), '\0');
        expectNothingLeftWhereverMemoryRunsOut([&] {
            std::fill(out.begin(), out.end(), '\0');
            table->makeKey(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), SortStrength::kIdentical,
                           reinterpret_cast<unsigned char*>(out.data()), out.size());
        });
        EXPECT_TRUE(out == key) << name;
        const std::wstring wide(text.begin(), text.end());
        int order = 0;
        expectNothingLeftWhereverMemoryRunsOut([&] {
            order = table->compare(wide.data(), wide.size(), wide.data() + 1, wide.size() - 1, SortStrength::kTertiary);
        });
        EXPECT_EQ(order, -1);  // a letter against U+E000
    }
}

TEST(SortTable, ABuildThatRunsOutOfMemoryLeavesNothing)
{
    open("hu").reset();
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    bool isDone = false;
    for (std::size_t nth = 0; !isDone; nth += nth < 40 ? 1 : nth / 3) {
        const testsupport::FailingAllocations failing(nth);
        try {
            isDone = SortTable::open("hu") != nullptr && !failing.hasFailed();
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(testsupport::outstandingBlocks(), before) << nth;
        }
    }
    EXPECT_EQ(testsupport::outstandingBlocks(), before);
    EXPECT_NE(open("hu"), nullptr);
}

}  // namespace
