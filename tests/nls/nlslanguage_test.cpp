#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "assertioncapture.h"
#include "countingservice.h"
#include "failingallocator.h"
#include "nlsenvironmentimpl.h"
#include "printers.h"
#include "vel/core/exception.h"
#include "webi18n/nlsenvironment.h"
#include "webi18n/nlslanguage.h"

namespace nlstest {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using vel::AutoBuffer;
using vel::Handle;
using vel::NarrowString;
using vel::String;
using vel::i18n::NLSEnvironment;
using vel::i18n::NLSThreadContext;
using vel::nls_internal_wrapper::NLSGlobals;
using vel::nls_internal_wrapper::NLSLanguage;

class NlsLanguage : public testing::Test
{
protected:
    NlsLanguage() : m_hGuard(NLSEnvironment::getEnvironmentGuard()), m_tContext(NLSEnvironment::getDefaultEnvironment())
    {}

    vel::NonOwningPtr<NLSGlobals> globals() { return m_tContext.getInternalNlsGlobals(); }
    std::string keyOf(const NLSLanguage& language, const std::wstring& text, std::size_t level = 0)
    {
        NarrowString key;
        language.createCollationKey(text.data(), text.size(), key, m_tWork, level);
        return std::string(key.view());
    }
    std::string pooledKeyOf(const NLSLanguage& language, const std::wstring& text, vel::NarrowStringPool& pool)
    {
        vel::NarrowRefString key;
        language.createRefCollationKey(text.data(), text.size(), pool, key, m_tWork, 0);
        return std::string(key.view());
    }

    CountingService m_tService;
    Handle<NLSEnvironment> m_hGuard;
    NLSThreadContext m_tContext;
    AutoBuffer<unsigned char, 64> m_tWork;
};

TEST_F(NlsLanguage, TheDefaultLanguage)
{
    const NLSLanguage language(globals());
    EXPECT_EQ(m_tService.calls(kDefaultLanguageHandle), 1);
    EXPECT_EQ(language.getTextInfo(vel::nls::kLanguageItemFullDay), L"Monday");
    m_tService.fail(kDefaultLanguageHandle);
    EXPECT_EQ(thrownBy([&] { const NLSLanguage none(globals()); }), L"error");
}

TEST_F(NlsLanguage, ALanguageByItsSpecification)
{
    const NLSLanguage language(globals(), L"fr_CA.AL16UTF16");
    EXPECT_THAT(m_tService.m_tArguments, ElementsAre("fr_CA.AL16UTF16"));
    EXPECT_EQ(language.getTextInfo(vel::nls::kLanguageItemFullMonth), L"janvier");
    EXPECT_EQ(language.getLinguisticSort(), L"fr-CA");
    EXPECT_EQ(thrownBy([&] { const NLSLanguage none(globals(), L"xx"); }), L"error");
    m_tService.fail(kLanguageHandleFromName);
    EXPECT_EQ(thrownBy([&] { const NLSLanguage none(globals(), L"fr"); }), L"error");
}

TEST_F(NlsLanguage, OfASpecificationTheLowBytesAreTaken)
{
    const NLSLanguage language(globals(), L"\u0164\u0165");  // 0x64 0x65
    EXPECT_THAT(m_tService.m_tArguments, ElementsAre("de"));
    const std::wstring name(1000, L'd');
    EXPECT_EQ(thrownBy([&] { const NLSLanguage none(globals(), name.c_str()); }), L"error");
    EXPECT_EQ(m_tService.m_tArguments.back(), std::string(1000, 'd'));
}

TEST_F(NlsLanguage, ALanguageThatCannotBeSetLeavesTheOneBefore)
{
    NLSLanguage language(globals(), L"de");
    EXPECT_EQ(thrownBy([&] { language.setNLSLanguage(globals(), L"xx"); }), L"error");
    EXPECT_EQ(language.getTextInfo(vel::nls::kLanguageItemFullDay), L"Montag");
    language.setNLSLanguage(globals(), L"fr");
    EXPECT_EQ(language.getTextInfo(vel::nls::kLanguageItemFullDay), L"lundi");
}

TEST_F(NlsLanguage, TheStatusOfASortIsNotExamined)
{
    NLSLanguage language(globals(), L".AL16UTF16");
    language.modifyLinguisticSort(L"sv");
    EXPECT_EQ(language.getLinguisticSort(), L"sv");
    const testsupport::AssertionCapture capture;
    for (const wchar_t* name : {L"no such sort", L"SWEDISH", L"nosuch"}) {
        language.modifyLinguisticSort(name);
        EXPECT_EQ(language.getLinguisticSort(), L"sv");
    }
    m_tService.fail(kModifyLanguageHandle);
    language.modifyLinguisticSort(L"de");
    EXPECT_EQ(language.getLinguisticSort(), L"sv");
    EXPECT_THAT(capture.texts(), testing::IsEmpty());
    EXPECT_THAT(m_tService.m_tArguments, ElementsAre(".AL16UTF16", "sv", "no such sort", "SWEDISH", "nosuch", "de"));
}

TEST_F(NlsLanguage, InformationThatTheServiceDoesNotHaveIsEmpty)
{
    const NLSLanguage language(globals(), L"de");
    EXPECT_EQ(language.getTextInfo(static_cast<vel::nls::LanguageItem>(999)), L"");
    m_tService.fail(kLanguageInfo);
    EXPECT_EQ(language.getLinguisticSort(), L"");
}

TEST_F(NlsLanguage, ACopyIsALanguageOfItsOwn)
{
    NLSLanguage first(globals(), L"de");
    NLSLanguage second = first;
    second.modifyLinguisticSort(L"sv");
    EXPECT_EQ(first.getLinguisticSort(), L"de");
    EXPECT_EQ(second.getLinguisticSort(), L"sv");
    const NLSLanguage* const same = &second;
    second = *same;
    first = second;
    second = NLSLanguage();
    EXPECT_EQ(first.getLinguisticSort(), L"sv");
}

TEST_F(NlsLanguage, AnEmptyOneReportsAndThrows)
{
    NLSLanguage none;
    const testsupport::AssertionCapture capture;
    EXPECT_THROW(none.modifyLinguisticSort(L"sv"), vel::InvalidHandleException);
    EXPECT_THROW(none.getLinguisticSort(), vel::InvalidHandleException);
    EXPECT_THROW(keyOf(none, L"a"), vel::InvalidHandleException);
    EXPECT_THROW(none.setNLSLanguage(vel::NonOwningPtr<NLSGlobals>(), L"de"), vel::InvalidHandleException);
    EXPECT_EQ(capture.texts().size(), 4U);
    EXPECT_THAT(capture.texts(), Each("m_p != 0"));
}

TEST_F(NlsLanguage, KeysGoFirstIntoFiveBytesACharacterAndSix)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    keyOf(language, L"abc");
    keyOf(language, L"");
    EXPECT_THAT(m_tService.m_tCapacities, ElementsAre(21U, 6U));
    EXPECT_THAT(m_tService.m_tInputs, ElementsAre(std::string("\0a\0b\0c", 6), ""));
}

