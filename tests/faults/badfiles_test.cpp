#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "catalogues.h"
#include "memoryfile.h"
#include "printers.h"
#include "vel/xml/xmlexception.h"
#include "webi18n/languagelists.h"
#include "webi18n/localemapping.h"

// Files of every kind, missing, cut off and corrupted: each loads or throws XmlException, and what was loaded before
// keeps what is promised.

namespace {

using namespace testsupport;
using testing::ElementsAre;
using vel::Locale;
using vel::String;
using vel::XmlException;

constexpr const char* kDefinitions =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<d xmlns=\"com.quellin.locale/v1\"><localeDefinition name=\"b\" basedOn=\"a\"><!-- x -->"
    "<property name=\"am\">v\xC3\xA9&#228;&amp;</property><property name=\"firstDayOfWeek\">0</property>"
    "<property name=\"dateFormats\"><property>yyyy</property></property>"
    "</localeDefinition><localeDefinition name='c'/></d>";
constexpr const char* kLists =
    "<l><localeList name=\"supported\"><localeDefinition name=\"b\"/><localeDefinition name=\"A\"/></localeList></l>";
constexpr const char* kMapping =
    "<m><localeMapping name=\"httpAcceptLanguage\"><choose><when matches=\"fr*\"><localeDefinition name=\"a\"/></when>"
    "<when matches=\"*\"><localeDefinition name=\"b\"/></when></choose></localeMapping></m>";
constexpr const char* kConfig =
    "<c><Localization><AllowedLocales> a ,b</AllowedLocales><AllowedLanguages>en,fr</AllowedLanguages>"
    "</Localization></c>";

/// A file kind: how a variant of its file is loaded, and what must hold after a failure.
struct Kind
{
    const char* m_pName;
    std::string m_sBytes;
    std::function<void(const String& file)> m_fLoad;
    std::function<void()> m_fCheckAfterFailure;
};

class BadFiles : public testing::Test
{
protected:
    void SetUp() override
    {
        m_tCatalogue.load(definition("a", property("am", "1")) + definition("b", ""), L"a");
        m_tMapping.loadMappings(m_tCatalogue.write(
            "<m><localeMapping name=\"httpAcceptLanguage\"><choose><when matches=\"old\"><localeDefinition "
            "name=\"a\"/></when></choose></localeMapping></m>",
            "first.xml"));
    }

    std::vector<Kind> kinds() { return {definitionsKind(), listsKind(), mappingKind(), configKind()}; }

    Kind definitionsKind()
    {
        return {"definitions", kDefinitions,
                [this](const String& file) {
                    m_sBefore = m_tCatalogue.find(L"a").getInfoAsString(Locale::kAM);
                    m_tCatalogue.lookup().loadLocaleDefinitions(*allowing(L"a"), file);
                },
                [this] {
                    ASSERT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"a")));
                    ASSERT_EQ(m_sBefore, m_tCatalogue.find(L"a").getInfoAsString(Locale::kAM));
                    ASSERT_FALSE(m_tCatalogue.lookup().isValidDataFormat(L"[MMMM]"));
                }};
    }
    Kind listsKind()
    {
        return {"lists", kLists,
                [this](const String& file) {
                    m_tCatalogue.allow(L"a");
                    m_tCatalogue.lookup().loadConfig(*allowing(L"", file), vel::kConfigReload);
                },
                [this] { ASSERT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"a"))); }};
    }
    Kind mappingKind()
    {
        return {"mapping", kMapping,
                [this](const String& file) {
                    m_bOldRules = false;
                    m_tMapping.explainLocale(L"fr-CA", L"");
                    m_bOldRules = m_tMapping.explainLocale(L"old", L"").m_tRule.has_value();
                    m_tMapping.loadMappings(file);
                    for (const wchar_t* text : {L"", L"fr", L"fr-CA", L"x"}) {
                        ASSERT_EQ(m_tMapping.explainLocale(text, L"").m_tLocale.definitionName(),
                                  m_tMapping.mapLocale(text, L"").first.definitionName());
                    }
                },
                [this] { ASSERT_EQ(m_bOldRules, m_tMapping.explainLocale(L"old", L"").m_tRule.has_value()); }};
    }
    Kind configKind()
    {
        return {"config", kConfig,
                [this](const String& file) {
                    const vel::Handle<vel::XmlConfigReader> config =
                        vel::makeHandle<vel::XmlConfigReader>(vel::FilePath(file));
                    vel::LanguageLists lists;
                    lists.loadConfig(*config, vel::kConfigInitialize);
                    m_tCatalogue.lookup().loadConfig(*config, vel::kConfigReload);
                    m_tCatalogue.allow(L"a");
                },
                [this] { ASSERT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"a"))); }};
    }

    /// Whether the bytes loaded; any exception but XmlException is the test's failure.
    bool loads(const Kind& kind, const std::string& bytes)
    {
        const String file = m_tFile.write(bytes);
        try {
            kind.m_fLoad(file);
            return true;
        } catch (const XmlException& exception) {
            EXPECT_EQ(file, exception.file());
            kind.m_fCheckAfterFailure();
            return false;
        }
    }

    Catalogue m_tCatalogue;
    vel::LocaleMapping m_tMapping{m_tCatalogue.handle()};
    MemoryFile m_tFile;
    bool m_bOldRules = false;
    String m_sBefore = L"1";
};

