#include "nlstext.h"

#include <gtest/gtest.h>

#include <string>

#include "printers.h"

namespace {

using vel::AutoBuffer;
using namespace vel::i18n_details;

TEST(NlsText, WorkBufferSizes)
{
    EXPECT_EQ(workBufferSize(64, 60), 64U);
    EXPECT_EQ(workBufferSize(64, 64), 64U);
    EXPECT_EQ(workBufferSize(64, 65), 128U);
    EXPECT_EQ(workBufferSize(64, 100), 128U);
    EXPECT_EQ(workBufferSize(64, 127), 128U);
    EXPECT_EQ(workBufferSize(64, 128), 128U);
    EXPECT_EQ(workBufferSize(64, 129), 129U);
    EXPECT_EQ(workBufferSize(64, 1000), 1000U);
    EXPECT_EQ(workBufferSize(1000, 1001), 2000U);
    EXPECT_EQ(workBufferSize(600, 1100), 1200U);
    EXPECT_EQ(workBufferSize(16, 20), 64U);
    EXPECT_EQ(workBufferSize(16, 32), 64U);
    EXPECT_EQ(workBufferSize(48, 64), 64U);
    EXPECT_EQ(workBufferSize(100, 200), 200U);
    EXPECT_EQ(workBufferSize(0, 0), 0U);
    EXPECT_EQ(workBufferSize(0, 1), 64U);
    EXPECT_EQ(workBufferSize(0, 65), 65U);
}

TEST(NlsText, TheLowByteOfEveryCharacterIsTaken)
{
    AutoBuffer<char, 64> buffer;
    EXPECT_EQ(toBytes(L"sv", buffer), 2U);
    EXPECT_EQ(std::string(buffer.data(), 2), "sv");
    EXPECT_EQ(toBytes(L"\u0173\u0176", buffer), 2U);  // 0x73, 0x76
    EXPECT_EQ(std::string(buffer.data(), 2), "sv");
    EXPECT_EQ(toBytes(L"", buffer), 0U);
}

TEST(NlsText, BytesGrowToTheLargerOfTheNeedAnd128)
{
    AutoBuffer<char, 64> buffer;
    toBytes(std::wstring(64, L'a'), buffer);
    EXPECT_EQ(buffer.capacity(), 64U);
    toBytes(std::wstring(65, L'a'), buffer);
    EXPECT_EQ(buffer.capacity(), 128U);
    toBytes(std::wstring(129, L'a'), buffer);
    EXPECT_EQ(buffer.capacity(), 129U);
}

TEST(NlsText, CharactersBecomeUtf16BigEndian)
{
    AutoBuffer<unsigned char, 64> buffer;
    const std::wstring text = L"A\u20AC\U0001F600";
    ASSERT_EQ(encodeToWorkBuffer(text.data(), text.size(), buffer), 8U);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(buffer.data()), 8),
              std::string("\0A\x20\xAC\xD8\x3D\xDE\0", 8));
    EXPECT_EQ(buffer.capacity(), 64U);
    const std::wstring longer(17, L'x');
    EXPECT_EQ(encodeToWorkBuffer(longer.data(), longer.size(), buffer), 34U);
    EXPECT_EQ(buffer.capacity(), 128U) << "four bytes a character, doubled";
    EXPECT_EQ(encodeToWorkBuffer(nullptr, 0, buffer), 0U);
}

TEST(NlsText, ALengthThatCannotBeRepresentedIsNotRead)
{
    AutoBuffer<unsigned char, 64> work;
    EXPECT_EQ(encodeToWorkBuffer(nullptr, static_cast<std::size_t>(-1) / 5, work), kNotTranslated);
    AutoBuffer<char, 64> bytes;
    EXPECT_EQ(toBytes(std::wstring_view(L"x", static_cast<std::size_t>(-1) / 5), bytes), kNotTranslated);
}

TEST(NlsText, TerminatedTextIsDecoded)
{
    const auto decode = [](const std::string& bytes) {
        return fromTerminatedUtf16(reinterpret_cast<const unsigned char*>(bytes.data()));
    };
    EXPECT_EQ(decode(std::string("\0s\0v\0\0\0x\0\0", 10)), L"sv");
    EXPECT_EQ(decode(std::string("\x20\xAC\xD8\x3D\xDE\0\0\0", 8)), L"\u20AC\U0001F600");
    EXPECT_EQ(decode(std::string("\x73\0\0\0", 4)), L"\u7300");
    EXPECT_EQ(decode(std::string("\0a\xDE\0\0b\xD8\x3D\0\0", 10)), L"a\uFFFDb\uFFFD");
    EXPECT_EQ(decode(std::string("\xDE\0\0a\0\0\0b\0c\0\0", 12)), L"\uFFFDa")
        << "ends at the first zero, also behind a fault";
    EXPECT_EQ(decode(std::string(2, '\0')), L"");
    EXPECT_EQ(fromTerminatedUtf16(nullptr), L"");
}

}  // namespace
