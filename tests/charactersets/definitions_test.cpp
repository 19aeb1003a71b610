#include <gtest/gtest.h>

#include <type_traits>

#include "assertioncapture.h"
#include "charactersets.h"

// The holders: a definition, a list, and the searches in it.

namespace {

using namespace testsupport;
using vel::CharacterSetDefinition;
using vel::CharacterSetList;
using vel::Handle;
using vel::makeHandle;
using vel::String;
using Texts = std::vector<std::string>;

static_assert(std::is_base_of_v<vel::RefCounted, CharacterSetDefinition>);
static_assert(std::is_base_of_v<vel::RefCounted, CharacterSetList>);
static_assert(
    std::is_same_v<decltype(std::declval<const CharacterSetDefinition&>().getDefinitionLabel()), const String&>);
static_assert(std::is_same_v<decltype(std::declval<const CharacterSetDefinition&>().getImplementationNames()),
                             const CharacterSetDefinition::ImplementationNames&>);
static_assert(
    std::is_same_v<decltype(std::declval<const CharacterSetDefinition&>().numImplementations()), std::uint32_t>);
static_assert(std::is_same_v<decltype(std::declval<const CharacterSetList&>().numDefinitions()), std::uint32_t>);
static_assert(std::is_same_v<decltype(std::declval<const CharacterSetList&>().definitions_begin()),
                             CharacterSetList::const_definition_iterator>);

TEST(CharacterSetDefinition, BeginsWithItsLabelOnly)
{
    const Handle<CharacterSetDefinition> definition = makeHandle<CharacterSetDefinition>(L"Latin-1");
    EXPECT_EQ(String(L"Latin-1"), definition->getDefinitionLabel());
    EXPECT_TRUE(definition->getImplementationNames().empty());
    EXPECT_EQ(0U, definition->numImplementations());
    EXPECT_FALSE(definition->isMinimized());
}

TEST(CharacterSetDefinition, KeepsNamesInOrderWithDuplicatesAndEmptyOnes)
{
    const Handle<CharacterSetDefinition> definition = definitionOf(L"x", {L"b", L"", L"a", L"b"});
    EXPECT_EQ((CharacterSetDefinition::ImplementationNames{L"b", L"", L"a", L"b"}),
              definition->getImplementationNames());
    EXPECT_EQ(4U, definition->numImplementations());
}

TEST(CharacterSetDefinition, TheMinimizedFlagIsWhatItIsSetTo)
{
    const Handle<CharacterSetDefinition> definition = definitionOf(L"x", {kUnknown});
    definition->setMinimized(true);
    EXPECT_TRUE(definition->isMinimized());
    EXPECT_EQ(1U, definition->numImplementations());
    definition->setMinimized(false);
    EXPECT_FALSE(definition->isMinimized());
}

class CharacterSetLists : public testing::Test
{
protected:
    void add(const String& label, const Handle<const CharacterSetDefinition>& definition)
    {
        m_hList->addDefinition(label, definition);
    }
    /// The label that a search by definition label gives, its out-text having held something before.
    String encodingLabelOf(const String& definitionLabel) const
    {
        String label = L"before";
        m_hList->findDefinitionByDefinitionLabel(definitionLabel, label);
        return label;
    }

