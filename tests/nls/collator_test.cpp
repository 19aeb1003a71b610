#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <stdexcept>
#include <string>
#include <vector>

#include "countingservice.h"
#include "faileverywhere.h"
#include "locales.h"
#include "printers.h"
#include "vel/core/exception.h"
#include "vel/nls/sorttable.h"
#include "webi18n/collator.h"

namespace nlstest {

using testing::ElementsAre;
using vel::Handle;
using vel::String;
using namespace vel::i18n;

class CollatorTest : public testing::Test
{
protected:
    CollatorTest()
        : m_hGuard(NLSEnvironment::getEnvironmentGuard()), m_tContext(NLSEnvironment::getDefaultEnvironment())
    {}

    Collator collator(const wchar_t* sort, CollationStrength strength = kCollationStrengthDefault)
    {
        return Collator(m_tContext, String(sort), strength);
    }
    static CollationKey keyOf(Collator& collator, const std::wstring& text)
    {
        return collator.createCollationKey(text.data(), text.size());
    }

    Handle<NLSEnvironment> m_hGuard;
    NLSThreadContext m_tContext;
};

const std::wstring kTexts[] = {L"",
                               L" ",
                               L"a",
                               L"A",
                               L"\u00E4",
                               L"a\u0308",
                               L"\u0308a",
                               L"z",
                               L"co-op",
                               L"coop",
                               L"CO-OP",
                               L"r\u00F4le",
                               L"Role",
                               L"\u0001",
                               L"\u00AD",
                               L"9",
                               L"10",
                               L"\u3042",
                               L"\u30A2",
                               L"\uAC00",
                               L"\u4E00\u4E8C",
                               L"\U0001F600",
                               L"\uFDFA",
                               std::wstring(1, static_cast<wchar_t>(0xD800)),
                               std::wstring{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)},
                               L"\uFFFD\uFFFD",
                               std::wstring(300, L'x')};

TEST_F(CollatorTest, SortsAsEachLanguageSorts)
{
    const auto sorted = [&](const wchar_t* sort) {
        std::vector<std::wstring> words = {L"z", L"\u00E4", L"a"};
        Collator collator = this->collator(sort);
        std::sort(words.begin(), words.end(), [&](const std::wstring& a, const std::wstring& b) {
            return keyOf(collator, a) < keyOf(collator, b);
        });
        return words;
    };
    EXPECT_THAT(sorted(L"sv"), ElementsAre(L"a", L"z", L"\u00E4"));
    EXPECT_THAT(sorted(L"de"), ElementsAre(L"a", L"\u00E4", L"z"));
}

TEST_F(CollatorTest, TheSortIsTheLocales)
{
    const vel::Locale swedish = testsupport::localeOf(testsupport::property("collationNLS_SORT", "sv"));
    EXPECT_EQ(Collator(m_tContext, swedish, kCollationStrengthDefault).sortName(), L"sv");
    EXPECT_EQ(Collator(m_tContext, vel::Locale::kUSA, kCollationStrengthDefault).sortName(), L"en-US");
    EXPECT_THROW(Collator(m_tContext, vel::Locale(), kCollationStrengthDefault), vel::InvalidHandleException);
}

TEST_F(CollatorTest, AnUnknownSortNameLeavesTheDefaultLanguagesSort)
{
    for (const wchar_t* name : {L"no such sort", L"SWEDISH", L"nosuch", L"xx", L"sv-u-zz-foo", L"sv-u-co-nosuch"}) {
        EXPECT_EQ(collator(name).sortName(), L"en-US") << vel::toUtf8Lossy(name);
    }
    EXPECT_EQ(collator(L"").sortName(), L"en-US");
}

TEST_F(CollatorTest, TheLawOfComparison)
{
    for (const wchar_t* sort : {L"und", L"sv", L"de-u-co-phonebk", L"fr-CA", L"ja", L"en-u-ka-shifted",
                                L"da-u-kf-upper", L"en-u-kn", L"binary"}) {
        for (const unsigned strength : {0U, 1U, 2U, 4U, 8U, 16U}) {
            Collator collator = this->collator(sort, static_cast<CollationStrength>(strength));
            for (const std::wstring& a : kTexts) {
                for (const std::wstring& b : kTexts) {
                    ASSERT_EQ(collator.compare(a, b), keyOf(collator, a).compare(keyOf(collator, b)))
                        << vel::toUtf8Lossy(sort) << " " << strength << " " << vel::toUtf8Lossy(a) << " "
                        << vel::toUtf8Lossy(b);
                }
            }
        }
    }
}

