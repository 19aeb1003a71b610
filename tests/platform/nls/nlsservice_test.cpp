#include "vel/nls/nlsservice.h"

#include <gtest/gtest.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "failingallocator.h"
#include "linkedservice.h"
#include "vel/nls/sorttable.h"

namespace {

using namespace vel::nls;

/// One thread's use of the service.
class Service
{
public:
    Service()
    {
        m_pLoad = m_tEntries.m_pCreateLoadContext(nullptr, 0);
        int status = -1;
        GlobalArea* area = m_tEntries.m_pCreateGlobalArea(m_pLoad, 1, &status);
        EXPECT_EQ(status, 0);
        m_tEntries.m_pInitThreadContext(&m_tContext, area, 0, 0);
    }
    ~Service()
    {
        m_tEntries.m_pTerminateThreadContext(&m_tContext);
        m_tEntries.m_pFreeLoadContext(m_pLoad);
    }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    LanguageHandle* open(std::string_view specification)
    {
        return m_tEntries.m_pLanguageHandleFromName(specification.data(), specification.size(), &m_tArea, 1,
                                                    &m_tContext);
    }
    int setSort(LanguageHandle* language, std::string_view name, LanguageItem item = kLanguageItemLinguisticSort)
    {
        return m_tEntries.m_pModifyLanguageHandle(language, name.data(), name.size(), item, 0, 1, &m_tContext);
    }
    /// The item's text as code units, or nothing.
    std::u16string info(LanguageHandle* language, unsigned item, std::size_t size = 2048)
    {
        std::vector<unsigned char> buffer(size, 0xEE);
        const unsigned char* text =
            m_tEntries.m_pLanguageInfo(language, static_cast<LanguageItem>(item), buffer.data(), size, &m_tContext);
        std::u16string units;
        for (; text != nullptr && (text[0] != 0 || text[1] != 0); text += 2) {
            units += static_cast<char16_t>(text[0] << 8 | text[1]);
        }
        return units;
    }
    std::string key(LanguageHandle* language, std::u16string_view text, unsigned flags = 0)
    {
        std::string bytes;
        for (const char16_t unit : text) {
            bytes += static_cast<char>(unit >> 8);
            bytes += static_cast<char>(unit & 0xFF);
        }
        return keyOfBytes(language, bytes, flags);
    }
    std::string keyOfBytes(LanguageHandle* language, std::string_view bytes, unsigned flags = 0)
    {
        std::string out(1000, '\0');
        const std::size_t length = m_tEntries.m_pMakeSortKey(reinterpret_cast<unsigned char*>(out.data()), out.size(),
                                                             reinterpret_cast<const unsigned char*>(bytes.data()),
                                                             bytes.size(), flags, language, &m_tContext);
        EXPECT_LT(length, out.size());
        out.resize(length);
        return out;
    }

