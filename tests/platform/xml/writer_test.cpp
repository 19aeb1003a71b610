#include "documentsupport.h"

namespace {

using vel::XmlDocument;
using vel::XmlElement;

struct Row
{
    const char* m_pBytes;
    const wchar_t* m_pWritten;
};

class Written : public testing::TestWithParam<Row>
{};

TEST_P(Written, IsTheSameTreeAgain)
{
    const XmlDocument document = XmlDocument::parse(GetParam().m_pBytes);
    const vel::String written = document.root().toXmlText();
    EXPECT_EQ(written, GetParam().m_pWritten);
    const XmlDocument again = XmlDocument::parse(vel::toUtf8Lossy(written.view()));
    EXPECT_EQ(xmltest::outline(again.root()), xmltest::outline(document.root()));
}

INSTANTIATE_TEST_SUITE_P(Rows, Written,
                         testing::Values(Row{"<a/>", L"<a/>"}, Row{"<a></a>", L"<a/>"}, Row{"<a> </a>", L"<a> </a>"},
                                         Row{"<a x='1'>5 &lt; 6<b/></a>", L"<a x=\"1\">5 &lt; 6<b/></a>"},
                                         Row{"<a>1<b>2<c/>3</b><b/>4</a>", L"<a>1<b>2<c/>3</b><b/>4</a>"},
                                         Row{"<a><b><c>x</c></b></a>", L"<a><b><c>x</c></b></a>"},
                                         Row{"<a><b/>x</a>", L"<a><b/>x</a>"}, Row{"<a>x<b/></a>", L"<a>x<b/></a>"},
                                         Row{"<v:a xmlns:v='u' xmlns='w' v:b='1' b='2'/>",
                                             L"<v:a xmlns:v=\"u\" xmlns=\"w\" v:b=\"1\" b=\"2\"/>"},
                                         Row{"<a b='\"&apos;&amp;&lt;&gt;'>\"'&amp;&lt;&gt;]]&gt;</a>",
                                             L"<a b=\"&quot;'&amp;&lt;&gt;\">\"'&amp;&lt;&gt;]]&gt;</a>"},
                                         Row{"<a b='&#9;&#10;&#13; '>\t\n&#13; </a>",
                                             L"<a b=\"&#9;&#10;&#13; \">\t\n&#13; </a>"},
                                         Row{"<a b='\x7F'>\xC2\x80\xC2\x85\xC2\x9F\xC2\xA0</a>",
                                             L"<a b=\"&#127;\">&#128;&#133;&#159;\u00A0</a>"},
                                         Row{"<\xC3\xA9 \xC3\xA9='\xF0\x9F\x98\x80'>\xE2\x80\xA8</\xC3\xA9>",
                                             L"<\u00E9 \u00E9=\"\U0001F600\">\u2028</\u00E9>"},
                                         Row{"<a><![CDATA[<&>]]]]><!-- --></a>", L"<a>&lt;&amp;&gt;]]</a>"},
                                         Row{"\n<!-- x --><a\n>\r\n</a\n>\n", L"<a>\n</a>"}));

TEST(Written, CanStartAtAnyElement)
{
    const XmlDocument document = XmlDocument::parse("<a>1<b x='y'>2<c/>3</b>4<d/><e>5</e>6</a>");
    const XmlElement& b = *document.root().firstChild();
    EXPECT_EQ(b.toXmlText(), L"<b x=\"y\">2<c/>3</b>");
    EXPECT_EQ(b.firstChild()->toXmlText(), L"<c/>");
    EXPECT_EQ(b.nextSibling()->toXmlText(), L"<d/>");
    EXPECT_EQ(b.nextSibling()->nextSibling()->toXmlText(), L"<e>5</e>");
}

TEST(Written, CutAtAnyLengthIsTheFrontOfTheWhole)
{
    const XmlDocument document =
        XmlDocument::parse("<p:a x='1&amp;2' y=''>t&lt;ext<b>&gt;<c/></b> <d e='&quot;'/>more</p:a>");
    const std::wstring whole = document.root().toXmlText().standard();
    for (std::size_t length = 0; length <= whole.size() + 2; ++length) {
        EXPECT_EQ(document.root().toXmlText(length).standard(), whole.substr(0, length)) << length;
    }
}

TEST(Written, OfALargeElementOnlyWhatIsWantedIsMade)
{
    const std::string megabyte(1 << 20, 'm');
    const XmlDocument document = XmlDocument::parse("<" + megabyte + " " + megabyte + "='" + megabyte + "'>" +
                                                    megabyte + "<b/></" + megabyte + ">");
    const vel::String written = document.root().toXmlText(10);
    EXPECT_EQ(written, L"<mmmmmmmmm");
    // Names, values and text are cut before they are copied.
    EXPECT_LT(written.standard().capacity(), std::size_t{1000});
}

TEST(Written, EveryCharacterOfXmlSurvives)
{
    // Every character that XML 1.0 allows, in text and in an attribute's value.
    std::string references;
    std::wstring all;
    const auto add = [&](unsigned first, unsigned last) {
        for (unsigned value = first; value <= last; ++value) {
            references += "&#" + std::to_string(value) + ";";
            all.push_back(static_cast<wchar_t>(value));
        }
    };
    add(0x9, 0xA);
    add(0xD, 0xD);
    add(0x20, 0xD7FF);
    add(0xE000, 0xFFFD);
    add(0x10000, 0x101FF);
    add(0x10FF00, 0x10FFFF);
    const XmlDocument document = XmlDocument::parse("<a b='" + references + "'>" + references + "</a>");
    ASSERT_TRUE(document.root().innerText().standard() == all);
    const XmlDocument again = XmlDocument::parse(vel::toUtf8Lossy(document.root().toXmlText().view()));
    EXPECT_TRUE(again.root().innerText().standard() == all);
    EXPECT_TRUE(again.root().attribute(L"b") == all);
}

}  // namespace
