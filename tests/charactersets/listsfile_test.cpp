#include "loggedload.h"

// The file of lists: what is read of it, and what is written to the log.

namespace {

using namespace testsupport;
using vel::String;

constexpr const wchar_t* kSource = L"vel.i18n.charsetResolver.listsLoad";

/// A load of lists over kThreeSets.
struct ListsLoad : LoggedLoad
{
    explicit ListsLoad(const std::string& elements, const std::string& definitions = kThreeSets)
        : LoggedLoad(kSource, L"listsFile")
    {
        loadDefinitions(*m_hResolver, definitions);
        m_sPath = m_tFile.write(rooted(elements));
        const LogCapture log;
        m_hResolver->loadCharacterSetLists(m_sPath);
        m_vRecords = log.records();
    }
    String list(const String& name) const { return listIn(*m_hResolver, name); }
};

TEST(ListsFile, EntriesStandInOrderUnderTheirLabels)
{
    const ListsLoad load(listElement("l", entry("B") + entry("a", "label=\"Utf-8\"") + entry("c") + entry("B")));
    EXPECT_EQ(String(L"B=b Utf-8=a c=c B=b*"), load.list(L"L"));
    load.expectRecords({});
}

TEST(ListsFile, TheLoadingMessageStandsBeforeThePropertyIsAttached)
{
    const ListsLoad load("");
    ASSERT_EQ(1U, load.m_vRecords.size());
    const StoredRecord& record = load.m_vRecords.front();
    EXPECT_EQ(L"Loading character set lists file " + load.m_sPath.standard() + L".", record.text().standard());
    EXPECT_EQ(vel::kLogInformation, record.m_eSeverity);
    EXPECT_EQ(kSource, record.m_sSource);
    EXPECT_TRUE(record.m_tProperties.empty());
}

TEST(ListsFile, AnEmptyLabelTakesTheNameAsItIsWritten)
{
    EXPECT_EQ(String(L"A=a*"), ListsLoad(listElement("l", entry("A", "label=\"\""))).list(L"l"));
}

TEST(ListsFile, AnEntryWhoseLabelHasControlCharactersIsSkippedWithAWarning)
{
    const std::string start = "Encoding label with control characters, entry skipped: <characterSet name=\"a\" label=";
    for (const char* label :
         {"utf-8&#13;&#10;Set-Cookie: a", "&#10;", "a&#13;", "&#9;a", "&#127;", "a&#133;b", "&#x2028;", "&#x2029;"}) {
        const ListsLoad load(listElement("l", entry("a", std::string("label=\"") + label + "\"") + entry("b")));
        EXPECT_EQ(String(L"b=b*"), load.list(L"l")) << label;
        ASSERT_EQ(2U, load.m_vRecords.size()) << label;
        EXPECT_EQ(vel::kLogWarning, load.m_vRecords[1].m_eSeverity);
        EXPECT_EQ(0U, vel::toUtf8Lossy(load.m_vRecords[1].text().view()).find(start));
    }
}

TEST(ListsFile, EveryOtherLabelIsTakenAsItIs)
{
    const ListsLoad load(listElement("l", entry("a", "label=\"a b;&quot;&amp;\xC3\xA4\"")));
    EXPECT_EQ(String(L"a b;\"&\u00E4=a*"), load.list(L"l"));
    load.expectRecords({});
}

TEST(ListsFile, ANameWithALineBreakNeedsALabelWithoutOne)
{
    const ListsLoad load(listElement("l", entry("a&#10;b") + entry("a&#10;b", "label=\"c\"")),
                         setElement("a&#10;b", {"utf-8"}));
    EXPECT_EQ(String(L"c=a\nb*"), load.list(L"l"));
    load.expectRecords({{vel::kLogWarning,
                         L"Encoding label with control characters, entry skipped: <characterSet name=\"a&#10;b\"/>"}});
}

struct LabelRow
{
    const wchar_t* m_pLabel;
    bool m_bIsToken;
};

TEST(EncodingLabel, IsATokenWhereAResponseCanAnnounceIt)
{
    const LabelRow rows[] = {{L"utf-8", true},   {L"AZaz09!#$%&'*+-.^_`|~", true},
                             {L"a b", false},    {L"", false},
                             {L"a\r\nb", false}, {L"a\"b", false},
                             {L"a;b", false},    {L"a,b", false},
                             {L"a/b", false},    {L"a=b", false},
                             {L"(a)", false},    {L"a:b", false},
                             {L"\u00E4", false}, {L"\x7F", false}};
    for (const LabelRow& row : rows) {
        EXPECT_EQ(row.m_bIsToken, vel::isEncodingLabel(row.m_pLabel)) << vel::toUtf8Lossy(row.m_pLabel);
    }
}

TEST(ListsFile, PrefixedAttributesAreNone)
{
    const ListsLoad load(
        "<characterSetList x:name='m' name='l'><characterSet x:name='b' name='a' x:label='z'/>"
        "<characterSet x:name='c'/></characterSetList>");
    EXPECT_EQ(String(L"a=a*"), load.list(L"l"));
    load.expectRecords({{vel::kLogWarning, L"'name' attribute missing on element: <characterSet x:name=\"c\"/>"}});
}

TEST(ListsFile, EntriesShareTheResolversDefinitions)
{
    const ListsLoad load(listElement("l", entry("a")));
    EXPECT_TRUE(load.m_hResolver->getCharacterSetList(L"l")->definitions_begin()->second ==
                load.m_hResolver->getCharacterSetDefinition(L"a"));
}

TEST(ListsFile, OwnCharacterSetsStandBeforeThoseOfOtherListsWhereverTheyAreWritten)
{
    const ListsLoad load(listElement("first", entry("a", "label=\"f\"")) + listElement("second", entry("c")) +
                         listElement("l", including("second") + entry("b") + including("FIRST") + entry("a")));
    EXPECT_EQ(String(L"b=b a=a c=c f=a*"), load.list(L"l"));
    load.expectRecords({});
}

TEST(ListsFile, AnIncludedListGivesAllItsEntriesWithTheirLabels)
{
    const ListsLoad load(listElement("x", entry("a", "label=\"1\"") + entry("b", "label=\"2\"")) +
                         listElement("l", including("x") + including("X")));
    EXPECT_EQ(String(L"1=a 2=b 1=a 2=b*"), load.list(L"l"));
}

TEST(ListsFile, AListWithoutANameIsAWarningWithItsElement)
{
    const ListsLoad load("<characterSetList label='x'>" + entry("nowhere") + "</characterSetList>" +
                         listElement("", entry("a")));
    load.expectRecords({{vel::kLogWarning,
                         L"'name' attribute missing on element: <characterSetList label=\"x\">"
                         L"<characterSet name=\"nowhere\"/></characterSetList>"},
                        {vel::kLogWarning,
                         L"'name' attribute missing on element: <characterSetList name=\"\">"
                         L"<characterSet name=\"a\"/></characterSetList>"}});
    EXPECT_TRUE(load.m_hResolver->getCharacterSetLists().empty());
}

TEST(ListsFile, AChildWithoutANameIsAWarningWithItsElementAndSkipped)
{
    const ListsLoad load(listElement("l", "<characterSetList/><characterSet label='x'/>" + entry("a")));
    load.expectRecords({{vel::kLogWarning, L"'name' attribute missing on element: <characterSet label=\"x\"/>"},
                        {vel::kLogWarning, L"'name' attribute missing on element: <characterSetList/>"}});
    EXPECT_EQ(String(L"a=a*"), load.list(L"l"));
}

TEST(ListsFile, AnEntryWithoutADefinitionIsAMinorWarningWithItsName)
{
    const ListsLoad load(listElement("l", entry("Nowhere", "label=\"a\"") + entry("a")));
    load.expectRecords({{vel::kLogMinorWarning, L"No matching character set definition found: Nowhere."}});
    EXPECT_EQ(String(L"a=a*"), load.list(L"l"));
}

TEST(ListsFile, ADefinitionThatWasDroppedIsNotFound)
{
    const ListsLoad load(listElement("l", entry("x") + entry("y")),
                         setElement("x", {"no-such-transcoder"}) + setElement("y", {"utf-8"}));
    load.expectRecords({{vel::kLogMinorWarning, L"No matching character set definition found: x."}});
    EXPECT_EQ(String(L"y=y*"), load.list(L"l"));
}

TEST(ListsFile, AnUnknownListIsAWarningWithItsName)
{
    const ListsLoad load(listElement("l", including("Nowhere") + entry("a")));
    load.expectRecords({{vel::kLogWarning, L"No matching character set list found: Nowhere."}});
    EXPECT_EQ(String(L"a=a*"), load.list(L"l"));
}

TEST(ListsFile, AListWhoseEveryEntryIsDroppedIsNotThereForLaterReferences)
{
    const ListsLoad load(listElement("empty", entry("nowhere")) + listElement("l", including("empty") + entry("b")));
    load.expectRecords({{vel::kLogMinorWarning, L"No matching character set definition found: nowhere."},
                        {vel::kLogWarning, L"No matching character set list found: empty."}});
    EXPECT_EQ(String(L"no list"), load.list(L"empty"));
    EXPECT_EQ(String(L"b=b*"), load.list(L"l"));
}

TEST(ListsFile, OfTwoListsOfOneNameTheFirstIsKeptWithoutAMessage)
{
    const ListsLoad load(listElement("l", entry("a")) + listElement("L", entry("b")));
    load.expectRecords({});
    EXPECT_EQ(String(L"a=a*"), load.list(L"l"));
    EXPECT_EQ(1U, load.m_hResolver->getCharacterSetLists().size());
}

TEST(ListsFile, AListIncludesOnlyListsBeforeItAndNotItself)
{
    const ListsLoad load(listElement("l", entry("a") + including("l") + including("later")) +
                         listElement("later", entry("b")));
    load.expectRecords({{vel::kLogWarning, L"No matching character set list found: l."},
                        {vel::kLogWarning, L"No matching character set list found: later."}});
    EXPECT_EQ(String(L"a=a*"), load.list(L"l"));
}

TEST(ListsFile, AListThatNamesItselfTakesInAnEarlierOneOfItsName)
{
    const ListsLoad load(listElement("l", entry("a")) + listElement("L", entry("b") + including("l")) +
                         listElement("m", including("L")));
    load.expectRecords({});
    EXPECT_EQ(String(L"a=a*"), load.list(L"l"));
    EXPECT_EQ(String(L"a=a*"), load.list(L"m"));
}

TEST(ListsFile, OnlyChildrenOfTheTwoNamesCount)
{
    const ListsLoad load("<g>" + listElement("deep", entry("a")) + "</g><characterSet name=\"a\"/>" +
                         "<charactersetlist name=\"low\">" + entry("a") + "</charactersetlist>" +
                         listElement("l", "text<g>" + entry("a") + "</g><characterset name=\"a\"/>" +
                                              "<characterSetList name=\"inner\">" + entry("a") + "</characterSetList>" +
                                              entry("b", "other=\"x\"")));
    load.expectRecords({{vel::kLogWarning, L"No matching character set list found: inner."}});
    EXPECT_EQ(String(L"l: b=b*\n"), outline(*load.m_hResolver).substring(outline(*load.m_hResolver).find(L"l: b")));
    EXPECT_EQ(1U, load.m_hResolver->getCharacterSetLists().size());
}

TEST(ListsFile, LoadedBeforeTheDefinitionsThereAreMessagesAndNoLists)
{
    const ListsLoad load(listElement("l", entry("a") + entry("b")), "");
    load.expectRecords({{vel::kLogMinorWarning, L"No matching character set definition found: a."},
                        {vel::kLogMinorWarning, L"No matching character set definition found: b."}});
    EXPECT_TRUE(load.m_hResolver->getCharacterSetLists().empty());
}

TEST(ListsFile, ASecondLoadAddsKeepsAndTakesInWhatIsThere)
{
    const ListsLoad load(listElement("l", entry("a")));
    const LogCapture log;
    loadLists(*load.m_hResolver, listElement("L", entry("b")) + listElement("m", including("l") + entry("c")));
    EXPECT_EQ(1U, log.records().size());
    EXPECT_EQ(String(L"a=a*"), load.list(L"l"));
    EXPECT_EQ(String(L"c=c a=a*"), load.list(L"m"));
}

TEST(ListsFile, AFileThatCannotBeReadThrowsAndAddsNothing)
{
    const ListsLoad load(listElement("l", entry("a")));
    const String before = outline(*load.m_hResolver);
    EXPECT_THROW(load.m_hResolver->loadCharacterSetLists(load.m_tFile.write("<root>" + listElement("m", entry("a")))),
                 vel::XmlException);
    EXPECT_EQ(before, outline(*load.m_hResolver));
    EXPECT_EQ(nullptr, vel::ScopedLogSource::current());
    EXPECT_EQ(nullptr, vel::ScopedLogProperty::current());
}

}  // namespace
