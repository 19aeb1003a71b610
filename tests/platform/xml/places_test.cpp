#include "documentsupport.h"
#include "xmlplace.h"

namespace {

using vel::XmlDocument;
using vel::XmlElement;
using vel::xml_details::placeOf;
using vel::xml_details::XmlPlace;
using vel::xml_details::XmlPlaceCounter;

struct Row
{
    const char* m_pBytes;
    std::uint32_t m_nLine;  // of the element <x>
    std::uint32_t m_nColumn;
};

class Place : public testing::TestWithParam<Row>
{};

TEST_P(Place, IsCountedInCharactersFromOne)
{
    const XmlDocument document = XmlDocument::parse(GetParam().m_pBytes);
    const XmlElement* element = &document.root();
    while (element->name() != L"x") {
        ASSERT_NE(element->firstChild(), nullptr);
        element = element->firstChild();
    }
    EXPECT_EQ(element->line(), GetParam().m_nLine);
    EXPECT_EQ(element->column(), GetParam().m_nColumn);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Place,
    testing::Values(Row{"<x/>", 1, 1}, Row{"\xEF\xBB\xBF<x/>", 1, 1}, Row{"\n<x/>", 2, 1}, Row{"\r\n<x/>", 2, 1},
                    Row{"\r<x/>", 2, 1}, Row{"\n\r<x/>", 3, 1}, Row{"\r\r\n\n <x/>", 4, 2},
                    Row{"\xEF\xBB\xBF\n  <x/>", 2, 3}, Row{"<a><x/></a>", 1, 4}, Row{"<a>\t<x/></a>", 1, 5},
                    Row{"<a>\xC3\xA9<x/></a>", 1, 5}, Row{"<a>\xE2\x82\xAC<x/></a>", 1, 5},
                    Row{"<a>\xF0\x9F\x98\x80\xF0\x9F\x98\x80<x/></a>", 1, 6}, Row{"<a>&#10;<x/></a>", 1, 9},
                    Row{"<!--\n\n--><x/>", 3, 4}, Row{"<a b='\n'\n><x/></a>", 3, 2},
                    Row{"<a><![CDATA[\n<x/>\n]]><x/></a>", 3, 4}, Row{"<?p\n?>\n<x/>", 3, 1},
                    Row{"<a>0123456789\r\n<x/></a>", 2, 1},          // the pair within the first sixteen bytes
                    Row{"<a>0123456789ab\r\n<x/></a>", 2, 1},        // the pair across them
                    Row{"<a>0123456789abc\r\n<x/></a>", 2, 1},       // the pair after them
                    Row{"<a>0123456789ab\r<x/></a>", 2, 1},          // a lone one at their end
                    Row{"<a>0123456789\n\n\xC3\xA9<x/></a>", 3, 2},  //
                    Row{"<a>\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9<x/></a>", 1, 12}));

TEST(Place, IsKnownForEveryElement)
{
    const XmlDocument document = XmlDocument::parse("<a>\n  <b/><b/>\n\t\t<b>\xC3\xA9</b> <b/>\n</a>\n");
    std::vector<std::pair<std::uint32_t, std::uint32_t>> places;
    for (const XmlElement& child : vel::children(document.root())) {
        places.emplace_back(child.line(), child.column());
    }
    EXPECT_EQ(places, (std::vector<std::pair<std::uint32_t, std::uint32_t>>{{2, 3}, {2, 7}, {3, 3}, {3, 12}}));
}

TEST(Place, IsTheSameInUtf16)
{
    std::string bytes = "\xFF\xFE";
    for (const char character : std::string_view("<a>\r\n <x/></a>")) {
        bytes.push_back(character);
        bytes.push_back('\0');
    }
    const XmlDocument document = XmlDocument::parse(bytes);
    EXPECT_EQ(document.root().firstChild()->line(), 2U);
    EXPECT_EQ(document.root().firstChild()->column(), 2U);
}

TEST(Place, OfAnOffsetPastTheEndIsTheEnd)
{
    EXPECT_EQ(placeOf("ab\nc", 100).m_nLine, 2U);
    EXPECT_EQ(placeOf("ab\nc", 100).m_nColumn, 2U);
    EXPECT_EQ(placeOf("", 1).m_nColumn, 1U);
}

/// Pseudo-random, the same in every run.
unsigned nextNumber(unsigned& state)
{
    state = state * 1664525U + 1013904223U;
    return state >> 16;
}

TEST(Place, BlockwiseAndBytewiseCountsAgree)
{
    unsigned state = 1;
    const std::string_view pieces[] = {"\n",      "\r",       "\r\n",         "a",
                                       "bcdefgh", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};
    for (int round = 0; round < 300; ++round) {
        std::string text = round % 3 == 0 ? "\xEF\xBB\xBF" : "";
        std::vector<std::size_t> offsets;
        for (int i = 0; i < 60; ++i) {
            text += pieces[nextNumber(state) % std::size(pieces)];
            offsets.push_back(text.size());
        }
        const std::string padded = text + std::string(vel::xml_details::kPlaceSlack, '\0');
        XmlPlaceCounter counter(std::string_view(padded).substr(0, text.size()));
        for (const std::size_t offset : offsets) {
            if (nextNumber(state) % 2 == 0) {
                continue;
            }
            // A line feed that follows makes a carriage return's line end only with itself, for both.
            const XmlPlace expected = placeOf(text, offset);
            const XmlPlace actual = counter.at(offset);
            ASSERT_EQ(actual.m_nLine, expected.m_nLine) << offset << " of " << text;
            ASSERT_EQ(actual.m_nColumn, expected.m_nColumn) << offset << " of " << text;
        }
    }
}

}  // namespace
