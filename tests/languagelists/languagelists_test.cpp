#include "webi18n/languagelists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "logcapture.h"
#include "printers.h"
#include "textrows.h"
#include "vel/log/logger.h"

namespace {

using namespace testsupport;
using testing::ElementsAre;
using testing::IsEmpty;
using vel::LanguageLists;
using vel::String;

bool load(LanguageLists& lists, const String& value, vel::EConfig mode = vel::kConfigInitialize)
{
    vel::Handle<vel::MemoryConfigReader> config = vel::makeHandle<vel::MemoryConfigReader>();
    config->set(L"Localization/AllowedLanguages", value);
    return lists.loadConfig(*config, mode);
}

std::vector<String> supported(const LanguageLists& lists)
{
    std::vector<String> out = {L"old"};
    lists.getSupportedLanguageList(out);
    return out;
}

TEST(LanguageLists, SplitAsTheRowsSay)
{
    for (const TextRow& row : readRows(WEBI18N_SOURCE_DIR "/languagelists.rows", 3)) {
        SCOPED_TRACE(row.trace());
        LanguageLists lists;
        EXPECT_TRUE(load(lists, row.wide(0)));
        String shown;
        for (const String& each : supported(lists)) {
            shown.append(L"<").append(each).append(L">");
        }
        EXPECT_EQ(row.wide(1), shown);
    }
}

TEST(LanguageLists, BlanksAroundCodesAreTrimmed)
{
    LanguageLists lists;
    load(lists, L"en, fr ,de");
    EXPECT_THAT(supported(lists), ElementsAre(String(L"en"), String(L"fr"), String(L"de")));
}

TEST(LanguageLists, EmptyCodesAreKept)
{
    LanguageLists lists;
    load(lists, L"en,,fr,");
    EXPECT_THAT(supported(lists), ElementsAre(String(L"en"), String(), String(L"fr"), String()));
}

TEST(LanguageLists, AnUnsetKeyGivesAnEmptyListAndNotAMissingOne)
{
    LanguageLists lists;
    EXPECT_TRUE(lists.loadConfig(*vel::makeHandle<vel::MemoryConfigReader>(), vel::kConfigInitialize));
    EXPECT_THAT(supported(lists), IsEmpty());
}

TEST(LanguageLists, BeforeTheFirstLoadThereIsNoList)
{
    const LanguageLists lists;
    EXPECT_THAT(supported(lists), ElementsAre(String(L"old")));
}

TEST(LanguageLists, AnUnknownNameLeavesTheOutput)
{
    LanguageLists lists;
    load(lists, L"en");
    std::vector<String> out = {L"a", L"b"};
    lists.getLanguageList(out, L"unknown");
    lists.getLanguageList(out, L"");
    lists.getLanguageList(out, L"supported ");
    EXPECT_THAT(out, ElementsAre(String(L"a"), String(L"b")));
}

TEST(LanguageLists, NamesCompareWithoutCase)
{
    LanguageLists lists;
    load(lists, L"en");
    for (const wchar_t* name : {L"SUPPORTED", L"Supported", L"supported"}) {
        std::vector<String> out;
        lists.getLanguageList(out, name);
        EXPECT_THAT(out, ElementsAre(String(L"en")));
    }
}

TEST(LanguageLists, EveryLoadReplacesTheListWhateverTheMode)
{
    LanguageLists lists;
    EXPECT_TRUE(load(lists, L"en,fr", vel::kConfigReload));
    EXPECT_TRUE(load(lists, L"de", vel::kConfigInitialize));
    EXPECT_THAT(supported(lists), ElementsAre(String(L"de")));
    EXPECT_TRUE(load(lists, L"", vel::kConfigReload));
    EXPECT_THAT(supported(lists), IsEmpty());
}

/// Notes the source that is current while it is asked, and may fail.
class WatchingReader final : public vel::ConfigReader
{
public:
    explicit WatchingReader(bool fails) : m_bFails(fails) {}
    String getString(const String& key, const String& defaultValue) const override
    {
        EXPECT_EQ(String(L"Localization/AllowedLanguages"), key);
        EXPECT_TRUE(defaultValue.isEmpty());
        m_sSource = vel::ScopedLogSource::current() == nullptr ? L"" : vel::ScopedLogSource::current()->name();
        if (m_bFails) {
            throw std::runtime_error("no configuration");
        }
        return L"en";
    }
    vel::FilePath getFilePath(const String&) const override { return {}; }

    mutable std::wstring m_sSource;

private:
    bool m_bFails;
};

TEST(LanguageLists, LoadUnderTheirLogSourceAndLogNothing)
{
    const LogCapture log;
    LanguageLists lists;
    const vel::Handle<WatchingReader> reader = vel::makeHandle<WatchingReader>(false);
    lists.loadConfig(*reader, vel::kConfigInitialize);
    EXPECT_EQ(L"vel.i18n.languageLists.load", reader->m_sSource);
    EXPECT_EQ(nullptr, vel::ScopedLogSource::current());
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(LanguageLists, AReaderThatThrowsLeavesTheList)
{
    LanguageLists lists;
    load(lists, L"fr");
    EXPECT_THROW(lists.loadConfig(*vel::makeHandle<WatchingReader>(true), vel::kConfigReload), std::runtime_error);
    EXPECT_THAT(supported(lists), ElementsAre(String(L"fr")));
    EXPECT_EQ(nullptr, vel::ScopedLogSource::current());

    LanguageLists never;
    EXPECT_THROW(never.loadConfig(*vel::makeHandle<WatchingReader>(true), vel::kConfigReload), std::runtime_error);
    EXPECT_THAT(supported(never), ElementsAre(String(L"old")));
}

}  // namespace