TEST_F(NlsLanguage, AKeyExactlyAsLongAsItsRoomIsMadeAgainInTwiceTheRoom)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    m_tService.m_tKeyLengths = {11, 21, 44, 11};
    EXPECT_EQ(keyOf(language, L"a"), std::string(21, 'k'));
    EXPECT_THAT(m_tService.m_tCapacities, ElementsAre(11U, 22U));
    m_tService.m_tCapacities.clear();
    EXPECT_EQ(keyOf(language, L"a"), std::string(11, 'k'));
    EXPECT_THAT(m_tService.m_tCapacities, ElementsAre(11U, 22U));
}

TEST_F(NlsLanguage, AKeyOneByteShorterThanItsRoomFits)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    m_tService.m_tKeyLengths = {10};
    EXPECT_EQ(keyOf(language, L"a"), std::string(10, 'k'));
    EXPECT_EQ(m_tService.calls(kMakeSortKey), 1);
}

TEST_F(NlsLanguage, AKeyThatCannotBeMadeIsReportedAndTriedAgain)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    m_tService.fail(kMakeSortKey, 2);
    const testsupport::AssertionCapture capture;
    const std::string key = keyOf(language, L"a");
    EXPECT_THAT(capture.texts(), ElementsAre("n1 != -1", "n1 != -1"));
    EXPECT_THAT(m_tService.m_tCapacities, ElementsAre(11U, 22U, 44U));
    EXPECT_EQ(key, keyOf(language, L"a"));
    EXPECT_FALSE(key.empty());
}

TEST_F(NlsLanguage, AServiceThatAlwaysFailsDoesNotTakeAllMemory)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    m_tService.fail(kMakeSortKey, 1000000);
    const testsupport::AssertionCapture capture;
    EXPECT_THROW(keyOf(language, L"a"), std::length_error);
    EXPECT_LE(m_tService.m_tCapacities.back(), std::size_t{1} << 21);
}

TEST_F(NlsLanguage, WithAPoolThatGrantsExactlyTheSecondRequestIsRequestTimesCapacityTimesTwo)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    vel::NarrowStringPool exact(0);
    m_tService.m_tKeyLengths = {11, 241, 500};
    EXPECT_EQ(pooledKeyOf(language, L"a", exact), std::string(241, 'k'));
    EXPECT_THAT(m_tService.m_tCapacities, ElementsAre(11U, 11U * 11U * 2U));
}

TEST_F(NlsLanguage, WithAPoolThatGrantsMoreTheRequestGrowsByWhatWasGranted)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    vel::NarrowStringPool pool(100);
    m_tService.m_tKeyLengths = {100, 2199};
    EXPECT_EQ(pooledKeyOf(language, L"a", pool), std::string(2199, 'k'));
    EXPECT_THAT(m_tService.m_tCapacities, ElementsAre(100U, 11U * 100U * 2U));
    EXPECT_EQ(pool.appendBufferCapacity(), 1U);
}

