#include "loggedload.h"

// The file of definitions: what is read of it, and what is written to the log.

namespace {

using namespace testsupport;
using vel::String;

constexpr const wchar_t* kSource = L"vel.i18n.charsetResolver.defsLoad";

/// A load of a file with these bytes.
struct DefinitionsLoad : LoggedLoad
{
    explicit DefinitionsLoad(const std::string& bytes, vel::LogSeverity least = vel::kLogInformation)
        : LoggedLoad(kSource, L"defsFile")
    {
        const LogCapture log(least);
        m_sPath = m_tFile.write(bytes);
        try {
            m_hResolver->loadCharacterSetDefinitions(m_sPath);
        } catch (const vel::XmlException&) {
            m_bThrew = true;
        }
        m_vRecords = log.records();
    }
    /// The outline of the definition of that label.
    String definition(const String& label) const
    {
        const auto found = m_hResolver->getCharacterSetDefinition(label);
        return found.isNull() ? String(L"none") : outline(*found);
    }
    void expectWarnings(const std::vector<String>& texts) const
    {
        std::vector<Expected> warnings;
        for (const String& each : texts) {
            warnings.emplace_back(vel::kLogWarning, each);
        }
        expectRecords(warnings);
    }

    bool m_bThrew = false;
};

TEST(DefinitionsFile, DefinitionsAreReadWithTheirImplementationsInOrder)
{
    const DefinitionsLoad load(
        rooted(setElement("Latin", {"windows-1252", "iso-8859-1"}) + setElement("u", {"utf-8"})));
    EXPECT_EQ(String(L"Latin: Latin -> windows-1252 iso-8859-1*\nu: u -> utf-8*\n"), outline(*load.m_hResolver));
    load.expectWarnings({});
}

TEST(DefinitionsFile, TheLoadingMessageStandsBeforeThePropertyIsAttached)
{
    const DefinitionsLoad load("<any/>");
    ASSERT_EQ(1U, load.m_vRecords.size());
    const StoredRecord& record = load.m_vRecords.front();
    EXPECT_EQ(L"Loading character set definitions file " + load.m_sPath.standard() + L".", record.text().standard());
    EXPECT_EQ(vel::kLogInformation, record.m_eSeverity);
    EXPECT_EQ(kSource, record.m_sSource);
    EXPECT_TRUE(record.m_tProperties.empty());
}

TEST(DefinitionsFile, PrefixedAttributesAreNone)
{
    const DefinitionsLoad load(
        rooted("<characterSet x:name='m' name='u'><impl>utf-8</impl></characterSet>"
               "<characterSet x:name='n'/>"));
    EXPECT_EQ(String(L"u: u -> utf-8*\n"), outline(*load.m_hResolver));
    load.expectWarnings({L"'name' attribute missing on element: <characterSet x:name=\"n\"/>"});
}

TEST(DefinitionsFile, AnImplementationWithALineBreakIsNone)
{
    const DefinitionsLoad load(rooted(setElement("u", {"utf-8&#13;&#10;", "utf&#10;-8", "utf-8"})));
    EXPECT_EQ(String(L"u -> utf-8*"), load.definition(L"u"));
    load.expectWarnings({});
}

TEST(DefinitionsFile, BlanksAndOptionsMayStandInAnImplementation)
{
    const DefinitionsLoad load(rooted(setElement("u", {"UTF-16,version=1", "iso 8859 1"})));
    EXPECT_EQ(String(L"u -> UTF-16,version=1 iso 8859 1*"), load.definition(L"u"));
    load.expectWarnings({});
}

TEST(DefinitionsFile, AThousandEmptyImplementationsOfALargeElementMakeSmallRecords)
{
    // Each record shows the element, which all of them make large: they would be a thousand times its size.
    std::string children;
    for (int i = 0; i < 1000; ++i) {
        children += "<impl/>";
    }
    const DefinitionsLoad load(rooted("<characterSet name='u'>" + children + "</characterSet>"));
    ASSERT_EQ(1001U, load.m_vRecords.size());
    const std::wstring_view start = L"No implementation given on element: ";
    for (std::size_t i = 1; i < load.m_vRecords.size(); ++i) {
        const std::wstring text = load.m_vRecords[i].text().standard();
        ASSERT_EQ(start.size() + vel::Logger::kLongestInsert + 3, text.size());
        ASSERT_EQ(L"<characterSet name=\"u\"><impl/>", text.substr(start.size(), 30));
        ASSERT_EQ(L"...", text.substr(text.size() - 3));
    }
}

TEST(DefinitionsFile, TheRootMayHaveAnyName)
{
    EXPECT_EQ(
        String(L"x -> utf-8*"),
        DefinitionsLoad("<characterSet name=\"y\">" + setElement("x", {"utf-8"}) + "</characterSet>").definition(L"x"));
}

TEST(DefinitionsFile, OnlyChildrenOfTheNamesCountAndOthersAreIgnored)
{
    const DefinitionsLoad load(
        rooted("<group>" + setElement("deep", {"utf-8"}) +
               "</group><characterset name=\"low\"><impl>utf-8</impl>"
               "</characterset><characterSetList name=\"list\"/>text<characterSet name=\"x\" label=\"y\" other=\"z\">"
               "<Impl>koi8-r</Impl><g><impl>koi8-r</impl></g><impl>utf-8</impl></characterSet>"));
    EXPECT_EQ(String(L"x: x -> utf-8*\n"), outline(*load.m_hResolver));
    load.expectWarnings({});
}

TEST(DefinitionsFile, ElementsMatchByTheirLocalNames)
{
    EXPECT_EQ(
        String(L"x -> utf-8*"),
        DefinitionsLoad("<v:r xmlns:v=\"u\"><v:characterSet name=\"x\"><v:impl>utf-8</v:impl></v:characterSet></v:r>")
            .definition(L"x"));
}

TEST(DefinitionsFile, AMissingOrEmptyNameIsAWarningWithTheElementAndSkipsIt)
{
    const DefinitionsLoad load(
        rooted("<characterSet Name='x'><impl>utf-8</impl></characterSet><characterSet name=''/>" +
               setElement("x", {"utf-8"})));
    load.expectWarnings(
        {L"'name' attribute missing on element: <characterSet Name=\"x\"><impl>utf-8</impl>"
         L"</characterSet>",
         L"'name' attribute missing on element: <characterSet name=\"\"/>"});
    EXPECT_EQ(String(L"x: x -> utf-8*\n"), outline(*load.m_hResolver));
}

TEST(DefinitionsFile, ASecondElementOfANameIsAWarningAndSkippedInAnyCase)
{
    const DefinitionsLoad load(
        rooted(setElement("x", {"utf-8"}) + setElement("X", {"koi8-r"}) + setElement("y", {"utf-8"})));
    load.expectWarnings({L"Duplicate character set definition: X"});
    EXPECT_EQ(String(L"x: x -> utf-8*\ny: y -> utf-8*\n"), outline(*load.m_hResolver));
}

TEST(DefinitionsFile, ADuplicatesImplementationsAreNotLookedAt)
{
    const DefinitionsLoad load(rooted(setElement("x", {"utf-8"}) + setElement("x", {""})));
    load.expectWarnings({L"Duplicate character set definition: x"});
}

TEST(DefinitionsFile, AnEmptyImplementationIsAWarningWithTheDefinitionsElement)
{
    const DefinitionsLoad load(rooted("<characterSet name='x'><impl/><impl>utf-8</impl><impl></impl></characterSet>"));
    const String text =
        L"No implementation given on element: <characterSet name=\"x\"><impl/><impl>utf-8</impl>"
        L"<impl/></characterSet>";
    load.expectWarnings({text, text});
    EXPECT_EQ(String(L"x -> utf-8*"), load.definition(L"x"));
}

TEST(DefinitionsFile, AnImplementationIsNotTrimmed)
{
    // The library's names know blanks only within; a line feed belongs to no name.
    const DefinitionsLoad load(rooted(setElement("x", {"\nno-such-transcoder\n", "utf-8"})));
    EXPECT_EQ(String(L"x -> utf-8*"), load.definition(L"x"));
    load.expectWarnings({});
}

TEST(DefinitionsFile, TheTextOfAnImplementationIsAllTextInIt)
{
    EXPECT_EQ(String(L"x -> utf-8*"),
              DefinitionsLoad(rooted("<characterSet name='x'><impl>ut<b>f-</b><!-- . -->8</impl></characterSet>"))
                  .definition(L"x"));
}

TEST(DefinitionsFile, ADefinitionOfUnknownImplementationsIsDroppedWithoutAWord)
{
    const DefinitionsLoad load(rooted(setElement("x", {"no-such-transcoder"}) + setElement("y", {})));
    load.expectWarnings({});
    EXPECT_EQ(String(), outline(*load.m_hResolver));
}

TEST(DefinitionsFile, ALaterElementOfADroppedNameIsNoDuplicate)
{
    const DefinitionsLoad load(rooted(setElement("x", {"no-such-transcoder"}) + setElement("X", {"utf-8"})));
    load.expectWarnings({});
    EXPECT_EQ(String(L"X -> utf-8*"), load.definition(L"x"));
}

TEST(DefinitionsFile, ASecondLoadAddsAndReportsWhatIsKnown)
{
    DefinitionsLoad load(rooted(setElement("x", {"utf-8"})));
    const LogCapture log;
    load.m_hResolver->loadCharacterSetDefinitions(
        load.m_tFile.write(rooted(setElement("X", {"koi8-r"}) + setElement("y", {"koi8-r"}))));
    ASSERT_EQ(2U, log.records().size());
    EXPECT_EQ(String(L"Duplicate character set definition: X"), log.records()[1].text());
    EXPECT_EQ(String(L"x: x -> utf-8*\ny: y -> koi8-r*\n"), outline(*load.m_hResolver));
}

TEST(DefinitionsFile, AFileThatCannotBeReadThrowsAndAddsNothing)
{
    const DefinitionsLoad load("<root>" + setElement("x", {"utf-8"}));
    EXPECT_TRUE(load.m_bThrew);
    EXPECT_EQ(1U, load.m_vRecords.size());
    EXPECT_EQ(String(), outline(*load.m_hResolver));
    EXPECT_THROW(load.m_hResolver->loadCharacterSetDefinitions(String(L"/no/such/file")), vel::XmlException);
}

TEST(DefinitionsFile, SourceAndPropertyAreGoneAfterwards)
{
    for (const char* bytes : {"<root/>", "<root>"}) {
        const DefinitionsLoad load(bytes);
        EXPECT_EQ(nullptr, vel::ScopedLogSource::current());
        EXPECT_EQ(nullptr, vel::ScopedLogProperty::current());
    }
}

TEST(DefinitionsFile, ASinkForWarningsGetsNoInformation)
{
    const DefinitionsLoad load(rooted("<characterSet/>"), vel::kLogWarning);
    ASSERT_EQ(1U, load.m_vRecords.size());
    EXPECT_EQ(String(L"'name' attribute missing on element: <characterSet/>"), load.m_vRecords[0].text());
}

TEST(DefinitionsFile, InsertsInAFilesTextAreShownAsTheyStand)
{
    const DefinitionsLoad load(rooted(setElement("%1", {"utf-8"}) + setElement("%1", {"utf-8"})));
    load.expectWarnings({L"Duplicate character set definition: %1"});
}

TEST(DefinitionsFile, TheEncodingIsThatOfTheByteOrderMark)
{
    std::string utf16 = "\xFE\xFF";
    for (const char each : rooted(setElement("x", {"utf-8"}))) {
        utf16.append(1, '\0').append(1, each);
    }
    EXPECT_EQ(String(L"x -> utf-8*"), DefinitionsLoad(utf16).definition(L"x"));
    EXPECT_EQ(String(L"\u00E9 -> utf-8*"),
              DefinitionsLoad("\xEF\xBB\xBF" + rooted(setElement("\xC3\xA9", {"utf-8"}))).definition(L"\u00C9"));
}

}  // namespace
