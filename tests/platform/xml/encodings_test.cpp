#include "documentsupport.h"

namespace {

using namespace std::string_view_literals;
using vel::XmlDocument;
using xmltest::refusalOf;

enum Form
{
    kPlain,
    kUtf8Mark,
    kLittle,
    kBig
};

void appendUnit(std::string& out, unsigned unit, Form form)
{
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    out.push_back(form == kBig ? high : low);
    out.push_back(form == kBig ? low : high);
}

/// The document's bytes in that form, its byte-order mark included.
std::string bytesOf(std::wstring_view text, Form form)
{
    if (form == kPlain || form == kUtf8Mark) {
        return (form == kUtf8Mark ? "\xEF\xBB\xBF" : "") + vel::toUtf8Lossy(text);
    }
    std::string out;
    appendUnit(out, 0xFEFF, form);
    for (const wchar_t character : text) {
        const unsigned value = static_cast<unsigned>(character);
        if (value >= 0x10000) {
            appendUnit(out, 0xD800 + ((value - 0x10000) >> 10), form);
            appendUnit(out, 0xDC00 + ((value - 0x10000) & 0x3FF), form);
        } else {
            appendUnit(out, value, form);
        }
    }
    return out;
}

TEST(XmlEncoding, EveryFormReadsAlike)
{
    // One character of every length that UTF-8 and UTF-16 have, and the ends of the ranges.
    const std::wstring text = L"A\u007F\u0080\u07FF\u0800\u20AC\uD7FF\uE000\uFFFD\U00010000\U0001F600\U0010FFFF";
    for (const Form form : {kPlain, kUtf8Mark, kLittle, kBig}) {
        const XmlDocument document = XmlDocument::parse(bytesOf(L"<a v='" + text + L"'>" + text + L"</a>", form));
        EXPECT_EQ(document.root().innerText().standard(), text) << form;
        EXPECT_EQ(document.root().attribute(L"v"), text) << form;
        EXPECT_EQ(document.root().column(), 1U) << form;
    }
}

TEST(XmlEncoding, NamesMayBeOutsideAscii)
{
    const XmlDocument document = XmlDocument::parse(bytesOf(L"<\u00E9t\u00E9 \u0436='1'/>", kBig));
    EXPECT_EQ(document.root().name(), L"\u00E9t\u00E9");
    EXPECT_EQ(document.root().attribute(L"\u0436"), L"1");
}

struct Row
{
    const wchar_t* m_pDeclared;
    bool m_aAgrees[4];  // in the order of Form
};

const wchar_t* const kNames[] = {L"", L"UTF-8", L"UTF-16LE", L"UTF-16BE"};

class Declaration : public testing::TestWithParam<Row>
{};

std::wstring declaring(const Row& row)
{
    return std::wstring(L"<?xml version='1.0' encoding='") + row.m_pDeclared + L"'?>\n<a v='\u00E9'>\u20AC</a>";
}

TEST_P(Declaration, WithoutAMarkMustAgree)
{
    const Row& row = GetParam();
    const xmltest::Refusal refusal = refusalOf(bytesOf(declaring(row), kPlain));
    EXPECT_EQ(refusal.m_sProblem.empty(), row.m_aAgrees[kPlain]) << refusal.m_sProblem;
    if (!row.m_aAgrees[kPlain]) {
        EXPECT_EQ(refusal.m_nLine, 1U);
        EXPECT_EQ(refusal.m_nColumn, 1U);
        EXPECT_NE(refusal.m_sProblem.find('"' + vel::toUtf8Lossy(row.m_pDeclared) + '"'), std::string::npos);
        EXPECT_NE(refusal.m_sProblem.find("save the file as UTF-8 or remove the encoding declaration"),
                  std::string::npos);
    }
}

TEST_P(Declaration, OtherThanTheMarkIsReadAsTheMarkSaysAndRemarked)
{
    const Row& row = GetParam();
    for (const Form form : {kUtf8Mark, kLittle, kBig}) {
        const XmlDocument document = XmlDocument::parse(bytesOf(declaring(row), form));
        EXPECT_EQ(document.root().innerTextView(), L"\u20AC") << form;
        EXPECT_EQ(document.root().attribute(L"v"), L"\u00E9") << form;
        const vel::XmlRemark* const remark = document.encodingRemark();
        ASSERT_EQ(remark == nullptr, row.m_aAgrees[form]) << form;
        if (remark != nullptr) {
            EXPECT_EQ(remark->m_nLine, 1U);
            EXPECT_EQ(remark->m_nColumn, 1U);
            EXPECT_EQ(remark->m_sText.standard(), std::wstring(L"the encoding declaration says \"") + row.m_pDeclared +
                                                      L"\", but the file has the byte-order mark of " + kNames[form] +
                                                      L", which decides: remove the encoding declaration");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Matrix, Declaration,
    testing::Values(Row{L"UTF-8", {true, true, false, false}}, Row{L"utf-8", {true, true, false, false}},
                    Row{L"Utf-8", {true, true, false, false}}, Row{L"US-ASCII", {true, true, false, false}},
                    Row{L"us-ascii", {true, true, false, false}}, Row{L"UTF-16", {false, false, true, true}},
                    Row{L"utf-16", {false, false, true, true}}, Row{L"UTF-16LE", {false, false, true, false}},
                    Row{L"utf-16le", {false, false, true, false}}, Row{L"UTF-16BE", {false, false, false, true}},
                    Row{L"Utf-16bE", {false, false, false, true}}, Row{L"UTF-32", {false, false, false, false}},
                    Row{L"ISO-8859-1", {false, false, false, false}},
                    Row{L"windows-1252", {false, false, false, false}}, Row{L"UTF-80", {false, false, false, false}},
                    Row{L"UTF-", {false, false, false, false}}));

TEST(XmlEncoding, ADocumentKeepsItsRemarkWhenItMoves)
{
    XmlDocument document = XmlDocument::parse("\xEF\xBB\xBF<?xml version='1.0' encoding='koi8-r'?><a/>");
    ASSERT_NE(document.encodingRemark(), nullptr);
    const XmlDocument moved = std::move(document);
    ASSERT_NE(moved.encodingRemark(), nullptr);
    EXPECT_EQ(XmlDocument().encodingRemark(), nullptr);
    EXPECT_EQ(XmlDocument::parse("<a/>").encodingRemark(), nullptr);
}

TEST(XmlEncoding, DeclarationWithoutEncodingFitsEveryForm)
{
    for (const Form form : {kPlain, kUtf8Mark, kLittle, kBig}) {
        EXPECT_EQ(refusalOf(bytesOf(L"<?xml version='1.0' standalone='yes'?><a/>", form)).m_sProblem, "");
    }
}

TEST(XmlEncoding, OnlyXmlOneDotZeroIsRead)
{
    const xmltest::Refusal refusal = refusalOf("<?xml version='1.1'?><a/>");
    EXPECT_EQ(refusal.m_sProblem, "only XML 1.0 is read: change the XML declaration to version=\"1.0\"");
    EXPECT_NE(refusalOf("<?xml version='2.0'?><a/>").m_sProblem, "");
    EXPECT_NE(refusalOf(bytesOf(L"<?xml version='1.1' encoding='utf-16'?><a/>", kLittle)).m_sProblem, "");
}

TEST(XmlEncoding, Utf32IsRefusedWithAdvice)
{
    for (const std::string_view bytes : {"\xFF\xFE\0\0<\0\0\0a\0\0\0/\0\0\0>\0\0\0"sv, "\0\0\xFE\xFF\0\0\0<"sv}) {
        const xmltest::Refusal refusal = refusalOf(bytes);
        EXPECT_EQ(refusal.m_sProblem, "the file is in UTF-32, which is not read: save it as UTF-8");
        EXPECT_EQ(refusal.m_nLine, 1U);
    }
}

TEST(XmlEncoding, Utf16WithoutMarkIsRefusedWithAdvice)
{
    for (const std::string_view bytes : {"<\0a\0/\0>\0"sv, "\0<\0a\0/\0>"sv, "\0"sv}) {
        EXPECT_NE(refusalOf(bytes).m_sProblem.find("UTF-16 without a byte-order mark"), std::string::npos);
    }
}

TEST(XmlEncoding, MarksAloneHoldNoDocument)
{
    for (const std::string_view bytes : {"\xEF\xBB\xBF"sv, "\xFF\xFE"sv, "\xFE\xFF"sv}) {
        EXPECT_EQ(refusalOf(bytes).m_sProblem, "there is no root element: add one");
    }
    // Parts of marks are no text either.
    for (const std::string_view bytes : {"\xEF"sv, "\xEF\xBB"sv, "\xFF"sv, "\xFE"sv}) {
        EXPECT_NE(refusalOf(bytes).m_sProblem, "");
    }
}

TEST(XmlEncoding, AMarkStandsAtTheStartOnly)
{
    for (const Form form : {kUtf8Mark, kLittle, kBig}) {
        EXPECT_NE(refusalOf(bytesOf(L"\uFEFF<a/>", form)).m_sProblem, "") << form;
        // Within text it is a character like others.
        EXPECT_EQ(XmlDocument::parse(bytesOf(L"<a>\uFEFF</a>", form)).root().innerText(), L"\uFEFF") << form;
    }
}

struct Utf16Row
{
    std::string_view m_sBytes;  // little-endian, after "<a>"
    std::uint32_t m_nColumn;
};

class IllFormedUtf16 : public testing::TestWithParam<Utf16Row>
{};

TEST_P(IllFormedUtf16, IsRefusedWithItsPlace)
{
    const std::string bytes = bytesOf(L"\n<a>", kLittle) + std::string(GetParam().m_sBytes);
    const xmltest::Refusal refusal = refusalOf(bytes);
    EXPECT_NE(refusal.m_sProblem.find("UTF-16"), std::string::npos) << refusal.m_sProblem;
    EXPECT_EQ(refusal.m_nLine, 2U);
    EXPECT_EQ(refusal.m_nColumn, GetParam().m_nColumn);
}

INSTANTIATE_TEST_SUITE_P(Rows, IllFormedUtf16,
                         testing::Values(Utf16Row{"\x00\xD8<\0/\0a\0>\0"sv, 4},      // high half before "<"
                                         Utf16Row{"\xFF\xDB"sv, 4},                  // high half at the end
                                         Utf16Row{"x\0\x00\xDC<\0/\0a\0>\0"sv, 5},   // low half alone
                                         Utf16Row{"\x00\xDC\x00\xD8"sv, 4},          // the halves swapped
                                         Utf16Row{"\x00\xD8\x00\xD8\x00\xDC"sv, 4},  // high half before a pair
                                         Utf16Row{"\x3D\xD8\x00\xDE\x00\xDC"sv, 5},  // low half after a pair
                                         Utf16Row{"<\0/\0a\0>\0\n"sv, 8},            // odd length
                                         Utf16Row{"x\0y"sv, 5}));

TEST(XmlEncoding, IllFormedUtf8IsRefusedWithItsPlace)
{
    // Bare lead byte, bare continuation, overlong forms, surrogate, above U+10FFFF, bytes that occur in no UTF-8.
    for (const std::string_view bad :
         {"\xC3"sv, "\x80"sv, "\xC0\xAF"sv, "\xC1\xBF"sv, "\xE0\x80\xAF"sv, "\xE0\x9F\xBF"sv, "\xF0\x8F\xBF\xBF"sv,
          "\xED\xA0\x80"sv, "\xED\xBF\xBF"sv, "\xF4\x90\x80\x80"sv, "\xF5\x80\x80\x80"sv, "\xFE"sv, "\xFF"sv}) {
        const std::string start = "<a>\n\xC3\xA9";
        const xmltest::Refusal inText = refusalOf(start + std::string(bad) + "x</a>");
        EXPECT_EQ(inText.m_sProblem, "this is not UTF-8: save the file as UTF-8");
        EXPECT_EQ(inText.m_nLine, 2U);
        EXPECT_EQ(inText.m_nColumn, 2U);
        EXPECT_NE(refusalOf("<a b='" + std::string(bad) + "'/>").m_sProblem, "");
        EXPECT_NE(refusalOf("<a><!--" + std::string(bad) + "--></a>").m_sProblem, "");
        EXPECT_NE(refusalOf("<a" + std::string(bad) + "/>").m_sProblem, "");
        EXPECT_NE(refusalOf("<a><![CDATA[" + std::string(bad) + "]]></a>").m_sProblem, "");
    }
}

TEST(XmlEncoding, CharactersThatXmlForbidsAreRefused)
{
    for (const std::string_view bad :
         {"\0"sv, "\x01"sv, "\x08"sv, "\x0B"sv, "\x1F"sv, "\xEF\xBF\xBE"sv, "\xEF\xBF\xBF"sv}) {
        const xmltest::Refusal refusal = refusalOf("<a>x" + std::string(bad) + "</a>");
        EXPECT_EQ(refusal.m_nColumn, 5U);
        EXPECT_NE(refusal.m_sProblem.find("remove it"), std::string::npos) << refusal.m_sProblem;
    }
    EXPECT_EQ(refusalOf("<a>\x7F\xC2\x80\xC2\x9F</a>").m_sProblem, "");
}

}  // namespace