    const EntryPoints& m_tEntries = linkedService();
    LoadContext* m_pLoad = nullptr;
    ContextRecord m_tContext{};
    LanguageArea m_tArea{};
};

std::u16string tagOf(std::string_view specification)
{
    Service service;
    LanguageHandle* language = service.open(specification);
    return language == nullptr ? u"null" : service.info(language, kLanguageItemLanguage);
}

TEST(NlsService, LanguageSpecificationsThatAreKnown)
{
    EXPECT_EQ(tagOf(".AL16UTF16"), u"en-US");
    EXPECT_EQ(tagOf(""), u"en-US");
    EXPECT_EQ(tagOf("de.AL16UTF16"), u"de");
    EXPECT_EQ(tagOf("fr_ca"), u"fr-CA");
    EXPECT_EQ(tagOf("FR_ca.al16utf16"), u"fr-CA");
    EXPECT_EQ(tagOf("fil_PH"), u"fil-PH");
    EXPECT_EQ(tagOf("es_419"), u"es-419");
}

/// Otherwise the command would call a language unknown whose order ICU tailors.
TEST(NlsService, EveryLanguageThatIcuSortsIsKnown)
{
    const int count = ucol_countAvailable();
    ASSERT_GT(count, 100);
    for (int i = 0; i < count; ++i) {
        const std::string locale = ucol_getAvailable(i);
        const std::string language = locale.substr(0, locale.find('_'));
        EXPECT_EQ(tagOf(language), std::u16string(language.begin(), language.end())) << locale;
    }
}

TEST(NlsService, EveryOtherLanguageSpecificationIsNull)
{
    for (const std::string_view each : {"xx",
                                        "de_XX",
                                        "de_",
                                        "_US",
                                        "_",
                                        ".",
                                        "de.",
                                        "de.UTF8",
                                        "de.AL16UTF16x",
                                        ".AL16UTF16.AL16UTF16",
                                        "de-CH",
                                        "de_CH_1996",
                                        "deutsch",
                                        "d",
                                        "de_C",
                                        "de_41",
                                        "de_4190",
                                        "d3",
                                        "de CH",
                                        " de",
                                        "de_C\xC3\xA4"}) {
        EXPECT_EQ(tagOf(each), u"null") << each;
    }
    EXPECT_EQ(tagOf(std::string_view("de\0", 3)), u"null");
    EXPECT_EQ(tagOf(std::string_view("de_CH\0x", 7)), u"null");
    EXPECT_EQ(tagOf(std::string(100000, 'a')), u"null");
}

TEST(NlsService, TheDefaultLanguageIsEnglishOfTheUnitedStates)
{
    Service service;
    LanguageHandle* language = service.m_tEntries.m_pDefaultLanguageHandle(&service.m_tArea, 0, &service.m_tContext);
    EXPECT_EQ(service.info(language, kLanguageItemLanguage), u"en-US");
    EXPECT_EQ(service.info(language, kLanguageItemLinguisticSort), u"en-US");
}

TEST(NlsService, NamesOfDaysAndMonths)
{
    Service service;
    LanguageHandle* language = service.open("fr_FR.AL16UTF16");
    EXPECT_EQ(service.info(language, kLanguageItemFullDay), u"lundi");
    EXPECT_EQ(service.info(language, kLanguageItemFullDay + 5), u"samedi");
    EXPECT_EQ(service.info(language, kLanguageItemFullDay + 6), u"dimanche");
    EXPECT_EQ(service.info(language, kLanguageItemAbbreviatedDay), u"lun.");
    EXPECT_EQ(service.info(language, kLanguageItemFullMonth), u"janvier");
    EXPECT_EQ(service.info(language, kLanguageItemFullMonth + 7), u"ao\u00FBt");
    EXPECT_EQ(service.info(language, kLanguageItemFullMonth + 11), u"d\u00E9cembre");
    EXPECT_EQ(service.info(language, kLanguageItemAbbreviatedMonth + 6), u"juil.");
}

TEST(NlsService, CharacterSetAndCalendar)
{
    Service service;
    EXPECT_EQ(service.info(service.open("de"), kLanguageItemCharacterSet), u"AL16UTF16");
    EXPECT_EQ(service.info(service.open("de"), kLanguageItemCalendar), u"gregorian");
    EXPECT_EQ(service.info(service.open("th_TH"), kLanguageItemCalendar), u"buddhist");
    EXPECT_EQ(service.info(service.open("th_TH"), kLanguageItemFullMonth), u"\u0E21\u0E01\u0E23\u0E32\u0E04\u0E21");
}

TEST(NlsService, AnItemThatThereIsNotIsNull)
{
    Service service;
    LanguageHandle* language = service.open("de");
    for (const unsigned item : {0U, 8U, 10U, 18U, 20U, 33U, 40U, 53U, 69U, 73U, 79U, 82U, 4000000000U}) {
        unsigned char buffer[64];
        EXPECT_EQ(service.m_tEntries.m_pLanguageInfo(language, static_cast<LanguageItem>(item), buffer, sizeof buffer,
                                                     &service.m_tContext),
                  nullptr)
            << item;
    }
}

TEST(NlsService, InfoIsBoundedByItsBuffer)
{
    Service service;
    LanguageHandle* language = service.open("fr");
    EXPECT_EQ(service.info(language, kLanguageItemFullDay, 12), u"lundi");
    EXPECT_EQ(service.info(language, kLanguageItemFullDay, 11), u"lund");
    EXPECT_EQ(service.info(language, kLanguageItemFullDay, 4), u"l");
    EXPECT_EQ(service.info(language, kLanguageItemFullDay, 2), u"");
    unsigned char buffer[2];
    for (const std::size_t size : {0U, 1U}) {
        EXPECT_EQ(service.m_tEntries.m_pLanguageInfo(language, kLanguageItemFullDay, buffer, size, &service.m_tContext),
                  nullptr);
    }
}

TEST(NlsService, SortNames)
{
    Service service;
    LanguageHandle* language = service.open(".AL16UTF16");
    EXPECT_EQ(service.setSort(language, "sv"), 0);
    EXPECT_EQ(service.info(language, kLanguageItemLinguisticSort), u"sv");
    EXPECT_GT(service.key(language, u"\u00E4"), service.key(language, u"z"));
    EXPECT_EQ(service.setSort(language, "de"), 0);
    EXPECT_LT(service.key(language, u"\u00E4"), service.key(language, u"z"));
    EXPECT_EQ(service.setSort(language, "binary"), 0);
    EXPECT_LT(service.key(language, u"B"), service.key(language, u"a"));
    EXPECT_EQ(service.info(language, kLanguageItemLinguisticSort), u"binary");
}

TEST(NlsService, AnUnknownSortNameLeavesTheSortInForce)
{
    Service service;
    LanguageHandle* language = service.open(".AL16UTF16");
    ASSERT_EQ(service.setSort(language, "sv"), 0);
    const std::string_view unknown[] = {"",       "a b",         "SWEDISH_M",       "SWEDISH",
                                        "nosuch", "sv-u-zz-foo", "fr-u-co-phonebk", std::string_view("sv\0x", 4)};
    for (const std::string_view each : unknown) {
        EXPECT_NE(service.setSort(language, each), 0) << each;
        EXPECT_EQ(service.info(language, kLanguageItemLinguisticSort), u"sv");
    }
    EXPECT_NE(service.setSort(language, "de", kLanguageItemCalendar), 0);
    EXPECT_GT(service.key(language, u"\u00E4"), service.key(language, u"z"));
}

TEST(NlsService, OfSeveralStrengthFlagsTheStrongestCounts)
{
    Service service;
    LanguageHandle* language = service.open(".AL16UTF16");
    ASSERT_EQ(service.setSort(language, "und-u-ka-shifted"), 0);
    const auto differ = [&](std::u16string_view a, std::u16string_view b, unsigned flags) {
        return service.key(language, a, flags) != service.key(language, b, flags);
    };
    for (const unsigned flags : {1U, 1U | 256U, 1U | 32U}) {
        EXPECT_FALSE(differ(u"role", u"r\u00F4le", flags)) << flags;
    }
    for (const unsigned flags : {2U, 3U}) {
        EXPECT_TRUE(differ(u"role", u"r\u00F4le", flags)) << flags;
        EXPECT_FALSE(differ(u"role", u"Role", flags)) << flags;
    }
    for (const unsigned flags : {0U, 4U, 7U, 5U, 32U, 256U}) {
        EXPECT_TRUE(differ(u"role", u"Role", flags)) << flags;
        EXPECT_FALSE(differ(u"co-op", u"coop", flags)) << flags;
    }
    for (const unsigned flags : {8U, 9U, 15U}) {
        EXPECT_TRUE(differ(u"co-op", u"coop", flags)) << flags;
        EXPECT_FALSE(differ(u"\u0001a", u"a", flags)) << flags;
    }
    for (const unsigned flags : {16U, 24U, 17U, 31U}) {
        EXPECT_TRUE(differ(u"\u0001a", u"a", flags)) << flags;
    }
}

TEST(NlsService, IllFormedTextCountsAsReplacementCharacters)
{
    Service service;
    LanguageHandle* language = service.open(".AL16UTF16");
    const std::string replaced = service.key(language, u"a\uFFFD");
    EXPECT_EQ(service.key(language, std::u16string_view(u"a\xD800", 2)), replaced);
    EXPECT_EQ(service.key(language, std::u16string_view(u"a\xDC00", 2)), replaced);
    EXPECT_EQ(service.keyOfBytes(language, std::string_view("\0aX", 3)), replaced);
}

TEST(NlsService, ACapacityTooSmallGivesTheLengthThatIsNeeded)
{
    Service service;
    LanguageHandle* language = service.open(".AL16UTF16");
    const std::string key = service.key(language, u"Cafe\u0301");
    const unsigned char text[] = {0, 'C', 0, 'a', 0, 'f', 0, 'e', 3, 1};
    for (std::size_t capacity = 0; capacity < key.size() + 2; ++capacity) {
        std::vector<unsigned char> out(capacity + 1, 0xEE);
        EXPECT_EQ(service.m_tEntries.m_pMakeSortKey(out.data(), capacity, text, sizeof text, 0, language,
                                                    &service.m_tContext),
                  key.size());
        EXPECT_EQ(out.back(), 0xEE) << "written past the capacity " << capacity;
        if (capacity >= key.size()) {
            EXPECT_TRUE(std::equal(key.begin(), key.end(), out.begin(),
                                   [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; }));
        }
    }
}

TEST(NlsService, ErrorsAreNullOrAllOnes)
{
    const EntryPoints& entries = linkedService();
    int status = 0;
    EXPECT_EQ(entries.m_pCreateGlobalArea(nullptr, 1, &status), nullptr);
    EXPECT_NE(status, 0);
    EXPECT_EQ(entries.m_pCreateGlobalArea(nullptr, 1, nullptr), nullptr);
    entries.m_pFreeLoadContext(nullptr);
    entries.m_pTerminateThreadContext(nullptr);
    EXPECT_EQ(entries.m_pInitializeProcess(), 0);
    EXPECT_EQ(entries.m_pInitializeProcess(), 0);

    Service service;
    EXPECT_EQ(entries.m_pLanguageHandleFromName("de", 2, nullptr, 1, &service.m_tContext), nullptr);
    EXPECT_EQ(entries.m_pLanguageHandleFromName("de", 2, &service.m_tArea, 1, nullptr), nullptr);
    EXPECT_EQ(entries.m_pDefaultLanguageHandle(nullptr, 0, &service.m_tContext), nullptr);
    unsigned char out[8];
    EXPECT_EQ(entries.m_pLanguageInfo(nullptr, kLanguageItemFullDay, out, sizeof out, &service.m_tContext), nullptr);
    EXPECT_EQ(entries.m_pMakeSortKey(out, sizeof out, out, 0, 0, nullptr, &service.m_tContext), kSortKeyError);
    EXPECT_EQ(entries.m_pMakeSortKey(out, sizeof out, out, 0, 0, service.open("de"), nullptr), kSortKeyError);
    EXPECT_NE(entries.m_pModifyLanguageHandle(nullptr, "de", 2, kLanguageItemLinguisticSort, 0, 1, &service.m_tContext),
              0);

    ContextRecord terminated{};
    entries.m_pInitThreadContext(&terminated, entries.m_pCreateGlobalArea(service.m_pLoad, 1, nullptr), 0, 0);
    entries.m_pTerminateThreadContext(&terminated);
    EXPECT_EQ(entries.m_pDefaultLanguageHandle(&service.m_tArea, 0, &terminated), nullptr);
}

TEST(NlsService, DirectComparisonAgreesWithTheKeys)
{
    Service service;
    LanguageHandle* language = service.open("sv");
    const std::wstring texts[] = {L"", L"a", L"A", L"z", L"\u00E4", L"aa", L"\u00C5ngstr\u00F6m", L"\u0001"};
    const auto unitsOf = [](const std::wstring& text) { return std::u16string(text.begin(), text.end()); };
    for (const unsigned flags : {1U, 2U, 0U, 8U, 16U}) {
        for (const std::wstring& a : texts) {
            for (const std::wstring& b : texts) {
                const int byKeys =
                    service.key(language, unitsOf(a), flags).compare(service.key(language, unitsOf(b), flags));
                const int direct = service.m_tEntries.m_pCompareTexts(a.data(), a.size(), b.data(), b.size(), flags,
                                                                      language, &service.m_tContext);
                EXPECT_EQ(direct, byKeys < 0 ? -1 : byKeys > 0 ? 1 : 0);
            }
        }
    }
}

TEST(NlsService, ACopiedAreaIsALanguageOfItsOwn)
{
    Service service;
    LanguageHandle* language = service.open("de");
    ASSERT_EQ(service.setSort(language, "sv"), 0);
    LanguageArea copy = service.m_tArea;
    LanguageHandle* second = reinterpret_cast<LanguageHandle*>(&copy);
    ASSERT_EQ(service.setSort(language, "de"), 0);
    EXPECT_EQ(service.info(second, kLanguageItemLinguisticSort), u"sv");
    EXPECT_EQ(service.info(language, kLanguageItemLinguisticSort), u"de");
}

TEST(NlsService, TablesAreSharedByContextsAndFreedWithTheLastLoadContext)
{
    auto first = std::make_unique<Service>();
    ASSERT_EQ(first->setSort(first->open(""), "et"), 0);
    std::weak_ptr<const SortTable> table = SortTable::open("et");
    EXPECT_FALSE(table.expired());
    {
        Service second;
        ASSERT_EQ(second.setSort(second.open(""), "et"), 0);
        EXPECT_EQ(table.lock(), SortTable::open("et"));
    }
    EXPECT_FALSE(table.expired());
    first.reset();
    EXPECT_TRUE(table.expired());
}

TEST(NlsService, TheVersionNamesTheOrderAndTheFormat)
{
    Service service;
    const std::string version = SortTable::open("en-US")->version();
    EXPECT_FALSE(version.empty());
    EXPECT_EQ(service.info(service.open(""), kLanguageItemSortVersion), std::u16string(version.begin(), version.end()));
}

/// Calls the operation with its n-th allocation failing for every n: it must not throw, and give `failure` wherever it
/// gives something else than with memory.
template <typename Operation, typename Result>
void expectFailure(const Operation& operation, Result failure)
{
    const Result whole = operation();
    ASSERT_NE(whole, failure);
    bool hasFailed = true;
    for (std::size_t nth = 0; hasFailed; nth += nth < 60 ? 1 : nth / 3) {
        const std::ptrdiff_t before = testsupport::outstandingBlocks();
        const testsupport::FailingAllocations failing(nth);
        Result result = whole;
        ASSERT_NO_THROW(result = operation()) << "at allocation " << nth;
        hasFailed = failing.hasFailed();
        ASSERT_TRUE(result == failure || (!hasFailed && result == whole)) << "at allocation " << nth;
        ASSERT_TRUE(!hasFailed || testsupport::outstandingBlocks() == before) << "at allocation " << nth;
    }
}

TEST(NlsService, WhereMemoryRunsOutEachOperationFailsAsStated)
{
    const EntryPoints& entries = linkedService();
    Service service;
    LanguageHandle* const language = service.open("de");
    {
        const testsupport::FailingAllocations failing(0);
        EXPECT_EQ(entries.m_pCreateLoadContext(nullptr, 0), nullptr);
    }
    unsigned char buffer[2048];
    for (const LanguageItem item : {kLanguageItemFullDay, kLanguageItemSortVersion}) {
        expectFailure(
            [&] { return entries.m_pLanguageInfo(language, item, buffer, sizeof buffer, &service.m_tContext); },
            static_cast<const unsigned char*>(nullptr));
    }
    // A text longer than what threads keep room for, of characters that are read the long way.
    std::string text;
    std::wstring wide;
    for (int i = 0; i < 200'000; ++i) {
        text.append("\0a\x03\x23", 4);
        wide += L"a\u0323";
    }
    std::vector<unsigned char> out(4 * text.size());
    for (const unsigned flags : {0U, 16U}) {
        expectFailure(
            [&] {
                return entries.m_pMakeSortKey(out.data(), out.size(),
                                              reinterpret_cast<const unsigned char*>(text.data()), text.size(), flags,
                                              language, &service.m_tContext);
            },
            kSortKeyError);
        expectFailure(
            [&] {
                return entries.m_pCompareTexts(wide.data(), wide.size(), wide.data() + 1, wide.size() - 1, flags,
                                               language, &service.m_tContext);
            },
            kComparisonError);
    }
}

TEST(NlsService, ASortForWhichMemoryRunsOutLeavesTheOneInForce)
{
    Service service;
    LanguageHandle* const language = service.open("de");
    ASSERT_EQ(service.setSort(language, "sv"), 0);
    for (std::size_t nth = 0; nth < 5'000; nth += nth < 60 ? 1 : nth / 2) {
        int status = 0;
        {
            const testsupport::FailingAllocations failing(nth);
            ASSERT_NO_THROW(status = service.setSort(language, "lt"));
            ASSERT_EQ(status != 0, failing.hasFailed()) << nth;
        }
        EXPECT_EQ(service.info(language, kLanguageItemLinguisticSort), status == 0 ? u"lt" : u"sv");
    }
}

/// A context on a thread of its own is made in the same way; it has no table yet.
TEST(NlsService, AFirstKeyForWhichMemoryRunsOutIsAnError)
{
    const std::string_view text("\0z", 2);
    for (const std::size_t nth : {0U, 1U, 5U, 50U, 500U}) {
        Service service;
        LanguageHandle* const language = service.open("lv");
        const testsupport::FailingAllocations failing(nth);
        unsigned char out[64];
        std::size_t size = 0;
        ASSERT_NO_THROW(size = service.m_tEntries.m_pMakeSortKey(out, sizeof out,
                                                                 reinterpret_cast<const unsigned char*>(text.data()),
                                                                 text.size(), 0, language, &service.m_tContext));
        EXPECT_EQ(size, kSortKeyError) << nth;
        EXPECT_TRUE(failing.hasFailed());
    }
}

TEST(NlsService, AnotherServiceCanTakeItsPlace)
{
    static EntryPoints other = linkedService();
    const EntryPoints& own = linkedService();
    replaceLinkedService(&other);
    EXPECT_EQ(&linkedService(), &other);
    replaceLinkedService(nullptr);
    EXPECT_EQ(&linkedService(), &own);
}

}  // namespace
