#include "documentsupport.h"

namespace {

using vel::XmlDocument;
using vel::XmlException;
using xmltest::refusalOf;

struct Row
{
    const char* m_pBytes;
    std::uint32_t m_nLine;
    std::uint32_t m_nColumn;
    const char* m_pPartOfProblem;
};

class Malformed : public testing::TestWithParam<Row>
{};

TEST_P(Malformed, IsRefusedWithPlaceAndAdvice)
{
    const xmltest::Refusal refusal = refusalOf(GetParam().m_pBytes);
    EXPECT_EQ(refusal.m_nLine, GetParam().m_nLine);
    EXPECT_EQ(refusal.m_nColumn, GetParam().m_nColumn);
    EXPECT_NE(refusal.m_sProblem.find(GetParam().m_pPartOfProblem), std::string::npos) << refusal.m_sProblem;
}

INSTANTIATE_TEST_SUITE_P(Rows, Malformed,
                         testing::Values(Row{" ", 1, 2, "no root element"},                  //
                                         Row{"<!-- nothing -->", 1, 17, "no root element"},  //
                                         Row{"text", 1, 1, "before the root element"},       //
                                         Row{"<a>\n<b></a>", 2, 4, "not the end tag of <b>, which starts in line 2"},
                                         Row{"<a>\n<b>", 2, 4, "the file ends within <b>, which starts in line 2"},
                                         Row{"<a", 1, 1, "does not end"},                                   //
                                         Row{"<a>\n<b c='", 2, 1, "does not end"},                          //
                                         Row{"<a>\n<!-- x", 2, 1, "does not end"},                          //
                                         Row{"<a><![CDATA[x</a>", 1, 18, "within a CDATA section"},         //
                                         Row{"<a/><b/>", 1, 5, "one root element"},                         //
                                         Row{"<a/>x", 1, 5, "one root element"},                            //
                                         Row{"<a>\n&foo;</a>", 2, 1, "only the entities"},                  //
                                         Row{"<a>1 & 2</a>", 1, 7, "&amp;"},                                //
                                         Row{"<a>1 < 2</a>", 1, 7, "&lt;"},                                 //
                                         Row{"<a>&#0;</a>", 1, 4, "reference"},                             //
                                         Row{"<a>&#xD800;</a>", 1, 4, "reference"},                         //
                                         Row{"<a>&#x110000;</a>", 1, 4, "reference"},                       //
                                         Row{"<a b='1' b='2'/>", 1, 10, "twice"},                           //
                                         Row{" <?xml version='1.0'?><a/>", 1, 2, "very start"},             //
                                         Row{"<?xml?><a/>", 1, 6, "declaration is not well-formed"},        //
                                         Row{"<a b=c/>", 1, 6, "not well-formed"},                          //
                                         Row{"<a>]]></a>", 1, 6, "not well-formed"},                        //
                                         Row{"\n<!DOCTYPE a><a/>", 2, 1, "DOCTYPE"},                        //
                                         Row{"<!DOCTYPE a SYSTEM 'x.dtd'><a/>", 1, 1, "DOCTYPE"},           //
                                         Row{"<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>", 1, 1, "DOCTYPE"},  //
                                         Row{"<a>\xC3\xA9&</a>", 1, 6, "not well-formed"}));

TEST(Malformed, MessageNamesFilePlaceAndProblem)
{
    try {
        XmlDocument::parse("<a>\n</b>", {}, L"100%% %1 \u00E9.xml");
        FAIL() << "loaded";
    } catch (const XmlException& error) {
        EXPECT_EQ(error.file(), L"100%% %1 \u00E9.xml");
        EXPECT_EQ(error.line(), 2U);
        EXPECT_EQ(error.column(), 1U);
        EXPECT_STREQ(error.what(),
                     "100%% %1 \xC3\xA9.xml:2:1: error: this is not the end tag of <a>, which starts in line 1: "
                     "correct one of the two");
    }
}

TEST(Malformed, TextInMemoryHasANameToo)
{
    try {
        XmlDocument::parse("");
        FAIL() << "loaded";
    } catch (const XmlException& error) {
        EXPECT_STREQ(error.what(), "(text):0:0: error: the file is empty: an XML file has a root element");
    }
}

std::string sample()
{
    return "\xEF\xBB\xBF<?xml version=\"1.0\" encoding='utf-8'?>\r\n<!-- c --><p:r xmlns:p='u'\n b=\"1&lt;\xC3\xA9\">"
           "t&amp;&#65;<e/> <![CDATA[<]]>\xE2\x82\xAC\xF0\x9F\x98\x80<?q r?></p:r>";
}

std::string utf16Sample()
{
    std::string bytes = "\xFE\xFF";
    for (const char character : std::string_view("<?xml version='1.0' encoding='UTF-16'?><a b='c'>d<e/></a>")) {
        bytes.push_back('\0');
        bytes.push_back(character);
    }
    return bytes + std::string("\0\n", 2);
}

TEST(Malformed, EveryTruncationIsRefused)
{
    const std::string whole = sample();
    ASSERT_EQ(refusalOf(whole).m_sProblem, "");
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_NE(refusalOf(whole.substr(0, size)).m_sProblem, "") << size;
    }
}

TEST(Malformed, EveryUtf16TruncationButTheLastLineEndIsRefused)
{
    const std::string whole = utf16Sample();
    ASSERT_EQ(refusalOf(whole).m_sProblem, "");
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(refusalOf(whole.substr(0, size)).m_sProblem.empty(), size == whole.size() - 2) << size;
    }
}

/// Every byte is replaced by every other value: the document loads, and writes a text that loads, or is refused.
void corruptEveryByte(const std::string& whole)
{
    std::size_t loaded = 0;
    std::size_t refused = 0;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string bytes = whole;
        for (int value = 0; value < 256; ++value) {
            bytes[i] = static_cast<char>(value);
            try {
                const XmlDocument document = XmlDocument::parse(bytes);
                const vel::String written = document.root().toXmlText();
                const XmlDocument again = XmlDocument::parse(vel::toUtf8Lossy(written.view()));
                ASSERT_EQ(xmltest::outline(again.root()), xmltest::outline(document.root())) << i << ' ' << value;
                ++loaded;
            } catch (const XmlException& error) {
                ASSERT_GE(error.line(), 1U) << i << ' ' << value;
                ASSERT_GE(error.column(), 1U) << i << ' ' << value;
                ++refused;
            }
        }
    }
    EXPECT_GT(loaded, whole.size());  // every unchanged one, and changes of text
    EXPECT_GT(refused, whole.size());
}

TEST(Malformed, EveryCorruptByteIsReadOrRefused)
{
    corruptEveryByte(sample());
}

TEST(Malformed, EveryCorruptUtf16ByteIsReadOrRefused)
{
    corruptEveryByte(utf16Sample());
}

}  // namespace
