#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/ulocdata.h>
#include <unicode/uset.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "builtsort.h"
#include "namecorpora.h"
#include "sortcontexts.h"

// How much of real text takes the fast ways, and what the tables hold: an order can be right and slow.

namespace {

using namespace vel::nls;
using namespace builtsort;

// ------------------------------------------------------------------------------------------------------------- shares

/// The smallest shares, in thousandths, of the texts that take the way of short texts at every strength, and of the
/// code units that the table reads without ICU.
struct Share
{
    const char* m_szCorpus;
    std::size_t m_nShort;
    std::size_t m_nWithoutIcu;
};

constexpr Share kShares[] = {
    {"ASCII", 1000, 1000}, {"en", 1000, 1000},   {"de", 990, 1000},  // U+00DF has an accent first and a case last
    {"sv", 1000, 1000},    {"fr-CA", 995, 1000}, {"ru", 995, 1000},
    {"ar", 990, 1000},  // of vowel points only the third level is anything
    {"th", 950, 1000},  // so many names have a vowel and a tone over one consonant
    {"ja", 995, 1000},     {"ko", 995, 1000},    {"zh", 995, 1000},
    {"mixed", 990, 1000},
};

std::string nameOf(const testing::TestParamInfo<Share>& test)
{
    std::string name = test.param.m_szCorpus;
    name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
    return name;
}

class Shares : public testing::TestWithParam<Share>
{
protected:
    static const testsupport::SortCorpus& corpus()
    {
        static const std::vector<testsupport::SortCorpus> s_corpora = testsupport::nameCorpora();
        const auto found = std::find_if(s_corpora.begin(), s_corpora.end(),
                                        [](const auto& each) { return each.m_sName == GetParam().m_szCorpus; });
        EXPECT_NE(found, s_corpora.end());
        EXPECT_EQ(s_corpora.size(), std::size(kShares));
        return *found;
    }
};

TEST_P(Shares, NearlyAllNamesTakeTheFastWays)
{
    const testsupport::SortCorpus& names = corpus();
    const auto data = build(names.m_sTag);
    std::size_t shortTexts = 0;
    std::size_t units = 0;
    std::size_t slow = 0;
    for (const std::u16string& text : names.m_tTexts) {
        bool areShort = true;
        for (int strength = 0; strength < 5; ++strength) {
            areShort = areShort && isShort(*data, text, static_cast<SortStrength>(strength));
        }
        shortTexts += areShort ? 1 : 0;
        units += text.size();
        slow += slowUnits(*data, text);
    }
    ASSERT_GE(names.m_tTexts.size(), 1500U);
    EXPECT_GE(1000 * shortTexts, GetParam().m_nShort * names.m_tTexts.size());
    EXPECT_GE(1000 * (units - slow), GetParam().m_nWithoutIcu * units);
}

INSTANTIATE_TEST_SUITE_P(Corpora, Shares, testing::ValuesIn(kShares), nameOf);

// -------------------------------------------------------------------------------------------------------------- kinds

bool isAssigned(char32_t c)
{
    switch (u_charType(static_cast<UChar32>(c))) {
    case U_UNASSIGNED:
    case U_PRIVATE_USE_CHAR:
    case U_SURROGATE:
        return false;
    default:
        return true;
    }
}

/// What the contexts of a sort say of the characters of plane 0.
class Expected
{
public:
    explicit Expected(const UCollator* collator)
    {
        const SortContexts contexts = readContexts(collator);
        for (const std::u32string& text : contexts.m_tContractions) {
            // Behind a base a mark looks back; behind a mark it does not.
            const bool looksBack = !isMark(text[0]) && std::all_of(text.begin() + 1, text.end(), isMark);
            (looksBack ? m_tCare : m_tStarts).insert(text[0]);
        }
        for (const std::u32string& text : contexts.m_tPrefixed) {
            m_tPrefixed.insert(text.begin() + 1, text.end());
        }
    }

    /// Whether an entry may be what it is.
    bool allows(char32_t c, SortEntry e) const
    {
        const bool isStart = entry::isKind(e, kStartKind);
        if (m_tStarts.count(c) != 0) {
            return isStart;
        }
        if (m_tPrefixed.count(c) != 0) {
            return entry::isKind(e, kPrefixKind);
        }
        if (m_tCare.count(c) != 0) {
            return isStart || (e & (entry::kCare | entry::kSpecial)) == entry::kCare;
        }
        return (e & entry::kSpecial) == 0 || entry::isKind(e, kElementsKind) || entry::isKind(e, kVariableKind) ||
               isSyllable(c);
    }

private:
    static bool isSyllable(char32_t c) { return c >= 0xAC00 && c <= 0xD7A3; }