TEST_F(NlsLanguage, APooledKeyThatCannotBeMadeIsReportedAndTriedAgain)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    vel::NarrowStringPool pool;
    m_tService.fail(kMakeSortKey);
    const testsupport::AssertionCapture capture;
    EXPECT_EQ(pooledKeyOf(language, L"abc", pool), keyOf(language, L"abc"));
    EXPECT_THAT(capture.texts(), ElementsAre("n1 != -1"));
}

TEST(NlsLanguageMemory, AServiceThatAlwaysFailsEndsWithThePoolsMemory)
{
    vel::nls::EntryPoints failing = vel::nls::linkedService();
    failing.m_pMakeSortKey = [](unsigned char*, std::size_t, const unsigned char*, std::size_t, unsigned,
                                vel::nls::LanguageHandle*,
                                vel::nls::ContextRecord*) { return vel::nls::kSortKeyError; };
    vel::nls::replaceLinkedService(&failing);
    const Handle<NLSEnvironment> guard = NLSEnvironment::getEnvironmentGuard();
    vel::nls::replaceLinkedService(nullptr);
    NLSThreadContext context(NLSEnvironment::getDefaultEnvironment());
    const NLSLanguage language(context.getInternalNlsGlobals(), L".AL16UTF16");
    vel::NarrowStringPool pool(0);
    vel::NarrowRefString key("before", 6);
    AutoBuffer<unsigned char, 64> work;
    {
        // Two blocks and the list of them are granted: the next would be a gigabyte before long.
        const testsupport::FailingAllocations outOfMemory(3);
        EXPECT_THROW(language.createRefCollationKey(L"a", 1, pool, key, work, 0), std::bad_alloc);
    }
    EXPECT_EQ(key.view(), "before");
    EXPECT_TRUE(pool.lastString().isEmpty());
}

TEST_F(NlsLanguage, ALengthThatCannotBeRepresentedIsReported)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    const std::size_t absurd = static_cast<std::size_t>(-1) / 5;
    const testsupport::AssertionCapture capture;
    NarrowString key("before");
    language.createCollationKey(L"a", absurd, key, m_tWork, 0);
    EXPECT_EQ(key, "");
    vel::NarrowStringPool pool;
    vel::NarrowRefString pooled;
    language.createRefCollationKey(L"a", absurd, pool, pooled, m_tWork, 0);
    EXPECT_EQ(pooled.data(), nullptr);
    EXPECT_THAT(capture.texts(), ElementsAre("nTranslatedBytes != -1", "nTranslatedBytes != -1"));
    EXPECT_EQ(m_tService.calls(kMakeSortKey), 0);
}

TEST_F(NlsLanguage, TheLevelIsCutToEightBits)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    keyOf(language, L"a", 0x110);
    keyOf(language, L"a", 0xFFFFFF00U);
    EXPECT_THAT(m_tService.m_tFlags, ElementsAre(0x10U, 0U));
}

TEST_F(NlsLanguage, WithoutADirectComparisonItIsReportedAndTheKeysDecide)
{
    m_tService.table().m_pCompareTexts = nullptr;
    const Handle<vel::i18n::NLSEnvironmentImpl> without = vel::makeHandle<vel::i18n::NLSEnvironmentImpl>();
    without->initialize();
    NLSThreadContext context(vel::NonOwningPtr<NLSEnvironment>(without.get()));
    const NLSLanguage language(context.getInternalNlsGlobals(), L".AL16UTF16");
    ASSERT_FALSE(language.canCompareTexts());
    const testsupport::AssertionCapture capture;
    EXPECT_EQ(language.compareTexts(L"a", 1, L"b", 1, 0), -1);
    EXPECT_EQ(language.compareTexts(L"b", 1, L"a", 1, 0), 1);
    EXPECT_EQ(language.compareTexts(L"a", 1, L"A", 1, 2), 0);
    EXPECT_EQ(language.compareTexts(L"", 0, L"a", 1, 0), -1);
    EXPECT_THAT(capture.texts(), testing::AllOf(testing::SizeIs(4), Each("canCompareTexts()")));
    EXPECT_EQ(m_tService.calls(kMakeSortKey), 8);
}

TEST_F(NlsLanguage, DirectComparisonIsNotSupported)
{
    const NLSLanguage language(globals(), L".AL16UTF16");
    const testsupport::AssertionCapture capture;
    EXPECT_EQ(language.collateStrings(L"a", 1, L"b", 1, m_tWork), -1);
    EXPECT_THAT(capture.texts(), ElementsAre("false"));
    EXPECT_EQ(m_tService.calls(kMakeSortKey), 0);
}

}  // namespace nlstest