TEST_F(BadFiles, WholeFilesLoad)
{
    for (const Kind& each : kinds()) {
        EXPECT_TRUE(loads(each, each.m_sBytes)) << each.m_pName;
    }
}

TEST_F(BadFiles, MissingFilesAndFoldersThrow)
{
    const String folder = m_tCatalogue.folder().path().toString();
    for (const Kind& each : kinds()) {
        for (const String& file : {folder + L"/missing.xml", folder, String(L""), String(L"/dev/null"),
                                   String(L"/dev/zero"), folder + L"/first.xml/below"}) {
            // An empty lists path is none at all.
            if (file.isEmpty() && each.m_sBytes == kLists) {
                continue;
            }
            EXPECT_THROW(each.m_fLoad(file), XmlException) << each.m_pName << ' ' << testing::PrintToString(file);
            each.m_fCheckAfterFailure();
        }
    }
}

TEST_F(BadFiles, CutOffAtEveryByteThrow)
{
    for (const Kind& each : kinds()) {
        for (std::size_t length = 0; length < each.m_sBytes.size(); ++length) {
            ASSERT_FALSE(loads(each, each.m_sBytes.substr(0, length))) << each.m_pName << ' ' << length;
            ASSERT_FALSE(HasFailure()) << each.m_pName << ' ' << length;
        }
    }
}

TEST_F(BadFiles, EveryByteOfTheFileCorruptedLoadsOrThrows)
{
    // Bytes that mean something to XML, to UTF-8 or to the readers, at every place; all 255 others at every eleventh.
    const std::string telling("\0\t\n\"&'*,/0<=>A[]a|\x7F\x80\xC3\xED\xF4\xFE\xFF", 25);
    for (const Kind& kind : kinds()) {
        std::size_t loaded = 0;
        std::size_t refused = 0;
        for (std::size_t place = 0; place < kind.m_sBytes.size(); ++place) {
            std::string bytes = kind.m_sBytes;
            const std::size_t variants = place % 11 == 0 ? 256 : telling.size();
            for (std::size_t variant = 0; variant < variants; ++variant) {
                bytes[place] = variants == 256 ? static_cast<char>(variant) : telling[variant];
                if (bytes[place] != kind.m_sBytes[place]) {
                    ++(loads(kind, bytes) ? loaded : refused);
                    ASSERT_FALSE(HasFailure()) << kind.m_pName << ", byte " << place << ", variant " << variant;
                }
            }
        }
        EXPECT_LT(100U, loaded) << kind.m_pName;
        EXPECT_LT(100U, refused) << kind.m_pName;
    }
}

TEST_F(BadFiles, WrongEncodingsThrow)
{
    for (const Kind& each : kinds()) {
        std::string little = "\xFF\xFE";
        for (const char byte : each.m_sBytes) {
            little.append({byte, '\0'});
        }
        EXPECT_FALSE(loads(each, little.substr(0, little.size() - 1))) << "half a character, " << each.m_pName;
        EXPECT_FALSE(loads(each, little.substr(2))) << "no byte-order mark, " << each.m_pName;
        EXPECT_FALSE(loads(each, "\xFE\xFF" + little.substr(2))) << "the other byte-order mark, " << each.m_pName;
        EXPECT_FALSE(loads(each, std::string("\xFF\xFE\0\0", 4) + each.m_sBytes)) << "UTF-32, " << each.m_pName;
        EXPECT_FALSE(loads(each, "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><x/>")) << each.m_pName;
        EXPECT_FALSE(loads(each, "<x>\xE9</x>")) << "Latin-1 without a declaration, " << each.m_pName;
        EXPECT_FALSE(loads(each, "<!DOCTYPE x><x/>")) << each.m_pName;
    }
}

TEST_F(BadFiles, EmptyDocumentsLoadAsNothing)
{
    for (const Kind& each : kinds()) {
        EXPECT_TRUE(loads(each, "<x/>")) << each.m_pName;
        EXPECT_TRUE(loads(each, "\xEF\xBB\xBF<x/>")) << each.m_pName;
    }
}

TEST_F(BadFiles, DepthIsLimited)
{
    const auto nested = [](std::size_t depth) {
        std::string xml;
        for (std::size_t i = 0; i < depth; ++i) {
            xml += "<x>";
        }
        for (std::size_t i = 0; i < depth; ++i) {
            xml += "</x>";
        }
        return xml;
    };
    for (const Kind& each : kinds()) {
        const std::size_t limit = each.m_sBytes == kConfig ? 64 : 256;
        EXPECT_TRUE(loads(each, nested(limit - 1))) << each.m_pName;
        EXPECT_TRUE(loads(each, nested(limit))) << each.m_pName;
        EXPECT_FALSE(loads(each, nested(limit + 1))) << each.m_pName;
        EXPECT_FALSE(loads(each, nested(100000))) << each.m_pName;
    }
}

}  // namespace