    std::set<char32_t> m_tStarts;
    std::set<char32_t> m_tCare;
    std::set<char32_t> m_tPrefixed;
};

class Kinds : public testing::TestWithParam<const char*>
{};

TEST_P(Kinds, AreWhatTheContextsOfTheSortSay)
{
    const std::optional<SortName> name = resolveSortName(GetParam());
    ASSERT_TRUE(name);
    const Expected expected(name->m_pCollator.get());
    const auto data = build(GetParam());
    const bool isNormalizing = data->m_tRules.isNormalizing();
    for (char32_t c = 0; c <= 0xFFFF; ++c) {
        const SortEntry e = data->m_tPages.find(c);
        const bool isSplit = isNormalizing && (c == 0x0F73 || c == 0x0F75 || c == 0x0F81);
        if (!isAssigned(c) || isSplit) {
            continue;
        }
        EXPECT_TRUE(expected.allows(c, e)) << std::hex << "U+" << static_cast<unsigned>(c) << " has " << e;
        EXPECT_EQ((e & entry::kMark) != 0, isMark(c)) << std::hex << static_cast<unsigned>(c);
    }
}

INSTANTIATE_TEST_SUITE_P(Sorts, Kinds,
                         testing::Values("und", "sv", "de-u-co-phonebk", "cs", "hu", "da", "th", "ja", "ko", "zh",
                                         "zh-u-co-stroke", "ar", "hi", "vi", "km", "bo", "en-u-ka-shifted",
                                         "ko-u-co-searchjl"));

/// The assigned characters of plane 0 that only ICU can read.
std::set<char32_t> readByIcu(const SortData& data)
{
    std::set<char32_t> result;
    for (char32_t c = 0; c <= 0xFFFF; ++c) {
        if (isAssigned(c) && entry::isKind(data.m_tPages.find(c), kSlowKind)) {
            result.insert(c);
        }
    }
    return result;
}

TEST(SlowCharacters, AreFew)
{
    for (const char* tag : {"und", "en", "sv", "de", "fr-CA", "cs", "hu", "ja", "ko", "zh", "ar", "lo"}) {
        EXPECT_THAT(readByIcu(*build(tag)), testing::IsEmpty()) << tag;
    }
    for (const char* tag : {"th", "vi", "hi", "en-u-kk"}) {
        EXPECT_THAT(readByIcu(*build(tag)), testing::ElementsAre(0x0F73, 0x0F75, 0x0F81)) << tag;
    }
    // Digits make numbers, of any length.
    for (const char32_t c : readByIcu(*build("en-u-kn"))) {
        EXPECT_EQ(u_charType(static_cast<UChar32>(c)), U_DECIMAL_DIGIT_NUMBER);
    }
    // Letters of this sort are read with those before them, and so are syllables.
    EXPECT_EQ(readByIcu(*build("ko-u-co-searchjl")).size(), 11'172U + 3U);
}

/// The letters and signs that a language is written with.
std::vector<char32_t> exemplars(const char* locale)
{
    UErrorCode status = U_ZERO_ERROR;
    ULocaleData* data = ulocdata_open(locale, &status);
    USet* set = ulocdata_getExemplarSet(data, nullptr, USET_ADD_CASE_MAPPINGS, ULOCDATA_ES_STANDARD, &status);
    std::vector<char32_t> characters;
    for (int32_t i = 0; i < uset_size(set); ++i) {
        const UChar32 c = uset_charAt(set, i);
        if (c >= 0) {
            characters.push_back(static_cast<char32_t>(c));
        }
    }
    EXPECT_FALSE(characters.empty()) << locale;
    uset_close(set);
    ulocdata_close(data);
    return characters;
}

/// What a language is written with and an entry has no room for.
std::set<char32_t> readAsLists(const std::string& tag)
{
    const auto data = build(tag);
    std::set<char32_t> lists;
    for (const char32_t c : exemplars(tag.c_str())) {
        const SortEntry e = data->m_tPages.find(c);
        EXPECT_FALSE(entry::isKind(e, kSlowKind)) << tag << static_cast<unsigned>(c);
        if (entry::isKind(e, kElementsKind)) {
            lists.insert(c);
        }
    }
    return lists;
}

TEST(LettersOfTheLanguage, AreReadInOneLoad)
{
    using testing::IsEmpty;
    using testing::IsSubsetOf;
    for (const char* tag : {"en", "sv", "ru", "ja", "ko", "zh", "cs", "hu", "da", "vi", "hi", "he", "tr", "pl"}) {
        EXPECT_THAT(readAsLists(tag), IsEmpty()) << tag;
    }
    // An entry has room for the case of its first element and the accent of its last.
    const char32_t german[] = {U'ß', U'ẞ'};
    EXPECT_THAT(readAsLists("de"), IsSubsetOf(german));
    const char32_t french[] = {U'Æ', U'æ', U'Œ', U'œ'};
    EXPECT_THAT(readAsLists("fr-CA"), IsSubsetOf(french));
    const char32_t greek[] = {U'ΐ', U'ΰ'};
    EXPECT_THAT(readAsLists("el"), IsSubsetOf(greek));
    const char32_t thai[] = {0x0E33};
    EXPECT_THAT(readAsLists("th"), IsSubsetOf(thai));
    // Points of which only the third level is anything.
    const char32_t arabic[] = {0x64B, 0x64C, 0x64D, 0x64E, 0x64F, 0x650, 0x651, 0x652, 0x670};
    EXPECT_THAT(readAsLists("ar"), IsSubsetOf(arabic));
}

TEST(LettersOfTheLanguage, SyllablesOfKoreanAreOneLoadEach)
{
    const auto data = build("ko");
    for (char32_t c = 0xAC00; c <= 0xD7A3; ++c) {
        const SortEntry e = data->m_tPages.find(c);
        ASSERT_EQ(e & (entry::kSpecial | entry::kMark | entry::kCare), 0U) << static_cast<unsigned>(c);
        ASSERT_EQ(entry::elements(e), (c - 0xAC00) % 28 == 0 ? 2U : 3U) << static_cast<unsigned>(c);
        ASSERT_LE(entry::primaryLength(e), 4U) << static_cast<unsigned>(c);
    }
}

TEST(LettersOfTheLanguage, CommonHanTakeTwoBytes)
{
    for (const char* tag : {"zh", "zh-u-co-stroke", "ja"}) {
        const auto data = build(tag);
        for (const char32_t c : exemplars(tag)) {
            if (u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_IDEOGRAPHIC)) {
                EXPECT_LE(entry::primaryLength(data->m_tPages.find(c)), 2U) << tag << static_cast<unsigned>(c);
            }
        }
    }
}

}  // namespace
