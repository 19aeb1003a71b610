#include "check/webencodings.h"

#include <gtest/gtest.h>

#include "vel/core/string.h"
#include "vel/transcoding/universaltranscoding.h"
#include "webencodings.h"

// What the check knows of the web's labels, beside the tables of the WHATWG Encoding Standard.

namespace clitest {

namespace {

vel::String wide(std::string_view text)
{
    return vel::stringFromUtf8(text).value();
}

}  // namespace

TEST(WebEncodings, everyLabelLeadsToItsEncoding)
{
    ASSERT_LT(200U, reference::webLabels().size());
    for (const auto& [label, encoding] : reference::webLabels()) {
        const cli::WebEncoding* found = cli::webEncodingOf(wide(label).view());
        ASSERT_NE(nullptr, found) << label;
        EXPECT_EQ(encoding, found->m_sName) << label;
        EXPECT_TRUE(cli::isRegisteredLabel(wide(label).view())) << label;
    }
}

TEST(WebEncodings, everyConverterIsCalledSoByItself)
{
    std::size_t converters = 0;
    for (const auto& [label, encoding] : reference::webLabels()) {
        for (const std::string_view each : cli::webEncodingOf(wide(label).view())->m_vConverters) {
            ++converters;
            EXPECT_EQ(wide(each).standard(), vel::UniversalTranscoding(wide(each)).getCanonicalName().standard());
        }
    }
    EXPECT_LT(200U, converters);
}

TEST(WebEncodings, labelsAreFoundInAnyLetterCase)
{
    EXPECT_EQ("windows-1252", cli::webEncodingOf(L"Latin1")->m_sName);
    EXPECT_EQ("shift_jis", cli::webEncodingOf(L"SJIS")->m_sName);
    EXPECT_TRUE(cli::isRegisteredLabel(L"IBM500"));
    EXPECT_EQ(nullptr, cli::webEncodingOf(L"IBM500"));
}

TEST(WebEncodings, otherTextsAreNoLabels)
{
    for (const wchar_t* text : {L"", L" ", L"utf 8", L"utf-8 utf8", L"utf-9", L" utf-8", L"latin\u0131"}) {
        EXPECT_EQ(nullptr, cli::webEncodingOf(text));
        EXPECT_FALSE(cli::isRegisteredLabel(text));
    }
}

}  // namespace clitest
