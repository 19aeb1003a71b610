#include "documentsupport.h"
#include "vel/xml/xmlpath.h"

namespace {

using vel::XmlDocument;
using vel::XmlElement;
using vel::XmlPath;

constexpr const char* kBytes =
    "<root id='0'>"
    "<list name='one'><item id='1'/><other><item id='no'/></other><v:item v:id='9' id='2'/></list>"
    "<item id='3'><item id='4'/></item>"
    "<list name='two' kind='x'><item id='5' kind='x'/></list>"
    "<list/>"
    "<List name='one'><item id='6'/></List>"
    "<list name='one' kind='x'><item id='7' kind=''/><item id='8' kind='x'/></list>"
    "</root>";

/// The "id" attributes of what is selected, in order.
std::wstring idsOf(const wchar_t* path, std::size_t limit = XmlElement::kNoLimit)
{
    const XmlDocument document = XmlDocument::parse(kBytes);
    std::wstring ids;
    for (const vel::NonOwningPtr<const XmlElement>& each : document.root().select(XmlPath(path), limit)) {
        ids.append(each->attribute(L"id"));
        ids.push_back(L';');
    }
    return ids;
}

struct Row
{
    const wchar_t* m_pPath;
    const wchar_t* m_pIds;
};

class Select : public testing::TestWithParam<Row>
{};

TEST_P(Select, FindsInDocumentOrder)
{
    EXPECT_EQ(idsOf(GetParam().m_pPath), GetParam().m_pIds);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Select,
    testing::Values(Row{L"item", L"3;"}, Row{L"root", L""}, Row{L"item/item", L"4;"}, Row{L"item/item/item", L""},
                    Row{L"list/item", L"1;2;5;7;8;"}, Row{L"list", L";;;;"}, Row{L"List/item", L"6;"},
                    Row{L"list/other/item", L"no;"}, Row{L"list[@name='one']/item", L"1;2;7;8;"},
                    Row{L"list[@name='ONE']/item", L""}, Row{L"list[@name='on']/item", L""},
                    Row{L"list[@name='one'][@kind='x']/item", L"7;8;"},
                    Row{L"list[@kind='x'][@name='one']/item", L"7;8;"},
                    Row{L"list[@name='one'][@name='two']/item", L""}, Row{L"list/item[@kind='x']", L"5;8;"},
                    Row{L"list[@kind='x']/item[@kind='x']", L"5;8;"}, Row{L"list/item[@kind='']", L"7;"},
                    Row{L"list/item[@id='2']", L"2;"}, Row{L"list/item[@id='9']", L""}, Row{L"list[@none='']", L""},
                    Row{L"none/item", L""}, Row{L"list[@name='two']/item[@id='5'][@kind='x']", L"5;"}));

TEST(Select, StopsAtTheLimit)
{
    EXPECT_EQ(idsOf(L"list/item", 0), L"");
    EXPECT_EQ(idsOf(L"list/item", 1), L"1;");
    EXPECT_EQ(idsOf(L"list/item", 3), L"1;2;5;");
    EXPECT_EQ(idsOf(L"list/item", 5), L"1;2;5;7;8;");
    EXPECT_EQ(idsOf(L"list/item", 6), L"1;2;5;7;8;");
}

TEST(Select, StaysBelowTheElement)
{
    const XmlDocument document = XmlDocument::parse("<r><a><b/></a><a><b id='2'/><b id='3'/></a><b/></r>");
    const XmlElement& second = *document.root().firstChild()->nextSibling();
    const auto found = second.select(XmlPath(L"b"));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].get(), second.firstChild());
    EXPECT_EQ(found[1]->attribute(L"id"), L"3");
    EXPECT_TRUE(found[0]->select(XmlPath(L"b")).empty());
}

TEST(Select, FindsNamesThatAlternate)
{
    const XmlDocument document = XmlDocument::parse("<r>" + xmltest::repeat("<a/><b/><p:a/>", 50) + "</r>");
    EXPECT_EQ(document.root().select(XmlPath(L"a")).size(), 100U);
    EXPECT_EQ(document.root().select(XmlPath(L"b")).size(), 50U);
}

TEST(Select, ADocumentsPathBeginsWithItsRoot)
{
    const XmlDocument document = XmlDocument::parse("<a><b i='1'/><c><b i='2'/></c><b i='3'/></a>");
    EXPECT_EQ(document.select(XmlPath(L"a")).size(), 1U);
    const auto found = document.select(XmlPath(L"a/b"));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0]->attribute(L"i"), L"1");
    EXPECT_EQ(found[1]->attribute(L"i"), L"3");
    EXPECT_TRUE(document.select(XmlPath(L"b")).empty());
    EXPECT_TRUE(XmlDocument().select(XmlPath(L"a")).empty());
}

}  // namespace
