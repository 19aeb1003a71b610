#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "charactersets.h"

// Files with mistakes of every kind, cut off, corrupted and huge: each loads or throws XmlException, and after an
// exception the resolver is as before.

namespace {

using namespace testsupport;
using vel::CharacterSetResolver;
using vel::Handle;
using vel::makeHandle;
using vel::String;

const std::string kDefinitions = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r><!-- x -->" +
                                 setElement("n\xC3\xA9w", {"koi8-r", "&#117;tf-8", ""}) + setElement("a", {"utf-8"}) +
                                 setElement("", {}) + "<characterSet/></r>";
const std::string kLists = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r><!-- x -->" +
                           listElement("new", entry("a", "label='\xC3\xA9&amp;&#9731;'") + including("old") +
                                                  entry("nowhere") + including("new")) +
                           listElement("new", entry("b")) + "<characterSetList/></r>";

class BadCharacterSetFiles : public testing::Test
{
protected:
    using Load = void (CharacterSetResolver::*)(const vel::FilePath&);

    void SetUp() override { m_hResolver = resolverWith(listElement("old", entry("b") + entry("c"))); }

    /// Whether the bytes load; any exception but XmlException is the test's failure.
    bool loads(Load load, const std::string& bytes)
    {
        const String before = outline(*m_hResolver);
        try {
            ((*m_hResolver).*load)(m_tFile.write(bytes));
            return true;
        } catch (const vel::XmlException& exception) {
            EXPECT_EQ(m_tFile.path(), exception.file());
            EXPECT_EQ(before, outline(*m_hResolver));
            return false;
        }
    }
    void expectCutOffsThrow(Load load, const std::string& bytes)
    {
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            ASSERT_FALSE(loads(load, bytes.substr(0, length))) << length;
            ASSERT_FALSE(HasFailure()) << length;
        }
        EXPECT_TRUE(loads(load, bytes));
    }
    void expectCorruptionsLoadOrThrow(Load load, const std::string& bytes)
    {
        const std::string telling("\0\t\n\"&'-/0<=>A[]a|\x7F\x80\xC3\xE2\xED\xF4\xFE\xFF", 25);
        std::size_t loaded = 0;
        std::size_t refused = 0;
        for (std::size_t place = 0; place < bytes.size(); ++place) {
            SetUp();
            for (const char each : telling) {
                std::string corrupted = bytes;
                corrupted[place] = each;
                ++(loads(load, corrupted) ? loaded : refused);
                ASSERT_FALSE(HasFailure()) << place;
            }
        }
        EXPECT_LT(100U, loaded);
        EXPECT_LT(100U, refused);
    }

    Handle<CharacterSetResolver> m_hResolver;
    MemoryFile m_tFile;
};

TEST_F(BadCharacterSetFiles, DefinitionsCutOffAtEveryByteThrow)
{
    expectCutOffsThrow(&CharacterSetResolver::loadCharacterSetDefinitions, kDefinitions);
    EXPECT_FALSE(m_hResolver->getCharacterSetDefinition(L"N\u00C9W").isNull());
}

TEST_F(BadCharacterSetFiles, ListsCutOffAtEveryByteThrow)
{
    expectCutOffsThrow(&CharacterSetResolver::loadCharacterSetLists, kLists);
    EXPECT_EQ(String(L"\u00E9&\u2603=a b=b c=c*"), listIn(*m_hResolver, L"new"));
}

TEST_F(BadCharacterSetFiles, DefinitionsWithAnyByteCorruptedLoadOrThrow)
{
    expectCorruptionsLoadOrThrow(&CharacterSetResolver::loadCharacterSetDefinitions, kDefinitions);
}

TEST_F(BadCharacterSetFiles, ListsWithAnyByteCorruptedLoadOrThrow)
{
    expectCorruptionsLoadOrThrow(&CharacterSetResolver::loadCharacterSetLists, kLists);
}

TEST_F(BadCharacterSetFiles, AMegabyteInAnyTextIsTakenAsItIs)
{
    const std::string megabyte(1 << 20, 'm');
    const String wide(std::wstring(1 << 20, L'm'));
    loadDefinitions(*m_hResolver, setElement(megabyte, {megabyte, "utf-8"}));
    EXPECT_EQ(1U, m_hResolver->getCharacterSetDefinition(wide)->numImplementations());
    loadLists(*m_hResolver, listElement(megabyte, entry(megabyte, "label=\"" + megabyte + "\"")));
    EXPECT_EQ(wide, m_hResolver->getCharacterSetList(wide)->definitions_begin()->first);
}

TEST_F(BadCharacterSetFiles, AHundredThousandDefinitionsAreAllFoundAndListed)
{
    constexpr std::size_t kCount = 100000;
    std::string definitions;
    std::string entries;
    for (std::size_t i = 0; i < kCount; ++i) {
        definitions += setElement("d" + std::to_string(i), {"utf-8"});
        entries += entry("D" + std::to_string(i));
    }
    loadDefinitions(*m_hResolver, definitions);
    loadLists(*m_hResolver, listElement("all", entries));
    ASSERT_EQ(kCount + 3, m_hResolver->getCharacterSetDefinitions().size());
    const auto list = m_hResolver->getCharacterSetList(L"all");
    ASSERT_EQ(kCount, list->numDefinitions());
    EXPECT_EQ(String(L"D99999"), std::prev(list->definitions_end())->first);
    EXPECT_EQ(String(L"d99999"), std::prev(list->definitions_end())->second->getDefinitionLabel());
}

