#include <pthread.h>

#include "documentsupport.h"
#include "temporaryfolder.h"
#include "vel/xml/xmlpath.h"

namespace {

using vel::XmlDocument;
using vel::XmlElement;
using vel::XmlLimits;
using xmltest::refusalOf;
using xmltest::repeat;

constexpr std::size_t kMany = 1000000;

XmlLimits bytesLimit(std::size_t count)
{
    XmlLimits limits;
    limits.m_nMaxBytes = count;
    return limits;
}

XmlLimits depthLimit(std::size_t count)
{
    XmlLimits limits;
    limits.m_nMaxDepth = count;
    return limits;
}

XmlLimits attributesLimit(std::size_t count)
{
    XmlLimits limits;
    limits.m_nMaxAttributes = count;
    return limits;
}

std::string nested(std::size_t depth)
{
    return repeat("<a>", depth) + repeat("</a>", depth);
}

std::string withAttributes(std::size_t count)
{
    std::string bytes = "<a";
    for (std::size_t i = 0; i < count; ++i) {
        bytes += " b" + std::to_string(i) + "=''";
    }
    return bytes + "/>";
}

TEST(XmlLimits, DefaultsAreAsStated)
{
    const XmlLimits limits;
    EXPECT_EQ(limits.m_nMaxBytes, 67108864U);
    EXPECT_EQ(limits.m_nMaxDepth, 256U);
    EXPECT_EQ(limits.m_nMaxAttributes, 1024U);
}

TEST(XmlLimits, BytesOfAText)
{
    const std::string bytes = "<a>12345</a>";
    ASSERT_EQ(bytes.size(), 12U);
    for (const std::size_t limit : {0U, 10U, 11U}) {
        EXPECT_EQ(refusalOf(bytes, bytesLimit(limit)).m_sProblem,
                  "larger than the limit of " + std::to_string(limit) + " bytes: split the file");
    }
    for (const std::size_t limit : {12U, 13U, 14U}) {
        EXPECT_EQ(refusalOf(bytes, bytesLimit(limit)).m_sProblem, "");
    }
    EXPECT_EQ(refusalOf(bytes, bytesLimit(static_cast<std::size_t>(-1))).m_sProblem, "");
}

TEST(XmlLimits, BytesOfAFile)
{
    const testsupport::TemporaryFolder folder;
    const vel::FilePath file = folder.write("a.xml", "<a>12345</a>");
    for (const std::size_t limit : {10U, 11U}) {
        EXPECT_THROW(XmlDocument::load(file, bytesLimit(limit)), vel::XmlException);
    }
    for (const std::size_t limit : {12U, 13U, 14U}) {
        EXPECT_EQ(XmlDocument::load(file, bytesLimit(limit)).root().innerText(), L"12345");
    }
}

TEST(XmlLimits, BytesAreThoseOfTheFileNotOfItsText)
{
    // 4 characters are 10 bytes of UTF-16 with the mark; the three euro signs would be 9 bytes of UTF-8.
    const std::string bytes("\xFF\xFE<\0a\0>\0\xAC\x20\xAC\x20\xAC\x20<\0/\0a\0>\0", 22);
    EXPECT_EQ(refusalOf(bytes, bytesLimit(22)).m_sProblem, "");
    EXPECT_NE(refusalOf(bytes, bytesLimit(21)).m_sProblem, "");
}

TEST(XmlLimits, Depth)
{
    const std::string bytes = nested(5);
    for (const std::size_t limit : {3U, 4U}) {
        const xmltest::Refusal refusal = refusalOf(bytes, depthLimit(limit));
        EXPECT_EQ(refusal.m_sProblem, "elements are nested deeper than the limit of " + std::to_string(limit) +
                                          ": make the document flatter");
        EXPECT_EQ(refusal.m_nLine, 1U);
        EXPECT_EQ(refusal.m_nColumn, 1 + 3 * limit);
    }
    for (const std::size_t limit : {5U, 6U, 7U}) {
        EXPECT_EQ(refusalOf(bytes, depthLimit(limit)).m_sProblem, "");
    }
    EXPECT_NE(refusalOf("<a/>", depthLimit(0)).m_sProblem, "");
}

TEST(XmlLimits, DefaultDepth)
{
    for (const std::size_t depth : {254U, 255U, 256U}) {
        EXPECT_EQ(refusalOf(nested(depth)).m_sProblem, "");
    }
    for (const std::size_t depth : {257U, 258U}) {
        EXPECT_EQ(refusalOf(nested(depth)).m_nColumn, 769U);  // the 257th start tag, three characters each
    }
    // Neighbours do not add up.
    EXPECT_EQ(refusalOf("<a>" + repeat("<b><c/></b>", 1000) + "</a>", depthLimit(3)).m_sProblem, "");
}

TEST(XmlLimits, Attributes)
{
    const std::string bytes = "<r>\n " + withAttributes(5) + "</r>";
    for (const std::size_t limit : {3U, 4U}) {
        const xmltest::Refusal refusal = refusalOf(bytes, attributesLimit(limit));
        EXPECT_EQ(refusal.m_sProblem, "an element has more attributes than the limit of " + std::to_string(limit) +
                                          ": write some of them as elements");
        EXPECT_EQ(refusal.m_nLine, 2U);
        EXPECT_EQ(refusal.m_nColumn, 2U);
    }
    for (const std::size_t limit : {5U, 6U, 7U}) {
        EXPECT_EQ(refusalOf(bytes, attributesLimit(limit)).m_sProblem, "");
    }
    EXPECT_NE(refusalOf("<a xmlns='u' b='1'/>", attributesLimit(1)).m_sProblem, "");
}

TEST(XmlLimits, DefaultAttributes)
{
    for (const std::size_t count : {1022U, 1023U, 1024U}) {
        EXPECT_EQ(refusalOf(withAttributes(count)).m_sProblem, "");
    }
    for (const std::size_t count : {1025U, 1026U}) {
        EXPECT_NE(refusalOf(withAttributes(count)).m_sProblem, "");
    }
}

TEST(XmlLimits, AMillionSiblings)
{
    const XmlDocument document = XmlDocument::parse("<a>" + repeat("<b/>", kMany) + "</a>");
    std::size_t count = 0;
    for (const XmlElement& child : vel::children(document.root())) {
        count += child.name() == L"b" ? 1 : 0;
    }
    EXPECT_EQ(count, kMany);
    EXPECT_EQ(document.root().select(vel::XmlPath(L"b")).size(), kMany);
    EXPECT_EQ(document.root().toXmlText().length(), 3 + 4 * kMany + 4);
}

constexpr std::size_t kDeep = 200000;

/// Loads, walks, writes and destroys a deep document; true when all of it came out right.
bool handleDeepDocument()
{
    const XmlDocument document = XmlDocument::parse(repeat("<a>x", kDeep) + repeat("</a>", kDeep), depthLimit(kDeep));
    std::size_t depth = 0;
    for (const XmlElement* element = &document.root(); element != nullptr; element = element->firstChild()) {
        ++depth;
    }
    const vel::String written = document.root().toXmlText();
    const XmlDocument again = XmlDocument::parse(vel::toUtf8Lossy(written.view()), depthLimit(kDeep));
    std::wstring path = L"a";
    for (std::size_t i = 2; i < kDeep; ++i) {
        path += L"/a";
    }
    return depth == kDeep && again.root().innerText().length() == kDeep && written.length() == kDeep * 8 &&
           again.root().select(vel::XmlPath(path)).size() == 1;
}

void* runDeep(void* result)
{
    *static_cast<bool*>(result) = handleDeepDocument();
    return nullptr;
}

TEST(XmlLimits, DepthTakesNoStack)
{
    // A quarter of a megabyte of stack is a byte or two per level.
    bool result = false;
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
    pthread_t thread = {};
    ASSERT_EQ(pthread_create(&thread, &attributes, runDeep, &result), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
    EXPECT_TRUE(result);
}

TEST(XmlLimits, OneLongTextIsReadInOnePiece)
{
    const std::string text = repeat("line\n", 200000);
    const XmlDocument document = XmlDocument::parse("<a b='" + text + "'>" + text + "</a>");
    EXPECT_EQ(document.root().innerText().length(), 1000000U);
    EXPECT_EQ(document.root().attribute(L"b").size(), 1000000U);
}

}  // namespace
