#include <gtest/gtest.h>

#include "assertioncapture.h"
#include "charactersets.h"
#include "faileverywhere.h"

// Memory that runs out at every possible moment: nothing leaks, the resolver is as before, and the next attempt works.

namespace {

using namespace testsupport;
using vel::CharacterSet;
using vel::CharacterSetResolver;
using vel::Handle;
using vel::makeHandle;
using vel::String;

const std::string kMoreDefinitions =
    setElement("a definition with a name that is too long to stand inside a string", {"utf-8", "no-such-transcoder"}) +
    setElement("a", {"koi8-r"}) + setElement("e", {"koi8-r", ""}) + "<characterSet/>" + setElement("f", {"nothing"});
const std::string kMoreLists = listElement("a list with a name that is too long to stand inside a string",
                                           entry("a", "label='a label that is long'") + including("old")) +
                               listElement("m", entry("nowhere") + including("nowhere") + entry("b")) +
                               "<characterSetList/>" + listElement("m", entry("a"));

class CharacterSetAllocations : public testing::Test
{
protected:
    void SetUp() override
    {
        m_hResolver = resolverWith(listElement("old", entry("b") + entry("c")));
        m_sDefinitions = m_tDefinitions.write(rooted(kMoreDefinitions));
        m_sLists = m_tLists.write(rooted(kMoreLists));
        // What is built once is built.
        const Handle<CharacterSetResolver> warm = resolverWith(kMoreLists);
        warm->loadCharacterSetDefinitions(m_sDefinitions);
        for (const wchar_t* each : {L"utf-8", L"koi8-r", L"iso-8859-1"}) {
            makeHandle<CharacterSet>(L"x", each);
        }
    }
    template <typename Work>
    void expectAllOrNothing(Work work)
    {
        const String before = outline(*m_hResolver);
        const std::ptrdiff_t blocks = outstandingBlocks();
        failEverywhere(work, [&] {
            EXPECT_EQ(blocks, outstandingBlocks());
            EXPECT_EQ(before, outline(*m_hResolver));
            EXPECT_EQ(nullptr, vel::ScopedLogSource::current());
            EXPECT_EQ(nullptr, vel::ScopedLogProperty::current());
        });
    }
    void expectLoadingIsAllOrNothing()
    {
        expectAllOrNothing([&] { m_hResolver->loadCharacterSetDefinitions(m_sDefinitions); });
        EXPECT_EQ(5U, m_hResolver->getCharacterSetDefinitions().size());
        expectAllOrNothing([&] { m_hResolver->loadCharacterSetLists(m_sLists); });
        EXPECT_EQ(3U, m_hResolver->getCharacterSetLists().size());
        EXPECT_EQ(String(L"b=b*"), listIn(*m_hResolver, L"m"));
    }

    Handle<CharacterSetResolver> m_hResolver;
    MemoryFile m_tDefinitions;
    MemoryFile m_tLists;
    String m_sDefinitions;
    String m_sLists;
};

TEST_F(CharacterSetAllocations, LoadingIsAllOrNothing)
{
    expectLoadingIsAllOrNothing();
}

/// Reads the record's text and forgets it: what a sink keeps would count as a leak.
class ForgettingSink final : public vel::LogSink
{
public:
    vel::LogSeverity leastSeverity() const noexcept override { return vel::kLogInformation; }
    void write(const vel::LogRecord& record) override { static_cast<void>(record.m_tMessage.toString()); }
};

TEST_F(CharacterSetAllocations, LoadingWithALogIsAllOrNothing)
{
    vel::Logger::setSink(makeHandle<ForgettingSink>());
    expectLoadingIsAllOrNothing();
    vel::Logger::setSink({});
}

TEST_F(CharacterSetAllocations, AddingAndMinimizingIsAllOrNothing)
{
    const auto definition = definitionOf(L"a label that is too long to stand inside", {L"koi8-r", kUnknown});
    const auto list = makeHandle<vel::CharacterSetList>();
    list->addDefinition(L"an encoding label that is long", definition);
    const String name = L"a list's name that is too long to stand inside";
    expectAllOrNothing([&] { m_hResolver->minimizeCharacterSetDefinition(*definition); });
    expectAllOrNothing([&] { m_hResolver->minimizeCharacterSetList(*list); });
    expectAllOrNothing([&] { m_hResolver->addCharacterSetDefinition(definition); });
    expectAllOrNothing([&] { m_hResolver->addCharacterSetList(name, list); });
    EXPECT_EQ(String(L"an encoding label that is long=a label that is too long to stand inside*"),
              listIn(*m_hResolver, name));
}

TEST_F(CharacterSetAllocations, ChoosingLeaksNothing)
{
    const auto list = m_hResolver->getCharacterSetList(L"old");
    expectAllOrNothing([&] { m_hResolver->getPreferredCharacterSet(*list, *list); });
    expectAllOrNothing([&] { m_hResolver->getCharacterSetByEncodingLabel(*list, L"B"); });
}

}  // namespace