TEST_F(CollatorTest, StrengthsCountWhatTheyAreNamedFor)
{
    const auto equal = [&](CollationStrength strength, const wchar_t* a, const wchar_t* b) {
        Collator collator = this->collator(L"en", strength);
        return collator.compare(a, b) == 0;
    };
    EXPECT_TRUE(equal(kCollationStrengthAccentAndCaseInsensitive, L"role", L"R\u00F4le"));
    EXPECT_FALSE(equal(kCollationStrengthCaseInsensitive, L"role", L"r\u00F4le"));
    EXPECT_TRUE(equal(kCollationStrengthCaseInsensitive, L"role", L"Role"));
    EXPECT_FALSE(equal(kCollationStrengthDefault, L"role", L"Role"));
    EXPECT_TRUE(equal(kCollationStrengthDefault, L"a\u0001", L"a"));
    EXPECT_FALSE(equal(kCollationStrengthIdentical, L"a\u0001", L"a"));
}

TEST_F(CollatorTest, BinaryAndDefaultStrengthMakeIdenticalKeys)
{
    Collator binary = collator(L"sv", kCollationStrengthBinary);
    Collator standard = collator(L"sv", kCollationStrengthDefault);
    for (const std::wstring& each : kTexts) {
        EXPECT_EQ(keyOf(binary, each), keyOf(standard, each));
    }
    EXPECT_EQ(static_cast<int>(kCollationStrengthBinary), 0);
    EXPECT_EQ(static_cast<int>(kCollationStrengthPrimaryFlag), 1);
    EXPECT_EQ(static_cast<int>(kCollationStrengthSecondaryFlag), 2);
    EXPECT_EQ(static_cast<int>(kCollationStrengthTertiaryFlag), 4);
    EXPECT_EQ(static_cast<int>(kCollationStrengthQuarnaryFlag), 8);
    EXPECT_EQ(static_cast<int>(kCollationStrengthIdentical), 16);
}

TEST_F(CollatorTest, AnEmptyTextCollatesEqualToEveryText)
{
    CollatorGuts guts(m_tContext.getInternalNlsGlobals(), L"sv");
    for (const std::wstring& each : kTexts) {
        EXPECT_EQ(guts.collateStrings(L"", 0, each.data(), each.size(), 0), 0);
        EXPECT_EQ(guts.collateStrings(each.data(), each.size(), nullptr, 0, 0), 0);
    }
    EXPECT_EQ(guts.compare(L"", 0, L"a", 1, 0), -1) << "the direct comparison has no such exception";
}

TEST_F(CollatorTest, TextsCollateByTheirKeys)
{
    CollatorGuts guts(m_tContext.getInternalNlsGlobals(), L"sv");
    EXPECT_EQ(guts.collateStrings(L"a", 1, L"b", 1, 0), -1);
    EXPECT_EQ(guts.collateStrings(L"b", 1, L"a", 1, 0), 1);
    EXPECT_EQ(guts.collateStrings(L"a", 1, L"a", 1, 0), 0);
    EXPECT_EQ(guts.collateStrings(L"a", 1, L"ab", 2, 0), -1);
    EXPECT_EQ(guts.collateStrings(L"ab", 2, L"a", 1, 0), 1);
    EXPECT_EQ(guts.collateStrings(L"a", 1, L"A", 1, 2), 0);
    EXPECT_EQ(guts.collateStrings(L"z", 1, L"\u00E4", 1, 0), -1);
}

TEST_F(CollatorTest, PooledKeysAreTheSameBytes)
{
    Collator collator = this->collator(L"sv");
    vel::NarrowStringPool pool;
    std::vector<RefCollationKey> kept;
    for (const std::wstring& each : kTexts) {
        kept.push_back(collator.createRefCollationKey(each.data(), each.size(), pool));
    }
    for (std::size_t i = 0; i < kept.size(); ++i) {
        EXPECT_EQ(kept[i].view(), keyOf(collator, kTexts[i]).view());
    }
}

TEST_F(CollatorTest, CopiesShareWhatTheyHold)
{
    Collator first = collator(L"sv", kCollationStrengthIdentical);
    const Collator copy(first);
    EXPECT_EQ(copy.sortName(), L"sv");
    EXPECT_EQ(copy.strength(), kCollationStrengthIdentical);
    Collator other = collator(L"de");
    other = copy;
    EXPECT_EQ(keyOf(other, L"\u00E4"), keyOf(first, L"\u00E4"));
    EXPECT_EQ(other.strength(), kCollationStrengthIdentical);
}