TEST_F(BadCharacterSetFiles, AHundredThousandImplementations)
{
    std::string implementations;
    for (int i = 0; i < 100000; ++i) {
        implementations += "<impl>utf-8</impl>";
    }
    loadDefinitions(*m_hResolver, "<characterSet name='many'>" + implementations + "</characterSet>");
    EXPECT_EQ(100000U, m_hResolver->getCharacterSetDefinition(L"many")->numImplementations());
}

TEST_F(BadCharacterSetFiles, TenThousandListsThatIncludeOneAnother)
{
    std::string lists = listElement("l0", entry("a"));
    for (int i = 1; i < 10000; ++i) {
        lists += listElement("l" + std::to_string(i), including("l" + std::to_string(i - 1)));
    }
    loadLists(*m_hResolver, lists);
    EXPECT_EQ(String(L"a=a*"), listIn(*m_hResolver, L"l9999"));
}

std::string doublingLists(int count)
{
    std::string lists = listElement("l0", entry("a"));
    for (int i = 1; i <= count; ++i) {
        const std::string before = including("l" + std::to_string(i - 1));
        lists += listElement("l" + std::to_string(i), before + before);
    }
    return lists;
}

TEST_F(BadCharacterSetFiles, ListsThatDoubleAreTakenUpToAMillionEntriesInAll)
{
    // l0 to l18 have 1, 2, 4, ... entries: 524,287 in all; l19 would make them 1,048,575.
    loadLists(*m_hResolver, doublingLists(18));
    EXPECT_EQ(1U << 18, m_hResolver->getCharacterSetList(L"l18")->numDefinitions());
}

/// The warnings of a load.
std::vector<String> warningsOf(CharacterSetResolver& resolver, const std::string& lists)
{
    const LogCapture log(vel::kLogWarning);
    loadLists(resolver, lists);
    std::vector<String> texts;
    for (const StoredRecord& each : log.records()) {
        EXPECT_EQ(vel::kLogWarning, each.m_eSeverity);
        texts.push_back(each.text());
    }
    return texts;
}

TEST_F(BadCharacterSetFiles, AListThatWouldMakeThemMoreThanAMillionEntriesIsSkippedAndTheOthersStay)
{
    const std::vector<String> warnings =
        warningsOf(*m_hResolver, doublingLists(19) + listElement("behind", including("l3")));
    EXPECT_EQ(
        (std::vector<String>{L"More than 1,000,000 entries in the character set lists of a file, list skipped: l19"}),
        warnings);
    EXPECT_EQ(0U, m_hResolver->getCharacterSetLists().count(L"l19"));
    EXPECT_EQ(1U << 18, m_hResolver->getCharacterSetList(L"l18")->numDefinitions());
    EXPECT_EQ(8U, m_hResolver->getCharacterSetList(L"behind")->numDefinitions());
}

TEST_F(BadCharacterSetFiles, ListsThatDoubleWithoutEndEndWithTheLastThatHasRoom)
{
    const std::size_t before = m_hResolver->getCharacterSetLists().size();
    // l20 to l60 include a list that is not there, twice each.
    EXPECT_EQ(1U + 41U * 2U, warningsOf(*m_hResolver, doublingLists(60)).size());
    EXPECT_EQ(before + 19U, m_hResolver->getCharacterSetLists().size());
}

TEST_F(BadCharacterSetFiles, OneMillionEntriesAreTakenOneMoreIsNot)
{
    std::string thousand;
    for (int i = 0; i < 1000; ++i) {
        thousand += entry("a");
    }
    std::string many;
    for (int i = 0; i < 999; ++i) {
        many += including("thousand");
    }
    loadLists(*m_hResolver,
              listElement("thousand", thousand) + listElement("full", many) + listElement("x", entry("a")));
    EXPECT_EQ(999000U, m_hResolver->getCharacterSetList(L"full")->numDefinitions());
    EXPECT_EQ(0U, m_hResolver->getCharacterSetLists().count(L"x"));
}

TEST_F(BadCharacterSetFiles, AHundredCharactersOfALabelCountAsAnEntry)
{
    const std::size_t before = m_hResolver->getCharacterSetLists().size();
    // A label of a million characters counts 10,001: a list of it is included 98 times beside itself, not 99 times.
    const std::string long1 = listElement("long", entry("a", "label=\"" + std::string(1000000, 'm') + "\""));
    std::string lists = long1;
    for (int i = 0; i < 200; ++i) {
        lists += listElement("l" + std::to_string(i), including("long"));
    }
    loadLists(*m_hResolver, lists);
    EXPECT_EQ(before + 99U, m_hResolver->getCharacterSetLists().size());
}

/// A host's sink that fails at warnings.
class ThrowingSink final : public vel::LogSink
{
public:
    vel::LogSeverity leastSeverity() const noexcept override { return vel::kLogWarning; }
    void write(const vel::LogRecord&) override { throw std::runtime_error("the disk is full"); }
};

TEST_F(BadCharacterSetFiles, ASinkThatThrowsLeavesTheResolverAndTheScopes)
{
    const String before = outline(*m_hResolver);
    vel::Logger::setSink(makeHandle<ThrowingSink>());
    EXPECT_THROW(loadDefinitions(*m_hResolver, setElement("x", {"utf-8"}) + "<characterSet/>"), std::runtime_error);
    EXPECT_THROW(loadLists(*m_hResolver, listElement("x", entry("a")) + "<characterSetList/>"), std::runtime_error);
    vel::Logger::setSink({});
    EXPECT_EQ(before, outline(*m_hResolver));
    EXPECT_EQ(nullptr, vel::ScopedLogSource::current());
    EXPECT_EQ(nullptr, vel::ScopedLogProperty::current());
}

}  // namespace
