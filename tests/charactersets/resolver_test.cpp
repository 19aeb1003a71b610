#include <gtest/gtest.h>

#include "assertioncapture.h"
#include "charactersets.h"

// The resolver without files: what is added, minimized, found and chosen.

namespace {

using namespace testsupport;
using vel::CharacterSet;
using vel::CharacterSetDefinition;
using vel::CharacterSetList;
using vel::CharacterSetResolver;
using vel::Handle;
using vel::makeHandle;
using vel::String;
using Definition = Handle<const CharacterSetDefinition>;
using Texts = std::vector<std::string>;

class Resolver : public testing::Test
{
protected:
    static Handle<CharacterSetList> listOf(
        const std::vector<std::pair<String, Handle<const CharacterSetDefinition>>>& entries)
    {
        const Handle<CharacterSetList> list = makeHandle<CharacterSetList>();
        for (const auto& [label, definition] : entries) {
            list->addDefinition(label, definition);
        }
        return list;
    }
    static Definition minimizedOf(const String& label, const String& implementation)
    {
        const Handle<CharacterSetDefinition> definition = definitionOf(label, {implementation});
        definition->setMinimized(true);
        return definition;
    }

    Handle<CharacterSetResolver> m_hResolver = makeHandle<CharacterSetResolver>();
    Definition m_hA = minimizedOf(L"A", L"utf-8");
    Definition m_hB = minimizedOf(L"B", L"koi8-r");
    Definition m_hC = minimizedOf(L"C", L"windows-1252");
};

TEST_F(Resolver, BeginsEmpty)
{
    EXPECT_TRUE(m_hResolver->getCharacterSetDefinitions().empty());
    EXPECT_TRUE(m_hResolver->getCharacterSetLists().empty());
    EXPECT_TRUE(m_hResolver->getCharacterSetDefinition(L"utf-8").isNull());
}

TEST_F(Resolver, ADefinitionIsAddedMinimizedAndFoundInAnyCase)
{
    m_hResolver->addCharacterSetDefinition(definitionOf(L"UTF-8", {kUnknown, L"utf-8", L"", L"koi8-r", L"utf-8"}));
    const Definition found = m_hResolver->getCharacterSetDefinition(L"utf-8");
    ASSERT_FALSE(found.isNull());
    EXPECT_EQ(String(L"UTF-8 -> utf-8 koi8-r utf-8*"), outline(*found));
}

TEST_F(Resolver, AMinimizedDefinitionIsAddedAsItIs)
{
    const Definition claimed = minimizedOf(L"x", kUnknown);
    m_hResolver->addCharacterSetDefinition(claimed);
    EXPECT_TRUE(m_hResolver->getCharacterSetDefinition(L"X") == claimed);
}

TEST_F(Resolver, ADefinitionWithoutAnAvailableImplementationIsNotAdded)
{
    const AssertionCapture capture;
    m_hResolver->addCharacterSetDefinition(definitionOf(L"x", {kUnknown}));
    m_hResolver->addCharacterSetDefinition(definitionOf(L"x", {}));
    const Handle<CharacterSetDefinition> empty = definitionOf(L"x", {});
    empty->setMinimized(true);
    m_hResolver->addCharacterSetDefinition(empty);
    EXPECT_TRUE(m_hResolver->getCharacterSetDefinitions().empty());
    EXPECT_TRUE(capture.texts().empty());
}

TEST_F(Resolver, ASecondDefinitionOfALabelIsABrokenInvariant)
{
    const AssertionCapture capture;
    m_hResolver->addCharacterSetDefinition(m_hA);
    m_hResolver->addCharacterSetDefinition(minimizedOf(L"a", L"koi8-r"));
    EXPECT_EQ((Texts{"m_tDefinitionLabelMap.find(hDefinition->getDefinitionLabel()) == m_tDefinitionLabelMap.end()"}),
              capture.texts());
    EXPECT_EQ(1U, m_hResolver->getCharacterSetDefinitions().size());
    EXPECT_EQ(String(L"a -> koi8-r*"), outline(*m_hResolver->getCharacterSetDefinition(L"A")));
}

TEST_F(Resolver, AHandlerThatThrowsKeepsTheFirstDefinition)
{
    const AssertionCapture capture(AssertionCapture::kThrow);
    m_hResolver->addCharacterSetDefinition(m_hA);
    EXPECT_THROW(m_hResolver->addCharacterSetDefinition(m_hA), ThrownByAssertion);
    EXPECT_TRUE(m_hResolver->getCharacterSetDefinition(L"a") == m_hA);
}

TEST_F(Resolver, NullHandlesThrow)
{
    EXPECT_EQ(kNullDefinition, invalidHandleOf([&] { m_hResolver->addCharacterSetDefinition({}); }));
    EXPECT_EQ("Invalid handle: vel::CharacterSetList const*",
              invalidHandleOf([&] { m_hResolver->addCharacterSetList(L"x", {}); }));
}

TEST_F(Resolver, AListIsAddedMinimizedAndFoundInAnyCase)
{
    const Definition gone = definitionOf(L"gone", {kUnknown});
    const Definition kept = definitionOf(L"kept", {kUnknown, L"koi8-r"});
    m_hResolver->addCharacterSetList(L"Mine", listOf({{L"g", gone}, {L"k", kept}, {L"a", m_hA}}));
    const Handle<const CharacterSetList> list = m_hResolver->getCharacterSetList(L"mINE");
    ASSERT_FALSE(list.isNull());
    EXPECT_EQ(String(L"k=kept a=A*"), outline(*list));
    EXPECT_EQ(String(L"kept -> koi8-r*"), outline(*list->definitions_begin()->second));
    EXPECT_TRUE(std::next(list->definitions_begin())->second == m_hA);
}

TEST_F(Resolver, AMinimizedListIsAddedAsItIs)
{
    const Handle<CharacterSetList> list = listOf({{L"x", definitionOf(L"x", {kUnknown})}});
    list->setMinimized(true);
    m_hResolver->addCharacterSetList(L"mine", list);
    EXPECT_TRUE(m_hResolver->getCharacterSetList(L"mine") == Handle<const CharacterSetList>(list));
}

TEST_F(Resolver, AListWithoutEntriesIsNotAdded)
{
    m_hResolver->addCharacterSetList(L"x", listOf({}));
    m_hResolver->addCharacterSetList(L"x", listOf({{L"x", definitionOf(L"x", {kUnknown})}}));
    EXPECT_TRUE(m_hResolver->getCharacterSetLists().empty());
}

TEST_F(Resolver, OfTwoListsOfOneNameTheFirstStaysWithoutAWord)
{
    const AssertionCapture capture;
    const LogCapture log;
    m_hResolver->addCharacterSetList(L"mine", listOf({{L"a", m_hA}}));
    m_hResolver->addCharacterSetList(L"MINE", listOf({{L"b", m_hB}}));
    EXPECT_EQ(String(L"a=A*"), listIn(*m_hResolver, L"mine"));
    EXPECT_TRUE(capture.texts().empty());
    EXPECT_TRUE(log.records().empty());
}

TEST_F(Resolver, AListThatIsNotThereIsABrokenInvariantAndANullHandle)
{
    const AssertionCapture capture;
    EXPECT_TRUE(m_hResolver->getCharacterSetList(L"x").isNull());
    EXPECT_EQ((Texts{"!(mmi == m_tMappingMap.end())"}), capture.texts());
}

TEST_F(Resolver, MinimizingCopiesAMinimizedDefinitionExactly)
{
    const Handle<CharacterSetDefinition> original = definitionOf(L"x", {kUnknown, L"utf-8", kUnknown});
    original->setMinimized(true);
    const Definition copy = m_hResolver->minimizeCharacterSetDefinition(*original);
    EXPECT_NE(original.get(), copy.get());
    EXPECT_EQ(outline(*original), outline(*copy));
    EXPECT_EQ(1U, copy->referenceCount());
}

TEST_F(Resolver, MinimizingKeepsTheAvailableNamesInOrder)
{
    const Handle<CharacterSetDefinition> original = definitionOf(L"x", {L"koi8-r", kUnknown, L"UTF8", L"koi8-r"});
    EXPECT_EQ(String(L"x -> koi8-r UTF8 koi8-r*"), outline(*m_hResolver->minimizeCharacterSetDefinition(*original)));
    EXPECT_FALSE(original->isMinimized());
    EXPECT_EQ(4U, original->numImplementations());
    EXPECT_EQ(String(L"y ->*"), outline(*m_hResolver->minimizeCharacterSetDefinition(*definitionOf(L"y", {kUnknown}))));
}

TEST_F(Resolver, MinimizingCopiesAMinimizedListExactly)
{
    const Handle<CharacterSetList> original = listOf({{L"x", definitionOf(L"x", {kUnknown})}});
    original->setMinimized(true);
    const Handle<const CharacterSetList> copy = m_hResolver->minimizeCharacterSetList(*original);
    EXPECT_NE(original.get(), copy.get());
    EXPECT_EQ(String(L"x=x*"), outline(*copy));
    EXPECT_TRUE(copy->definitions_begin()->second == original->definitions_begin()->second);
}

TEST_F(Resolver, MinimizingAListKeepsItsLabelsAndOrder)
{
    const Handle<CharacterSetList> original =
        listOf({{L"1", m_hB}, {L"2", definitionOf(L"x", {kUnknown})}, {L"3", m_hA}, {L"1", m_hB}});
    EXPECT_EQ(String(L"1=B 3=A 1=B*"), outline(*m_hResolver->minimizeCharacterSetList(*original)));
    EXPECT_EQ(4U, original->numDefinitions());
    EXPECT_FALSE(original->isMinimized());
}

TEST_F(Resolver, MinimizingAListWithANullDefinitionThrows)
{
    const AssertionCapture capture;
    const Handle<CharacterSetList> list = listOf({{L"x", {}}});
    EXPECT_EQ(kNullDefinition, invalidHandleOf([&] { m_hResolver->minimizeCharacterSetList(*list); }));
}

TEST_F(Resolver, ThePreferredOrderDecidesAndTheSupportedListGivesTheLabel)
{
    const auto supported = listOf({{L"a1", m_hA}, {L"b1", m_hB}});
    const auto preferred = listOf({{L"b2", m_hB}, {L"A", m_hA}});
    const Handle<CharacterSet> set = m_hResolver->getPreferredCharacterSet(*supported, *preferred);
    EXPECT_EQ(String(L"b1 by koi8-r"), outline(*set));
    EXPECT_EQ(1U, set->referenceCount());
}

TEST_F(Resolver, TheDefinitionIsTheSupportedListsToo)
{
    const auto supported = listOf({{L"s", minimizedOf(L"a", L"windows-1252")}});
    const auto preferred = listOf({{L"p", m_hA}});
    EXPECT_EQ(String(L"s by windows-1252"), outline(*m_hResolver->getPreferredCharacterSet(*supported, *preferred)));
}

TEST_F(Resolver, OfTwoSupportedEntriesOfADefinitionTheFirstIsTaken)
{
    const auto supported = listOf({{L"c", m_hC}, {L"one", m_hB}, {L"two", m_hB}});
    EXPECT_EQ(String(L"one by koi8-r"),
              outline(*m_hResolver->getPreferredCharacterSet(*supported, *listOf({{L"two", m_hB}}))));
}

TEST_F(Resolver, WithoutACommonDefinitionTheSupportedListsFirstEntryIsTaken)
{
    const auto supported = listOf({{L"a1", m_hA}, {L"b1", m_hB}});
    EXPECT_EQ(String(L"a1 by utf-8"),
              outline(*m_hResolver->getPreferredCharacterSet(*supported, *listOf({{L"c", m_hC}}))));
    EXPECT_EQ(String(L"a1 by utf-8"), outline(*m_hResolver->getPreferredCharacterSet(*supported, *listOf({}))));
}

TEST_F(Resolver, AnEmptySupportedListIsABrokenInvariantAndANullHandle)
{
    const AssertionCapture capture;
    EXPECT_TRUE(m_hResolver->getPreferredCharacterSet(*listOf({}), *listOf({{L"a", m_hA}})).isNull());
    EXPECT_TRUE(m_hResolver->getPreferredCharacterSet(*listOf({}), *listOf({})).isNull());
    EXPECT_EQ((Texts{"sdfi != rSupportedList.definitions_end()", "sdfi != rSupportedList.definitions_end()"}),
              capture.texts());
}

TEST_F(Resolver, ChoosingPassesTheExceptionOfANullDefinition)
{
    const AssertionCapture capture;
    const auto null = listOf({{L"x", {}}});
    const auto full = listOf({{L"a", m_hA}});
    EXPECT_EQ(kNullDefinition, invalidHandleOf([&] { m_hResolver->getPreferredCharacterSet(*null, *full); }));
    EXPECT_EQ(kNullDefinition, invalidHandleOf([&] { m_hResolver->getPreferredCharacterSet(*full, *null); }));
    EXPECT_EQ(kNullDefinition, invalidHandleOf([&] { m_hResolver->getPreferredCharacterSet(*null, *listOf({})); }));
}

TEST_F(Resolver, AnEncodingLabelIsFoundInAnyCaseAndKeptAsTheCallerSpellsIt)
{
    const auto list = listOf({{L"Utf-8", m_hA}, {L"UTF-8", m_hB}});
    EXPECT_EQ(String(L"uTF-8 by utf-8"), outline(*m_hResolver->getCharacterSetByEncodingLabel(*list, L"uTF-8")));
}

TEST_F(Resolver, AnUnknownEncodingLabelIsAnInvalidHandleOfTheDefinition)
{
    EXPECT_EQ(kNullDefinition, invalidHandleOf([&] {
                  m_hResolver->getCharacterSetByEncodingLabel(*listOf({{L"a", m_hA}}), L"A1");
              }));
}

TEST_F(Resolver, AMinimizedDefinitionsFirstImplementationIsTaken)
{
    const Handle<CharacterSetDefinition> definition = definitionOf(L"x", {L"koi8-r", L"utf-8"});
    definition->setMinimized(true);
    EXPECT_EQ(String(L"l by koi8-r"), outline(*m_hResolver->createCharacterSet(L"l", *definition)));
}

TEST_F(Resolver, AnotherDefinitionsFirstAvailableImplementationIsTaken)
{
    const Handle<CharacterSetDefinition> definition = definitionOf(L"x", {kUnknown, L"", L"utf-8", L"koi8-r"});
    EXPECT_EQ(String(L"l by utf-8"), outline(*m_hResolver->createCharacterSet(L"l", *definition)));
}

TEST_F(Resolver, ADefinitionWithoutAnAvailableImplementationIsABrokenInvariantAndANullHandle)
{
    const AssertionCapture capture;
    EXPECT_TRUE(m_hResolver->createCharacterSet(L"l", *definitionOf(L"x", {kUnknown})).isNull());
    EXPECT_TRUE(m_hResolver->createCharacterSet(L"l", *definitionOf(L"x", {})).isNull());
    const Handle<CharacterSetDefinition> empty = definitionOf(L"x", {});
    empty->setMinimized(true);
    EXPECT_TRUE(m_hResolver->createCharacterSet(L"l", *empty).isNull());
    EXPECT_EQ((Texts{"false", "false", "false"}), capture.texts());
}

TEST_F(Resolver, AFalselyMinimizedDefinitionPassesTheTranscodersException)
{
    EXPECT_THROW(m_hResolver->createCharacterSet(L"l", *minimizedOf(L"x", kUnknown)), vel::Exception);
}

TEST_F(Resolver, HandlersThatThrowAreThrownThrough)
{
    const AssertionCapture capture(AssertionCapture::kThrow);
    EXPECT_THROW(m_hResolver->getCharacterSetList(L"x"), ThrownByAssertion);
    EXPECT_THROW(m_hResolver->createCharacterSet(L"l", *definitionOf(L"x", {})), ThrownByAssertion);
    EXPECT_THROW(m_hResolver->getPreferredCharacterSet(*listOf({}), *listOf({})), ThrownByAssertion);
}

TEST(CharacterSet, HasItsLabelAndItsTranscoderAndIsValid)
{
    const Handle<CharacterSet> set = makeHandle<CharacterSet>(L"Latin", L"koi8-r");
    EXPECT_TRUE(set->isValid());
    EXPECT_EQ(String(L"Latin"), set->getLabel());
    vel::NarrowString bytes;
    EXPECT_FALSE(set->getTranscoding().encode(String(L"\u0430"), bytes).has_value());
    EXPECT_EQ(vel::NarrowString("\xC1"), bytes);
}

TEST(CharacterSet, AnUnknownImplementationPassesTheTranscodersException)
{
    EXPECT_THROW(makeHandle<CharacterSet>(L"x", kUnknown), vel::Exception);
}

String debugTextOf(const String& label, const String& before = L"")
{
    vel::StringBuffer<16> buffer;
    buffer.append(before.view());
    makeHandle<CharacterSet>(label, L"utf-8")->xmlDebugInformation(buffer);
    return buffer.toString();
}

TEST(CharacterSet, DebugTextIsAnEmptyElementWithTheLabel)
{
    EXPECT_EQ(String(L"<Charset label=\"utf-8\"></Charset>"), debugTextOf(L"utf-8"));
    EXPECT_EQ(String(L"<Charset label=\"\"></Charset>"), debugTextOf(L""));
}

TEST(CharacterSet, DebugTextShowsTheLabelUnescaped)
{
    EXPECT_EQ(String(L"<Charset label=\"a\"b&c<\"></Charset>"), debugTextOf(L"a\"b&c<"));
}

TEST(CharacterSet, DebugTextIsAddedBehindWhatTheBufferHeld)
{
    EXPECT_EQ(String(L"before<Charset label=\"x\"></Charset>"), debugTextOf(L"x", L"before"));
}

}  // namespace