TEST_F(CollatorTest, OneThatHoldsNothingThrowsAndNamesItsGuts)
{
    Collator none;
    vel::NarrowStringPool pool;
    const auto messageOf = [](const auto& work) -> std::string {
        try {
            work();
        } catch (const vel::InvalidHandleException& exception) {
            return exception.what();
        }
        return "nothing thrown";
    };
    const std::string expected = "Invalid handle: vel::i18n::CollatorGuts*";
    EXPECT_EQ(messageOf([&] { none.createCollationKey(L"a", 1); }), expected);
    EXPECT_EQ(messageOf([&] { none.createRefCollationKey(L"a", 1, pool); }), expected);
    EXPECT_EQ(messageOf([&] { none.compare(L"a", L"b"); }), expected);
    EXPECT_EQ(messageOf([&] { none.version(); }), expected);
}

TEST_F(CollatorTest, TheVersionIsThatOfTheOrderAndOfTheKeys)
{
    EXPECT_FALSE(collator(L"sv").version().isEmpty());
    EXPECT_EQ(collator(L"sv").version(), collator(L"sv").version());
}

TEST_F(CollatorTest, AHundredMegabytesOfTextHaveAKey)
{
    const std::wstring text(25'000'000, L'x');
    Collator collator = this->collator(L"und");
    const CollationKey key = keyOf(collator, text);
    EXPECT_GT(key.view().size(), text.size() - 1);
    EXPECT_EQ(key.compare(keyOf(collator, L"x")), 1);
    EXPECT_EQ(collator.compare(text, std::wstring_view(text).substr(1)), 1);
}

TEST_F(CollatorTest, InTheSteadyStateNothingIsAllocated)
{
    for (const wchar_t* sort : {L"en", L"sv", L"fr-CA", L"th", L"ja", L"binary"}) {
        Collator collator = this->collator(sort);
        vel::NarrowStringPool pool(std::size_t{1} << 20);
        const auto work = [&] {
            for (const wchar_t* each : {L"a", L"\u00E4pple", L"Stra\u00DFe", L"The quick brown fox, 1984",
                                        L"a\u0301\u0323\uE000", L"\u0E2B\u0E21\u0E39\u0E48", L"\u30AC\u30FC"}) {
                collator.createRefCollationKey(each, std::wcslen(each), pool);
                collator.compare(each, L"\u00E4pplet");
            }
        };
        work();
        const testsupport::AllocationCount allocations;
        for (int i = 0; i < 100; ++i) {
            work();
        }
        EXPECT_EQ(allocations.value(), 0U) << vel::toUtf8Lossy(sort);
    }
}

TEST(CollatorMemory, NothingIsLostWhereverMemoryRunsOutAndTheNextTryWorks)
{
    const auto work = [] {
        const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
        NLSThreadContext context(NLSEnvironment::getDefaultEnvironment());
        Collator collator(context, String(L"is"), kCollationStrengthDefault);
        vel::NarrowStringPool pool;
        const RefCollationKey thorn = collator.createRefCollationKey(L"\u00FE", 1, pool);
        EXPECT_EQ(thorn.compare(collator.createRefCollationKey(L"z", 1, pool)), 1);  // Icelandic has it after z
        collator.createCollationKey(std::wstring(100, L'x').data(), 100);
    };
    const auto workThrowingMemory = [&] {
        try {
            work();
        } catch (const wchar_t*) {
            throw std::bad_alloc();  // the service's null
        }
    };
    // Building a table is long, and tested by itself without memory: here it is there already.
    const auto table = vel::nls::SortTable::open("is");
    work();  // what stays for the life of the process is made once
    const std::ptrdiff_t before = testsupport::outstandingBlocks();
    testsupport::failEverywhere(workThrowingMemory, [&] { EXPECT_EQ(testsupport::outstandingBlocks(), before); });
    EXPECT_EQ(testsupport::outstandingBlocks(), before);
}

/// An environment on a counted service.
struct Counted
{
    CountingService m_tService;
    Handle<NLSEnvironment> m_hGuard = NLSEnvironment::getEnvironmentGuard();
    NLSThreadContext m_tContext{NLSEnvironment::getDefaultEnvironment()};
};

