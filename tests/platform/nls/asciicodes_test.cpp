#include "asciicodes.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace vel::nls;

/// With what this processor can do, and as on every processor.
class AsciiBlocks : public testing::TestWithParam<bool>
{
protected:
    /// Letters have their own code as primary byte, capitals that of the small letter and a tertiary code; the blank is
    /// simple, digits are not.
    void SetUp() override
    {
        m_tCodes.set(' ', 3, 0);
        for (unsigned char c = 'a'; c <= 'z'; ++c) {
            m_tCodes.set(c, c, 0);
            m_tCodes.set(static_cast<unsigned char>(c - 'a' + 'A'), c, c == 'w' ? 0xE0 : 0xD0);
        }
    }

    /// The primary bytes of the simple characters at the front. What is read lies in a block of its own size.
    std::string read(std::u16string_view text)
    {
        const auto bytes = std::make_unique<unsigned char[]>(2 * text.size());
        for (std::size_t i = 0; i < text.size(); ++i) {
            bytes[2 * i] = static_cast<unsigned char>(text[i] >> 8);
            bytes[2 * i + 1] = static_cast<unsigned char>(text[i]);
        }
        std::string out(AsciiCodes::kBlock, '\0');
        m_tCodes.read(bytes.get(), text.size(), reinterpret_cast<unsigned char*>(out.data()), m_tBlock);
        return out.substr(0, m_tBlock.m_nCount);
    }

    AsciiCodes m_tCodes{GetParam()};
    AsciiCodes::Block m_tBlock{};
};

TEST_P(AsciiBlocks, TextsOfEveryLengthAreReadUpToABlock)
{
    const std::u16string text = u"abcdefghijklmnopqrstuvwxyz";
    const std::string codes = "abcdefghijklmnopqrstuvwxyz";
    for (std::size_t size = 1; size <= text.size(); ++size) {
        EXPECT_EQ(read(std::u16string_view(text).substr(0, size)), codes.substr(0, std::min<std::size_t>(size, 16)));
        EXPECT_EQ(m_tBlock.m_nUncommon, 0U);
    }
}

TEST_P(AsciiBlocks, CapitalsHaveTheirBitAndTheirCode)
{
    EXPECT_EQ(read(u"Hello World"), std::string("hello\3world"));
    EXPECT_EQ(m_tBlock.m_nUncommon, 0x41U);
    EXPECT_EQ(m_tBlock.m_aTertiary[0], 0xD0);
    EXPECT_EQ(m_tBlock.m_aTertiary[6], 0xE0);
    EXPECT_EQ(read(u"Z"), "z");
    EXPECT_EQ(m_tBlock.m_nUncommon, 1U);
    EXPECT_EQ(read(u"ABCDEFGHIJKLMNOP"), "abcdefghijklmnop");
    EXPECT_EQ(m_tBlock.m_nUncommon, 0xFFFFU);
}

TEST_P(AsciiBlocks, OtherCharactersEndThem)
{
    for (const char16_t other : {u'7', u'\0', u'\x1F', u'\x7F', u'\x80', u'ä', u'\u0141', u'\u4161', u'\uFF21'}) {
        const std::u16string one(1, other);
        EXPECT_EQ(read(one), "") << static_cast<unsigned>(other);
        EXPECT_EQ(m_tBlock.m_nUncommon, 0U);
        EXPECT_EQ(read(u"aB" + one + u"CD"), "ab") << static_cast<unsigned>(other);
        EXPECT_EQ(m_tBlock.m_nUncommon, 2U);
        EXPECT_EQ(read(u"abcdefghijklmno" + one + u"q"), "abcdefghijklmno") << static_cast<unsigned>(other);
    }
}

INSTANTIATE_TEST_SUITE_P(Loops, AsciiBlocks, testing::Bool());

}  // namespace
