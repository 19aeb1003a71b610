#include <type_traits>

#include "assertioncapture.h"
#include "documentsupport.h"
#include "vel/core/handle.h"

namespace {

using vel::XmlDocument;
using vel::XmlElement;

static_assert(!std::is_copy_constructible_v<XmlDocument> && !std::is_copy_constructible_v<XmlElement>);
static_assert(std::is_nothrow_move_constructible_v<XmlDocument> && std::is_nothrow_move_assignable_v<XmlDocument>);

std::wstring viewOf(const XmlElement& element)
{
    return std::wstring(element.innerTextView());
}

TEST(XmlDocument, EmptyOneHasNoRoot)
{
    const testsupport::AssertionCapture capture;
    const XmlDocument document;
    EXPECT_FALSE(document.hasRoot());
    EXPECT_EQ(document.memoryUsed(), 0U);
    EXPECT_THROW(document.root(), vel::InvalidHandleException);
    EXPECT_EQ(capture.texts(), std::vector<std::string>{"m_p != 0"});
}

TEST(XmlDocument, KeepsItsElementsWhenItMoves)
{
    XmlDocument first = XmlDocument::parse("<a>1<b/></a>");
    const XmlElement* const root = &first.root();
    XmlDocument second = std::move(first);
    EXPECT_FALSE(first.hasRoot());  // NOLINT(bugprone-use-after-move): the state after it is promised
    EXPECT_EQ(first.memoryUsed(), 0U);
    EXPECT_EQ(&second.root(), root);
    first = XmlDocument::parse("<z/>");
    first = std::move(second);
    EXPECT_FALSE(second.hasRoot());  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(&first.root(), root);
    EXPECT_EQ(first.root().innerText(), L"1");
}

TEST(XmlDocument, NeedsNoBytesAfterParsing)
{
    std::string bytes = "<a name='value'>text<b/></a>";
    const XmlDocument document = XmlDocument::parse(bytes);
    bytes.assign(bytes.size(), 'x');
    EXPECT_EQ(document.root().toXmlText(), L"<a name=\"value\">text<b/></a>");
}

TEST(XmlDocument, TellsTheMemoryOfItsTree)
{
    const XmlDocument small = XmlDocument::parse("<a/>");
    const XmlDocument large = XmlDocument::parse("<a>" + xmltest::repeat("<b>x</b>", 10000) + "</a>");
    // At least a pointer to the next element each, and a wide character of text.
    EXPECT_GT(large.memoryUsed(), 10000 * (sizeof(void*) + sizeof(wchar_t)));
    EXPECT_GT(small.memoryUsed(), 0U);
    EXPECT_LT(small.memoryUsed(), 4096U);
}

TEST(XmlElement, NamesAreSplitAtTheLastColon)
{
    const XmlDocument document = XmlDocument::parse("<vell:property><a:b:c/><plain/><x:/></vell:property>");
    const XmlElement& root = document.root();
    EXPECT_EQ(root.name(), L"property");
    EXPECT_EQ(root.qualifiedName(), L"vell:property");
    std::vector<std::wstring> names;
    for (const XmlElement& child : vel::children(root)) {
        names.emplace_back(child.name());
        names.emplace_back(child.qualifiedName());
    }
    EXPECT_EQ(names, (std::vector<std::wstring>{L"c", L"a:b:c", L"plain", L"plain", L"", L"x:"}));
}

TEST(XmlElement, AttributesAreFoundByName)
{
    const XmlDocument document = XmlDocument::parse("<a one='1' two='&lt;2&#x20AC;' empty='' x:three='3'/>");
    const XmlElement& root = document.root();
    EXPECT_EQ(root.attribute(L"one"), L"1");
    EXPECT_EQ(root.attribute(L"two"), L"<2\u20AC");
    EXPECT_EQ(root.attribute(L"empty"), L"");
    EXPECT_TRUE(root.hasAttribute(L"empty"));
    EXPECT_FALSE(root.hasAttribute(L"x:three"));
    EXPECT_FALSE(root.hasAttribute(L"One"));
    EXPECT_FALSE(root.hasAttribute(L"on"));
    EXPECT_FALSE(root.hasAttribute(L""));
    EXPECT_EQ(root.attribute(L"three"), L"");
}

TEST(XmlElement, OfAttributesWithOneLocalNameTheUnprefixedCountsWhereverItStands)
{
    for (const char* bytes : {"<a x:n='1' n='2' y:n='3'/>", "<a n='2' x:n='1'/>", "<a x:n='1' y:n='3' n='2'/>"}) {
        const XmlDocument document = XmlDocument::parse(bytes);
        EXPECT_EQ(document.root().attribute(L"n"), L"2") << bytes;
    }
}

TEST(XmlElement, APrefixedAttributeAloneIsAbsent)
{
    for (const char* bytes : {"<a x:n='1'/>", "<a x:n='1' y:n='3'/>", "<a x:y:n='1'/>", "<a :n='1'/>"}) {
        const XmlDocument document = XmlDocument::parse(bytes);
        EXPECT_FALSE(document.root().hasAttribute(L"n")) << bytes;
        EXPECT_EQ(document.root().attribute(L"n"), L"") << bytes;
        EXPECT_FALSE(document.root().hasAttribute(L"x:n")) << bytes;
    }
}

TEST(XmlElement, PrefixedAttributesAreNamedForThoseWhoWarn)
{
    const XmlDocument document = XmlDocument::parse("<a b='1' x:b='2' y:b='3' xmlns:c='4' d='5'/>");
    EXPECT_EQ(document.root().prefixedAttribute(L"b"), L"x:b");
    for (const wchar_t* name : {L"c", L"d", L"e", L"x:b", L""}) {
        EXPECT_EQ(document.root().prefixedAttribute(name), L"");
    }
}

TEST(XmlElement, NamespaceDeclarationsAreNoAttributes)
{
    const XmlDocument document = XmlDocument::parse("<a xmlns='urn:1' xmlns:b='urn:2' xmlnsx='3' b:xmlns='4'/>");
    const XmlElement& root = document.root();
    EXPECT_FALSE(root.hasAttribute(L"b"));
    EXPECT_EQ(root.attribute(L"xmlnsx"), L"3");
    EXPECT_FALSE(root.hasAttribute(L"xmlns"));
    EXPECT_EQ(root.prefixedAttribute(L"xmlns"), L"b:xmlns");
    EXPECT_FALSE(XmlDocument::parse("<a xmlns='urn:1'/>").root().hasAttribute(L"xmlns"));
}

TEST(XmlElement, AttributeWhiteSpaceIsNormalisedAsXmlHasIt)
{
    const XmlDocument document = XmlDocument::parse("<a t='1\t2\n3\r\n4' r='1&#9;2&#10;3&#13;4' s='  x  '/>");
    EXPECT_EQ(document.root().attribute(L"t"), L"1 2 3 4");
    EXPECT_EQ(document.root().attribute(L"r"), L"1\t2\n3\r4");
    EXPECT_EQ(document.root().attribute(L"s"), L"  x  ");
}

TEST(XmlElement, InnerTextJoinsAllTextBelowIt)
{
    const XmlDocument document =
        XmlDocument::parse("<a> 1<b>2<c/>3<c>4</c></b>\n\t<b/>5<!-- no --><?no no?>6<![CDATA[<7>]]> </a>");
    const XmlElement& root = document.root();
    EXPECT_EQ(root.innerText(), L" 1234\n\t56<7> ");
    EXPECT_EQ(viewOf(root), L" 1234\n\t56<7> ");
    const XmlElement& b = *root.firstChild();
    EXPECT_EQ(b.innerText(), L"234");
    EXPECT_EQ(viewOf(*b.firstChild()), L"");
    EXPECT_EQ(viewOf(*b.firstChild()->nextSibling()), L"4");
    EXPECT_EQ(viewOf(*b.nextSibling()), L"");
}

TEST(XmlElement, TextBetweenChildrenLiesBetweenTheirViews)
{
    const XmlDocument document = XmlDocument::parse("<a>1<b>22</b>333<b>4</b>5</a>");
    const std::wstring_view whole = document.root().innerTextView();
    const std::wstring_view first = document.root().firstChild()->innerTextView();
    const std::wstring_view second = document.root().firstChild()->nextSibling()->innerTextView();
    EXPECT_EQ(first.data() - whole.data(), 1);
    EXPECT_EQ(second.data() - whole.data(), 6);
}

TEST(XmlElement, InnerTextIsAppendedToABuffer)
{
    const XmlDocument document = XmlDocument::parse("<a>text<b>!</b></a>");
    vel::StringBuffer<4> buffer;
    buffer.append(L"x");
    document.root().appendInnerText(buffer);
    EXPECT_EQ(buffer.view(), L"xtext!");
}

TEST(XmlElement, LineEndsInTextBecomeLineFeeds)
{
    const XmlDocument document = XmlDocument::parse("<a>1\r\n2\r3\n4&#13;</a>");
    EXPECT_EQ(document.root().innerText(), L"1\n2\n3\n4\r");
}

TEST(XmlElement, TextOfEveryLengthIsWidened)
{
    // Lengths around the widths of the blocks, ASCII and with one other character at every position.
    for (std::size_t length = 0; length <= 40; ++length) {
        const std::string ascii = xmltest::repeat("0123456789abcdef", 3).substr(0, length);
        const XmlDocument plain = XmlDocument::parse("<a v='" + ascii + "'>" + ascii + "</a>");
        const std::wstring expected(ascii.begin(), ascii.end());
        EXPECT_EQ(plain.root().innerText().standard(), expected);
        EXPECT_EQ(plain.root().attribute(L"v"), expected);
        for (std::size_t i = 0; i < length; ++i) {
            const std::string mixed = ascii.substr(0, i) + "\xF0\x9F\x98\x80" + ascii.substr(i);
            const XmlDocument document = XmlDocument::parse("<a v='" + mixed + "'>" + mixed + "</a>");
            std::wstring wide = expected;
            wide.insert(i, 1, L'\U0001F600');
            EXPECT_EQ(document.root().innerText().standard(), wide);
            EXPECT_EQ(document.root().attribute(L"v"), wide);
        }
    }
}

TEST(XmlElement, ManyNamesStayApart)
{
    // Names that differ in one place only, more of them than a table starts with.
    std::string bytes = "<r>";
    for (int i = 0; i < 5000; ++i) {
        bytes += "<n" + std::to_string(i) + "long" + std::to_string(i % 7) + " a" + std::to_string(i) + "='v'/>";
    }
    const XmlDocument document = XmlDocument::parse(bytes + bytes.substr(3) + "</r>");
    int i = 0;
    for (const XmlElement& child : vel::children(document.root())) {
        const int number = i++ % 5000;
        ASSERT_EQ(child.name(), L"n" + std::to_wstring(number) + L"long" + std::to_wstring(number % 7));
        ASSERT_EQ(child.attribute(L"a" + std::to_wstring(number)), L"v");
    }
    EXPECT_EQ(i, 10000);
}

TEST(XmlElement, UndeclaredPrefixesAreAccepted)
{
    const XmlDocument document = XmlDocument::parse("<p:a xsi:type='decimal' type='number'/>");
    EXPECT_EQ(document.root().name(), L"a");
    EXPECT_EQ(document.root().attribute(L"type"), L"number");
}

}  // namespace