TEST(CountedCollator, TheLanguageIsTheServicesDefaultInUtf16)
{
    Counted counted;
    const Collator collator(counted.m_tContext, String(L"sv"), kCollationStrengthDefault);
    EXPECT_THAT(counted.m_tService.m_tArguments, ElementsAre(".AL16UTF16", "sv"));
    EXPECT_EQ(counted.m_tService.calls(kLanguageHandleFromName), 1);
    EXPECT_EQ(counted.m_tService.calls(kModifyLanguageHandle), 1);
}

TEST(CountedCollator, WithoutALanguageThereIsNone)
{
    Counted counted;
    counted.m_tService.fail(kLanguageHandleFromName);
    EXPECT_EQ(thrownBy([&] { const Collator none(counted.m_tContext, String(L"sv"), kCollationStrengthDefault); }),
              L"error");
    EXPECT_EQ(counted.m_tService.calls(kModifyLanguageHandle), 0);
}

TEST(CountedCollator, TheStrengthIsHandedOverUnchanged)
{
    Counted counted;
    vel::NarrowStringPool pool;
    for (const unsigned strength : {0U, 1U, 2U, 4U, 8U, 16U, 12U}) {
        Collator collator(counted.m_tContext, String(L"und"), static_cast<CollationStrength>(strength));
        counted.m_tService.m_tFlags.clear();
        collator.createCollationKey(L"a", 1);
        collator.createRefCollationKey(L"a", 1, pool);
        collator.compare(L"a", L"b");
        EXPECT_THAT(counted.m_tService.m_tFlags, ElementsAre(strength, strength, strength));
    }
}

TEST(CountedCollator, ATextWhoseKeyIsExactlyAsLongAsTheFirstCapacityMakesASecondCall)
{
    Counted counted;
    Collator collator(counted.m_tContext, String(L"und"), kCollationStrengthDefault);
    counted.m_tService.m_tKeyLengths = {16, 16};
    EXPECT_EQ(collator.createCollationKey(L"ab", 2).view(), std::string(16, 'k'));
    EXPECT_THAT(counted.m_tService.m_tCapacities, ElementsAre(16U, 32U));
}

TEST(CountedCollator, LongTextsOfEastAsiaFitTheFirstRoom)
{
    std::wstring syllables;
    for (wchar_t c = 0xAC00; c <= 0xD7A3; ++c) {
        syllables += c;
    }
    // Each with a last letter: the longest of them.
    std::wstring closed;
    for (int i = 0; i < 10'000; ++i) {
        closed += static_cast<wchar_t>(0xAC00 + 28 * (i % 399) + 1 + i % 27);
    }
    std::wstring chinese;
    for (wchar_t c = 0x4E00; c <= 0x9FA5; ++c) {
        chinese += c;
    }
    std::wstring japanese;
    for (int i = 0; i < 400; ++i) {
        // The room in the hotel in Tokyo was quiet, and the breakfast was tasty.
        japanese +=
            L"\u6771\u4EAC\u306E\u30DB\u30C6\u30EB\u306E\u90E8\u5C4B\u306F\u9759\u304B\u3067\u3001"
            L"\u671D\u98DF\u306F\u304A\u3044\u3057\u304B\u3063\u305F\u3067\u3059\u3002";
    }
    const std::pair<const wchar_t*, const std::wstring*> rows[] = {{L"ko", &syllables}, {L"und", &syllables},
                                                                   {L"ko", &closed},    {L"en", &closed},
                                                                   {L"zh", &chinese},   {L"ja", &japanese}};
    Counted counted;
    for (const auto& [sort, text] : rows) {
        for (const unsigned strength : {1U, 2U, 4U, 8U, 16U}) {
            Collator collator(counted.m_tContext, String(sort), static_cast<CollationStrength>(strength));
            counted.m_tService.m_tCapacities.clear();
            vel::NarrowStringPool pool;
            collator.createCollationKey(text->data(), text->size());
            collator.createRefCollationKey(text->data(), text->size(), pool);
            EXPECT_EQ(counted.m_tService.m_tCapacities.size(), 2U) << vel::toUtf8Lossy(sort) << " " << strength;
        }
    }
}

TEST(CountedCollator, CollatingMakesTheLeftKeyThenTheRight)
{
    Counted counted;
    CollatorGuts guts(counted.m_tContext.getInternalNlsGlobals(), L"und");
    guts.collateStrings(L"a", 1, L"b", 1, 2);
    EXPECT_THAT(counted.m_tService.m_tInputs, ElementsAre(std::string("\0a", 2), std::string("\0b", 2)));
    EXPECT_THAT(counted.m_tService.m_tFlags, ElementsAre(2U, 2U));
    counted.m_tService.m_tKeyLengths = {2, 3, 3, 2};
    EXPECT_EQ(guts.collateStrings(L"a", 1, L"b", 1, 0), -1);
    EXPECT_EQ(guts.collateStrings(L"a", 1, L"b", 1, 0), 1);
}

