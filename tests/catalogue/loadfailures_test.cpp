#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "catalogues.h"
#include "printers.h"
#include "vel/xml/xmlexception.h"

// What the catalogue holds after a load that failed.

namespace {

using namespace testsupport;
using testing::ElementsAre;
using vel::Locale;
using vel::String;

class LoadFailures : public testing::Test
{
protected:
    void SetUp() override
    {
        m_tCatalogue.load(definition("a", listProperty("dateFormats", {"kept"})) + definition("b", ""), L"a");
    }
    void expectAllowedAsBefore() const { EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"a"))); }

    Catalogue m_tCatalogue;
};

TEST_F(LoadFailures, ABadDefinitionsFileEmptiesTheFormatsAndKeepsTheRest)
{
    const String bad = m_tCatalogue.write(definitionsFile(definition("c", "")) + "<", "bad.xml");
    const String missing = (m_tCatalogue.folder().path().join(vel::FilePath(L"missing.xml"))).toString();
    for (const String& file : {bad, missing, m_tCatalogue.folder().path().toString()}) {
        m_tCatalogue.load(definition("a", listProperty("dateFormats", {"kept"})), L"a");
        EXPECT_THROW(m_tCatalogue.lookup().loadLocaleDefinitions(*allowing(L"b"), file), vel::XmlException);
        EXPECT_FALSE(m_tCatalogue.lookup().isValidDataFormat(L"kept"));
        EXPECT_FALSE(m_tCatalogue.lookup().isValidDataFormat(L"[MMMM]"));
        expectAllowedAsBefore();
    }
    m_tCatalogue.allow(L"a,b,c");
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"a"), String(L"b")));
    m_tCatalogue.load("", L"b");
    EXPECT_TRUE(m_tCatalogue.lookup().isValidDataFormat(L"[MMMM]"));
}

TEST_F(LoadFailures, ABadListsFileLeavesTheAllowedLocales)
{
    const String bad = m_tCatalogue.write(
        "<l><localeList name=\"supported\"><localeDefinition name=\"b\"/></localeList>", "lists.xml");
    EXPECT_THROW(m_tCatalogue.lookup().loadConfig(*allowing(L"b", bad), vel::kConfigReload), vel::XmlException);
    expectAllowedAsBefore();
    EXPECT_THROW(m_tCatalogue.lookup().loadConfig(*allowing(L"b", L"/nowhere/lists.xml"), vel::kConfigReload),
                 vel::XmlException);
    expectAllowedAsBefore();
}

TEST_F(LoadFailures, ABadListsFileWhileLoadingDefinitionsKeepsTheNewDefinitions)
{
    const String file = m_tCatalogue.write(definitionsFile(definition("c", "")), "more.xml");
    EXPECT_THROW(m_tCatalogue.lookup().loadLocaleDefinitions(*allowing(L"", L"/nowhere/lists.xml"), file),
                 vel::XmlException);
    expectAllowedAsBefore();
    EXPECT_TRUE(m_tCatalogue.lookup().isValidDataFormat(L"[MMMM]"));
    m_tCatalogue.allow(L"c");
    EXPECT_THAT(m_tCatalogue.allowedNames(), ElementsAre(String(L"c")));
}

/// A host's configuration that fails when it is asked.
class ThrowingReader final : public vel::ConfigReader
{
public:
    explicit ThrowingReader(bool atFile) : m_bAtFile(atFile) {}
    String getString(const String&, const String&) const override { throw std::runtime_error("no configuration"); }
    vel::FilePath getFilePath(const String&) const override
    {
        if (m_bAtFile) {
            throw std::runtime_error("no configuration");
        }
        return {};
    }

private:
    bool m_bAtFile;
};

TEST_F(LoadFailures, AConfigurationThatThrowsLeavesTheAllowedLocales)
{
    for (const bool atFile : {true, false}) {
        EXPECT_THROW(m_tCatalogue.lookup().loadConfig(*vel::makeHandle<ThrowingReader>(atFile), vel::kConfigReload),
                     std::runtime_error);
        expectAllowedAsBefore();
    }
}

}  // namespace