    Handle<CharacterSetList> m_hList = makeHandle<CharacterSetList>();
    Handle<const CharacterSetDefinition> m_hFirst = definitionOf(L"First", {});
    Handle<const CharacterSetDefinition> m_hSecond = definitionOf(L"second", {});
};

TEST_F(CharacterSetLists, BeginEmptyAndNotMinimized)
{
    EXPECT_EQ(0U, m_hList->numDefinitions());
    EXPECT_TRUE(m_hList->definitions_begin() == m_hList->definitions_end());
    EXPECT_FALSE(m_hList->isMinimized());
    m_hList->setMinimized(true);
    EXPECT_TRUE(m_hList->isMinimized());
    m_hList->setMinimized(false);
    EXPECT_FALSE(m_hList->isMinimized());
}

TEST_F(CharacterSetLists, EntriesStandInTheOrderAddedAndShareTheirDefinitions)
{
    add(L"z", m_hFirst);
    add(L"a", m_hSecond);
    ASSERT_EQ(2U, m_hList->numDefinitions());
    CharacterSetList::const_definition_iterator each = m_hList->definitions_begin();
    EXPECT_EQ(String(L"z"), each->first);
    EXPECT_TRUE(each->second == m_hFirst);
    ++each;
    EXPECT_EQ(String(L"a"), each->first);
    EXPECT_TRUE(each->second == m_hSecond);
    EXPECT_TRUE(++each == m_hList->definitions_end());
}

TEST_F(CharacterSetLists, OfTwoLabelsThatDifferInCaseTheFirstEntryIsFound)
{
    add(L"ABC", m_hFirst);
    add(L"abc", m_hSecond);
    EXPECT_TRUE(m_hList->findDefinitionByEncodingLabel(L"Abc") == m_hFirst);
    EXPECT_TRUE(m_hList->findDefinitionByEncodingLabel(L"abc") == m_hFirst);
}

TEST_F(CharacterSetLists, AnEncodingLabelThatIsNotThereGivesANullHandle)
{
    EXPECT_TRUE(m_hList->findDefinitionByEncodingLabel(L"x").isNull());
    EXPECT_TRUE(m_hList->findDefinitionByEncodingLabel(L"").isNull());
    add(L"utf-8", m_hFirst);
    for (const wchar_t* absent : {L"", L"utf-", L"utf-88", L"utf_8", L"First"}) {
        EXPECT_TRUE(m_hList->findDefinitionByEncodingLabel(absent).isNull()) << String(absent).length();
    }
}

TEST_F(CharacterSetLists, LabelsBeyondAsciiFoldTheirCaseToo)
{
    add(L"\u00C4\u03A3", m_hFirst);
    EXPECT_TRUE(m_hList->findDefinitionByEncodingLabel(L"\u00E4\u03C2") == m_hFirst);
}

TEST_F(CharacterSetLists, ADefinitionLabelGivesTheEntrysEncodingLabel)
{
    add(L"one", m_hSecond);
    add(L"Two", m_hFirst);
    add(L"three", m_hFirst);
    String label;
    EXPECT_TRUE(m_hList->findDefinitionByDefinitionLabel(L"FIRST", label) == m_hFirst);
    EXPECT_EQ(String(L"Two"), label);
    EXPECT_EQ(String(L"one"), encodingLabelOf(L"second"));
}

TEST_F(CharacterSetLists, AnEmptyListFindsNoDefinitionLabelAndClearsTheOutText)
{
    String label = L"before";
    EXPECT_TRUE(m_hList->findDefinitionByDefinitionLabel(L"First", label).isNull());
    EXPECT_EQ(String(), label);
}

TEST_F(CharacterSetLists, ADefinitionLabelThatIsNotThereClearsTheOutText)
{
    add(L"First", m_hSecond);
    EXPECT_EQ(String(), encodingLabelOf(L"First"));
    EXPECT_EQ(String(), encodingLabelOf(L""));
}

TEST_F(CharacterSetLists, TheOutTextMayBeTheTextThatIsLookedFor)
{
    add(L"label", m_hFirst);
    String both = L"first";
    EXPECT_TRUE(m_hList->findDefinitionByDefinitionLabel(both, both) == m_hFirst);
    EXPECT_EQ(String(L"label"), both);
}

TEST_F(CharacterSetLists, AnEmptyDefinitionLabelMatchesOnlyAnEmptyOne)
{
    add(L"one", m_hFirst);
    add(L"two", definitionOf(L"", {}));
    EXPECT_EQ(String(L"two"), encodingLabelOf(L""));
}

TEST_F(CharacterSetLists, GetDefinitionsReplacesWhatTheSequenceHeld)
{
    add(L"one", m_hFirst);
    CharacterSetList::DefinitionList entries = {{L"old", m_hSecond}, {L"older", m_hSecond}};
    m_hList->getDefinitions(entries);
    ASSERT_EQ(1U, entries.size());
    EXPECT_EQ(String(L"one"), entries[0].first);
    EXPECT_TRUE(entries[0].second == m_hFirst);
    makeHandle<CharacterSetList>()->getDefinitions(entries);
    EXPECT_TRUE(entries.empty());
}

TEST_F(CharacterSetLists, OneDefinitionUnderTwoLabelsIsTwoEntries)
{
    add(L"one", m_hFirst);
    add(L"two", m_hFirst);
    EXPECT_EQ(2U, m_hList->numDefinitions());
    EXPECT_TRUE(m_hList->findDefinitionByEncodingLabel(L"TWO") == m_hFirst);
    EXPECT_EQ(String(L"one"), encodingLabelOf(L"First"));
}

TEST_F(CharacterSetLists, ANullDefinitionAndAnEmptyLabelAreReportedInThisOrderAndThenAppended)
{
    const AssertionCapture capture;
    add(L"", {});
    EXPECT_EQ((Texts{"!hCharacterSetDefinition.isNull()", "!sLabel.empty()"}), capture.texts());
    EXPECT_EQ(1U, m_hList->numDefinitions());
    EXPECT_TRUE(m_hList->findDefinitionByEncodingLabel(L"").isNull());
}

TEST_F(CharacterSetLists, EachOfTheTwoIsReportedAlone)
{
    const AssertionCapture capture;
    add(L"x", {});
    add(L"", m_hFirst);
    EXPECT_EQ((Texts{"!hCharacterSetDefinition.isNull()", "!sLabel.empty()"}), capture.texts());
    EXPECT_TRUE(m_hList->findDefinitionByEncodingLabel(L"") == m_hFirst);
}

TEST_F(CharacterSetLists, AHandlerThatThrowsLeavesTheListAsItWas)
{
    const AssertionCapture capture(AssertionCapture::kThrow);
    EXPECT_THROW(add(L"", {}), ThrownByAssertion);
    EXPECT_EQ((Texts{"!hCharacterSetDefinition.isNull()"}), capture.texts());
    EXPECT_THROW(add(L"", m_hFirst), ThrownByAssertion);
    EXPECT_EQ(0U, m_hList->numDefinitions());
}

TEST_F(CharacterSetLists, SearchingPastANullDefinitionThrowsAndNamesTheType)
{
    const AssertionCapture capture;
    add(L"one", m_hFirst);
    add(L"null", {});
    EXPECT_EQ(String(L"one"), encodingLabelOf(L"First"));
    EXPECT_EQ(kNullDefinition, invalidHandleOf([&] { encodingLabelOf(L"second"); }));
}

}  // namespace