TEST(CountedCollator, ASortWithoutANameIsAskedForAsWell)
{
    Counted counted;
    const Collator collator(counted.m_tContext, String(), kCollationStrengthDefault);
    EXPECT_THAT(counted.m_tService.m_tArguments, ElementsAre(".AL16UTF16", ""));
    EXPECT_EQ(counted.m_tService.calls(kModifyLanguageHandle), 1);
}

TEST(CountedCollator, KeysCollateAsUnsignedBytesUpToTheirEnd)
{
    Counted counted;
    CollatorGuts guts(counted.m_tContext.getInternalNlsGlobals(), L"und");
    const auto collate = [&](const std::string& left, const std::string& right) {
        counted.m_tService.m_tKeys = {left, right};
        return guts.collateStrings(L"a", 1, L"b", 1, 0);
    };
    EXPECT_EQ(collate("\x7F", "\x80"), -1);
    EXPECT_EQ(collate("\xFF", "\x01"), 1);
    EXPECT_EQ(collate(std::string("k\0a", 3), std::string("k\0b", 3)), -1) << "a zero ends no key";
    EXPECT_EQ(collate(std::string("k\0", 2), "k"), 1);
}

TEST(CollationKeys, CompareAsUnsignedBytesUpToTheirEnd)
{
    const auto both = [](std::string_view left, std::string_view right) {
        const auto pooled = [](std::string_view bytes) {
            return RefCollationKey(vel::NarrowRefString(bytes.data(), bytes.size()));
        };
        const int order = CollationKey(vel::NarrowString(left)).compare(CollationKey(vel::NarrowString(right)));
        EXPECT_EQ(pooled(left).compare(pooled(right)), order);
        return order;
    };
    EXPECT_EQ(both("\x7F", "\x80"), -1);
    EXPECT_EQ(both("\xFF", "\x01"), 1);
    EXPECT_EQ(both(std::string_view("k\0a", 3), std::string_view("k\0b", 3)), -1);
    EXPECT_EQ(both("k", "kk"), -1);
    EXPECT_EQ(both("", ""), 0);
}

TEST_F(CollatorTest, TextsCollateBeyondAZero)
{
    CollatorGuts guts(m_tContext.getInternalNlsGlobals(), L"und");
    EXPECT_EQ(guts.collateStrings(L"a\0b", 3, L"a\0c", 3, 0), -1);
    EXPECT_EQ(guts.collateStrings(L"\0b", 2, L"\0a", 2, 0), 1);
    EXPECT_EQ(guts.compare(L"a\0b", 3, L"a\0c", 3, 0), -1);
}

TEST_F(CollatorTest, KeysShareTheWorkBufferThatOnlyGrows)
{
    const std::wstring text(1000, L'x');
    CollatorGuts guts(m_tContext.getInternalNlsGlobals(), L"und");
    CollationKey key;
    guts.createCollationKey(text.data(), text.size(), 0, key);
    vel::NarrowStringPool pool(std::size_t{1} << 16);
    RefCollationKey pooled;
    guts.createRefCollationKey(L"x", 1, 0, pool, pooled);  // the pool has its block
    const testsupport::AllocationCount allocations;
    guts.createCollationKey(text.data(), text.size(), 0, key);
    guts.createRefCollationKey(text.data(), text.size(), 0, pool, pooled);
    guts.createCollationKey(text.data(), text.size(), 0, key);
    EXPECT_EQ(allocations.value(), 0U);
}

TEST(CountedCollator, WithoutADirectComparisonTheKeysDecide)
{
    CountingService service;
    service.table().m_pCompareTexts = nullptr;
    const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
    NLSThreadContext context(NLSEnvironment::getDefaultEnvironment());
    Collator collator(context, String(L"sv"), kCollationStrengthDefault);
    EXPECT_EQ(collator.compare(L"z", L"\u00E4"), -1);
    EXPECT_EQ(collator.compare(L"\u00E4", L"z"), 1);
    EXPECT_EQ(collator.compare(L"", L"z"), -1);
    EXPECT_EQ(collator.compare(L"", L""), 0);
    EXPECT_EQ(service.calls(kMakeSortKey), 8);
}

}  // namespace nlstest
