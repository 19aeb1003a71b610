#include "messagetext.h"

#include <gtest/gtest.h>

#include <string>

#include "printers.h"
#include "vel/xml/xmldocument.h"

namespace {

using vel::XmlDocument;
using vel::messages_details::messageText;
using vel::messages_details::referencedKey;

XmlDocument messageOf(const std::string& content)
{
    return XmlDocument::parse("<message key='k' xmlns:velm='urn:m' xmlns:x='urn:x'>" + content + "</message>");
}

struct Row
{
    const char* m_pContent;
    const wchar_t* m_pText;
};

const Row kRows[] = {
    {"", L""},
    {"plain", L"plain"},
    {" white\n space ", L" white\n space "},
    {"Total: %1", L"Total: %1"},
    {"5 &lt; 6, 100 % sure", L"5 < 6, 100 % sure"},
    {"5 &lt; 6 &amp;&amp; \"x\" &gt; 'y'<b/>", L"5 < 6 && \"x\" > 'y'"},
    {"&#x20AC;&#13;&#9;|<b/>", L"\u20AC\r\t|"},
    {"&amp;lt;<b/>", L"&lt;"},
    {"<![CDATA[<b>&amp;]]><b/>", L"<b>&amp;"},
    {"a<!-- <velm:param insert='1'/> -->b", L"ab"},
    {"<velm:param insert='1'/>", L"<velm:param insert=\"1\"/>"},
    {"<velm:param insert='1'/> of <b>many</b>", L"<velm:param insert=\"1\"/> of many"},
    {"a <x:param insert='2'></x:param> b", L"a <velm:param insert=\"2\"/> b"},
    {"a <param insert='0034'/>", L"a <velm:param insert=\"0034\"/>"},
    {"<b>in <velm:param insert='1'/></b> and <i><u/><velm:param insert='2'/></i>!",
     L"in <velm:param insert=\"1\"/> and <velm:param insert=\"2\"/>!"},
    {"<b a='x>y' c='&lt;velm:param insert=&quot;9&quot;/>'/><velm:param insert='1'/>", L"<velm:param insert=\"1\"/>"},
    {"<velm:param insert='1' more='>'/>z", L"<velm:param insert=\"1\"/>z"},
    {"<velm:param insert='12345'/>a<velm:param insert=''/>b<velm:param/>c<velm:param insert='x'/>", L"abc"},
    {"<velm:param insert='-1'/><velm:param insert=' 1'/>d", L"d"},
    {"&lt;velm:param insert=\"1\"/>", L"<velm:param insert=\"1\"/>"},  // spelled out: the same as the element
    {"\xE6\x9D\xB1<velm:param insert='1'/>\xF0\x9F\x98\x80", L"\u6771<velm:param insert=\"1\"/>\U0001F600"},
    {"text <velm:ref key='other'/>", L"text "},
};

TEST(MessageText, CharacterDataAndInserts)
{
    for (const Row& row : kRows) {
        EXPECT_EQ(messageText(messageOf(row.m_pContent).root()), row.m_pText) << row.m_pContent;
    }
}

TEST(MessageText, DeepContentIsReadWithoutRecursion)
{
    std::string content;
    for (int i = 0; i < 250; ++i) {
        content.append("<b>");
    }
    content.append("<velm:param insert='1'/>");
    for (int i = 0; i < 250; ++i) {
        content.append("</b>");
    }
    EXPECT_EQ(messageText(messageOf(content).root()), L"<velm:param insert=\"1\"/>");
}

TEST(ReferencedKey, OneReferenceAndOtherwiseAtMostWhiteSpace)
{
    EXPECT_EQ(referencedKey(messageOf("<velm:ref key='other'/>").root()).value(), L"other");
    EXPECT_EQ(referencedKey(messageOf(" \n<x:ref key='a b'></x:ref>\t").root()).value(), L"a b");
    for (const char* content :
         {"", "other", "<velm:ref/>", "<velm:ref key=''/>", "a<velm:ref key='b'/>", "<velm:ref key='b'>a</velm:ref>",
          "<velm:ref key='a'/><velm:ref key='b'/>", "<velm:param key='a'/>", "<b><velm:ref key='a'/></b>"}) {
        EXPECT_FALSE(referencedKey(messageOf(content).root()).has_value()) << content;
    }
}

}  // namespace
