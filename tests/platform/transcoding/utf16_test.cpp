#include "vel/transcoding/utf16.h"

#include <algorithm>
#include <climits>
#include <memory>
#include <random>

#include "exacttext.h"
#include "icureference.h"
#include "loops.h"

namespace {

using namespace transcodingtests;

class Utf16 : public EitherLoops
{};

/// In a buffer of exactly the stated room.
std::string encoded(std::wstring_view text)
{
    std::string buffer(text.size() * vel::kUtf16BytesPerCharacter, '\0');
    buffer.shrink_to_fit();
    buffer.resize(vel::encodeUtf16BigEndian(text.data(), text.size(), buffer.data()));
    return buffer;
}

/// In a buffer with room to spare, which is all that may be written over.
std::string encodedRoomily(std::wstring_view text)
{
    const std::size_t room = std::max<std::size_t>(32, text.size() * vel::kUtf16BytesPerCharacter);
    const std::unique_ptr<char[]> buffer(new char[room]);
    const testsupport::ExactText exactly(text);
    return {buffer.get(), vel::encodeUtf16BigEndian(exactly.begin(), text.size(), buffer.get(), room)};
}

struct Decoded
{
    std::wstring m_sText;
    std::size_t m_nFault;
};

Decoded decoded(std::string_view bytes)
{
    Decoded result{std::wstring(bytes.size() / 2, L'\0'), 0};
    result.m_sText.resize(
        vel::decodeUtf16BigEndian(bytes.data(), bytes.size(), result.m_sText.data(), &result.m_nFault));
    return result;
}

/// One character after the other, as the definition of UTF-16 has it.
std::string encodedPlainly(std::wstring_view text)
{
    std::string bytes;
    const auto put = [&bytes](std::uint32_t unit) {
        bytes += static_cast<char>(unit >> 8);
        bytes += static_cast<char>(unit & 0xFF);
    };
    for (const wchar_t character : text) {
        const std::uint32_t code = static_cast<std::uint32_t>(character);
        if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
            put(0xFFFD);
        } else if (code < 0x10000) {
            put(code);
        } else {
            put(0xD800 + ((code - 0x10000) >> 10));
            put(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
    return bytes;
}

TEST_P(Utf16, IsAsDocumented)
{
    EXPECT_EQ("00 41", hex(encoded(L"A")));
    EXPECT_EQ("20 AC", hex(encoded(L"\u20AC")));
    EXPECT_EQ("D8 3D DE 00", hex(encoded(L"\U0001F600")));
    EXPECT_EQ("FF FD", hex(encoded(std::wstring(1, 0xD800))));
    EXPECT_EQ("", encoded(L""));
    EXPECT_EQ("", encodedRoomily(L""));
    EXPECT_EQ("00 41", hex(encodedRoomily(L"A")));
    EXPECT_EQ(L"\u20AC", decoded({"\x20\xAC", 2}).m_sText);
    EXPECT_EQ(L"\U0001F600", decoded({"\xD8\x3D\xDE\x00", 4}).m_sText);
    EXPECT_EQ(2U, decoded({"\x00\x41\xDE\x00", 4}).m_nFault);
    EXPECT_EQ(2U, decoded({"\x00\x41\x00", 3}).m_nFault);
    EXPECT_EQ(L"A", decoded({"\x00\x41\x00", 3}).m_sText);
    EXPECT_EQ(std::string_view::npos, decoded("").m_nFault);
}

TEST_P(Utf16, EveryCharacterIsEncodedAndDecoded)
{
    std::wstring text;
    for (std::uint32_t code = 0; code < 0x110000; ++code) {
        if (code < 0xD800 || code > 0xDFFF) {
            text += static_cast<wchar_t>(code);
        }
    }
    const std::string bytes = encoded(text);
    EXPECT_TRUE(bytes == encodedPlainly(text));
    EXPECT_TRUE(decoded(bytes).m_sText == text);
}

TEST_P(Utf16, AnyCharacterMayStandAnywhere)
{
    const wchar_t others[] = {0xD800, 0xDFFF, 0x10000, 0x10FFFF, 0x110000, -1, INT_MIN, 0xFFFF, 0, 0xE000, 0xD7FF};
    for (const wchar_t other : others) {
        for (std::size_t length = 1; length < 70; ++length) {
            for (std::size_t place = 0; place < length; ++place) {
                std::wstring text(length, L'\u4E00');
                text[place] = other;
                ASSERT_TRUE(encoded(text) == encodedPlainly(text))
                    << shown(static_cast<std::uint32_t>(other)) << " at " << place << " of " << length;
                ASSERT_TRUE(encodedRoomily(text) == encodedPlainly(text))
                    << shown(static_cast<std::uint32_t>(other)) << " at " << place << " of " << length;
            }
        }
    }
}

TEST_P(Utf16, UnpairedSurrogatesAreFaultsAnywhere)
{
    const std::string faults[] = {"\xD8\x3D", std::string("\xDE\x00", 2), std::string("\xDE\x00\xD8\x3D", 4),
                                  "\xDB\xFF\xDB\xFF"};
    for (const std::string& fault : faults) {
        for (std::size_t place = 0; place < 40; ++place) {
            std::string bytes;
            for (std::size_t i = 0; i < 40; ++i) {
                bytes += i == place ? fault : std::string("\x4E\x01", 2);
            }
            const Decoded result = decoded(bytes);
            ASSERT_EQ(2 * place, result.m_nFault);
            ASSERT_EQ(std::wstring(place, L'\u4E01'), result.m_sText);
        }
    }
}

TRANSCODING_LOOPS(Utf16);

}  // namespace
