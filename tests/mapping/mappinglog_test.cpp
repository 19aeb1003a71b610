#include <gtest/gtest.h>

#include <string>

#include "failingallocator.h"
#include "logcapture.h"
#include "mappings.h"
#include "printers.h"
#include "vel/log/logger.h"
#include "vel/xml/xmlexception.h"

// The log source and property under which mappings work. These operations write no records of their own, so what is
// current is looked at from inside: whenever they allocate.

namespace {

using namespace testsupport;
using vel::String;

/// What was current on the calling thread's allocations.
struct Seen
{
    unsigned m_nAllocations = 0;
    unsigned m_nWithSource = 0;
    unsigned m_nWithProperty = 0;
    const wchar_t* m_pSource = nullptr;
    const wchar_t* m_pValue = nullptr;
    std::size_t m_nValueLength = 0;
};
constinit thread_local Seen t_seen;

void look()
{
    ++t_seen.m_nAllocations;
    if (const vel::LogSource* source = vel::ScopedLogSource::current(); source != nullptr) {
        ++t_seen.m_nWithSource;
        t_seen.m_pSource = source->name();
    }
    if (const vel::ScopedLogProperty* property = vel::ScopedLogProperty::current();
        property != nullptr && property->property().m_sName == L"mappingFile") {
        ++t_seen.m_nWithProperty;
        t_seen.m_pValue = property->property().m_sValue.data();
        t_seen.m_nValueLength = property->property().m_sValue.size();
    }
}

template <typename Work>
Seen watch(Work work)
{
    t_seen = Seen();
    setAllocationWatch(look);
    work();
    setAllocationWatch(nullptr);
    EXPECT_EQ(nullptr, vel::ScopedLogSource::current());
    EXPECT_EQ(nullptr, vel::ScopedLogProperty::current());
    return t_seen;
}

TEST(MappingLog, LoadingHasItsSourceAndTheFileAsProperty)
{
    MappingOnCatalogue mapping;
    const String file = mapping.catalogue().write(mappingFile("<when matches=\"*\"/>"), "mapping.xml");
    const Seen seen = watch([&] { mapping.mapping().loadMappings(file); });
    ASSERT_LT(0U, seen.m_nAllocations);
    EXPECT_EQ(seen.m_nAllocations, seen.m_nWithSource);
    EXPECT_EQ(seen.m_nAllocations, seen.m_nWithProperty);
    EXPECT_EQ(std::wstring(L"vel.i18n.localeMapping.load"), seen.m_pSource);
    EXPECT_EQ(file.data(), seen.m_pValue);
    EXPECT_EQ(file.length(), seen.m_nValueLength);
}

TEST(MappingLog, AFailingLoadHasThemTooAndRemovesThem)
{
    MappingOnCatalogue mapping;
    const String file = mapping.catalogue().write("<broken", "mapping.xml");
    const Seen seen = watch([&] { EXPECT_THROW(mapping.mapping().loadMappings(file), vel::XmlException); });
    EXPECT_LT(0U, seen.m_nWithSource);
    EXPECT_LT(0U, seen.m_nWithProperty);
    EXPECT_EQ(std::wstring(L"vel.i18n.localeMapping.load"), seen.m_pSource);
}

void writeARecord()
{
    setAllocationWatch(nullptr);
    VEL_LOG(vel::kLogInformation, vel::Message::text(L"the disk is slow"));
}

TEST(MappingLog, ARecordWrittenWhileLoadingCarriesThem)
{
    MappingOnCatalogue mapping;
    const String file = mapping.catalogue().write(mappingFile(""), "mapping.xml");
    const LogCapture log;
    setAllocationWatch(writeARecord);
    mapping.mapping().loadMappings(file);
    setAllocationWatch(nullptr);
    ASSERT_EQ(1U, log.records().size());
    const StoredRecord record = log.records().front();
    EXPECT_EQ(L"vel.i18n.localeMapping.load", record.m_sSource);
    ASSERT_EQ(1U, record.m_tProperties.size());
    EXPECT_EQ(L"mappingFile", record.m_tProperties.front().first);
    EXPECT_EQ(file.standard(), record.m_tProperties.front().second);
}

TEST(MappingLog, LoadingAndMappingWriteNothingThemselves)
{
    MappingOnCatalogue mapping;
    const LogCapture log;
    mapping.load("<when matches=\"a\"/><when><localeDefinition name=\"nowhere\"/></when>");
    mapping.map(L"a");
    mapping.map(L"");
    EXPECT_TRUE(log.records().empty());
}

/// Forty rules that match it need more room than the scan has of its own, so that it allocates.
const String kForty(std::wstring(40, L'a'));

void loadForty(MappingOnCatalogue& mapping)
{
    std::string whens;
    for (std::size_t length = 1; length <= 40; ++length) {
        whens += "<when matches=\"" + std::string(length, 'a') + "*\"/>";
    }
    mapping.load(whens);
}

TEST(MappingLog, MappingALocaleWorksUnderTheLanguagesSource)
{
    MappingOnCatalogue mapping;
    loadForty(mapping);
    const String noLanguage;
    // The language is too short to allocate.
    const Seen seen = watch([&] { mapping.mapping().mapLocale(kForty, noLanguage); });
    ASSERT_LT(0U, seen.m_nAllocations);
    EXPECT_EQ(seen.m_nAllocations, seen.m_nWithSource);
    EXPECT_EQ(std::wstring(L"vel.i18n.localeMapping.mapLanguage"), seen.m_pSource);
    EXPECT_EQ(0U, seen.m_nWithProperty);
}

TEST(MappingLog, ExplainingWorksUnderTheSameSourceAsMapping)
{
    MappingOnCatalogue mapping;
    loadForty(mapping);
    const String noLanguage;
    const Seen seen = watch([&] { mapping.mapping().explainLocale(kForty, noLanguage); });
    ASSERT_LT(0U, seen.m_nAllocations);
    ASSERT_EQ(seen.m_nAllocations, seen.m_nWithSource);
    EXPECT_EQ(std::wstring(L"vel.i18n.localeMapping.mapLanguage"), seen.m_pSource);
    EXPECT_EQ(0U, seen.m_nWithProperty);
}

TEST(MappingLog, MappingALanguageWorksUnderItsSource)
{
    MappingOnCatalogue mapping;
    const String language = L"a language that is long enough to be allocated";
    const Seen seen = watch([&] { mapping.mapping().mapLanguage(vel::Locale::kUSA, language); });
    ASSERT_LT(0U, seen.m_nAllocations);
    EXPECT_EQ(seen.m_nAllocations, seen.m_nWithSource);
    EXPECT_EQ(std::wstring(L"vel.i18n.localeMapping.mapLanguage"), seen.m_pSource);
}

}  // namespace
