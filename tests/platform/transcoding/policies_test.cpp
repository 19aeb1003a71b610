#include <climits>

#include "loops.h"
#include "textrows.h"
#include "vel/transcoding/transcodingencoder.h"

// What becomes of characters that a set does not have, and of those that are none.

namespace {

using namespace transcodingtests;
using vel::NarrowString;
using vel::String;
using vel::UniversalTranscoding;

class TranscodingPolicies : public EitherLoops
{};

std::string encoded(const std::string& name, std::wstring_view text, vel::EUnencodable policy)
{
    NarrowString bytes;
    const std::optional<std::size_t> fault = transcodingOf(name).encode(text.data(), text.size(), bytes, policy);
    return bytes.standard() + (fault ? "@" + std::to_string(*fault) : "");
}

/// "\xNN" and "\\" of a row.
std::string unescaped(const std::string& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '\\' && text.substr(i, 2) == "\\x";
        result += isEscape ? static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16)) : text[i];
        i += isEscape ? 3 : 0;
    }
    return result;
}

/// "{D800}" of a row is the character of that value, whatever it is.
std::wstring charactersOf(const String& text)
{
    std::wstring result;
    for (std::size_t i = 0; i < text.length(); ++i) {
        if (text[i] != L'{') {
            result += text[i];
            continue;
        }
        const std::size_t end = text.find(L'}', i);
        result += static_cast<wchar_t>(std::stoul(text.substring(i + 1, end - i - 1).standard(), nullptr, 16));
        i = end;
    }
    return result;
}

TEST_P(TranscodingPolicies, Rows)
{
    for (const testsupport::TextRow& row : testsupport::readRows(WEBI18N_SOURCE_DIR "/policies.rows", 6)) {
        SCOPED_TRACE(row.trace());
        const std::wstring text = charactersOf(row.wide(1));
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(unescaped(row.field(2 + i)), encoded(row.field(0), text, kPolicies[i])) << "policy " << i;
        }
    }
}

/// Characters that are none, among as many others that every loop has been in use.
TEST_P(TranscodingPolicies, IllFormedCharactersAreNeverWrittenWhereverTheyStand)
{
    const wchar_t illFormed[] = {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000, -1, INT_MIN, INT_MAX};
    const std::string replacement = "\xEF\xBF\xBD";
    for (const wchar_t fault : illFormed) {
        for (std::size_t place = 0; place < 80; ++place) {
            std::wstring text(80, L'a');
            text[place] = fault;
            std::string expected(80, 'a');
            expected.replace(place, 1, replacement);
            ASSERT_EQ(expected, encoded("UTF-8", text, vel::kUnencodableReference));
            ASSERT_EQ(expected, encoded("UTF-8", text, vel::kUnencodableSubstitute));
            ASSERT_EQ(std::string(place, 'a') + "@" + std::to_string(place),
                      encoded("UTF-8", text, vel::kUnencodableError));
            expected.replace(place, replacement.size(), "\xFC\xFC");
            ASSERT_EQ(expected, encoded("Shift_JIS", text, vel::kUnencodableReference));
            expected.replace(place, 2, "\x1A");
            ASSERT_EQ(expected, encoded("ISO-8859-1", text, vel::kUnencodableSubstitute));
            expected.replace(place, 1, "\x84\x31\xA4\x37");
            ASSERT_EQ(expected, encoded("gb18030", text, vel::kUnencodableReference));
        }
    }
}

TEST_P(TranscodingPolicies, AnErrorKeepsWhatWasThereAndWhatCameBefore)
{
    NarrowString bytes("before ");
    EXPECT_EQ(2U, UniversalTranscoding(L"KOI8-R").encode(L"na\u00EFve", bytes, vel::kUnencodableError));
    EXPECT_EQ(NarrowString("before na"), bytes);
}

TEST_P(TranscodingPolicies, AfterAnErrorTheEncoderGoesOnBehindIt)
{
    for (const char* name : {"KOI8-R", "ISO-2022-JP"}) {
        vel::TranscodingEncoder encoder(transcodingOf(name), vel::kUnencodableError);
        char bytes[32];
        const vel::TranscodingResult first = encoder.encode(L"na\u05D0ve", 5, bytes, sizeof bytes);
        EXPECT_EQ(vel::kTranscodingUnencodable, first.m_eStatus);
        EXPECT_EQ(2U, first.m_nRead);
        const vel::TranscodingResult again = encoder.encode(L"\u05D0ve", 3, bytes, sizeof bytes);
        EXPECT_EQ(vel::kTranscodingUnencodable, again.m_eStatus);
        EXPECT_EQ(0U, again.m_nRead);
        const vel::TranscodingResult rest = encoder.encode(L"ve", 2, bytes, sizeof bytes);
        EXPECT_TRUE(rest.isComplete());
        EXPECT_EQ("ve", std::string(bytes, rest.m_nWritten));
    }
}

TEST_P(TranscodingPolicies, EmptyTextIsNoBytes)
{
    for (const char* name : {"UTF-8", "UTF-16", "Shift_JIS", "ISO-2022-JP", "UTF-7", "gb18030"}) {
        NarrowString bytes;
        EXPECT_FALSE(transcodingOf(name).encode(nullptr, 0, bytes)) << name;
        String text;
        EXPECT_FALSE(transcodingOf(name).decode(nullptr, 0, text)) << name;
        EXPECT_TRUE(bytes.isEmpty() && text.isEmpty()) << name;
        EXPECT_EQ(0U, transcodingOf(name).encodedSize(nullptr, 0));
    }
}

TEST_P(TranscodingPolicies, NullCharactersAreCharacters)
{
    for (const char* name : {"UTF-8", "ISO-8859-1", "Shift_JIS", "gb18030", "EUC-KR", "ISO-2022-JP", "ibm-1047"}) {
        NarrowString bytes;
        const std::wstring text(40, L'\0');
        EXPECT_FALSE(transcodingOf(name).encode(text, bytes, vel::kUnencodableError)) << name;
        EXPECT_EQ(std::string(40, '\0'), bytes.standard()) << name;
        String decoded;
        EXPECT_FALSE(transcodingOf(name).decode(bytes.data(), bytes.length(), decoded)) << name;
        EXPECT_TRUE(decoded.standard() == text) << name;
    }
}

TRANSCODING_LOOPS(TranscodingPolicies);

}  // namespace
