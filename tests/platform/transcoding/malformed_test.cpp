#include <random>

#include "icureference.h"
#include "loops.h"

// Bytes that are no text in a set: where the fault is, and what came before it, as ICU says.

namespace {

using namespace transcodingtests;
using vel::String;
using vel::UniversalTranscoding;

const char* const kMultiByteSets[] = {"UTF-8", "Shift_JIS",  "EUC-JP", "EUC-KR", "windows-949",
                                      "Big5",  "Big5-HKSCS", "GBK",    "gb18030"};

/// Values at which some set changes its mind about a byte.
constexpr unsigned char kTelling[] = {0x00, 0x30, 0x39, 0x40, 0x7E, 0x80, 0x8F,
                                      0xA0, 0xA1, 0xBF, 0xC2, 0xE0, 0xF4, 0xFF};

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr unsigned kStep = 5;
#else
constexpr unsigned kStep = 1;
#endif

class Comparison
{
public:
    explicit Comparison(const std::string& name) : m_tTranscoding(transcodingOf(name)), m_tIcu(name) {}

    /// Whether ICU finds the sequence at fault at its begin: it may be incomplete.
    bool compare(const std::string& bytes) const
    {
        const IcuReference::Decoded expected = m_tIcu.decode(bytes);
        String actual;
        const std::optional<std::size_t> fault = m_tTranscoding.decode(bytes.data(), bytes.size(), actual);
        if (expected.m_nFault != fault || expected.m_sText != actual.standard()) {
            ADD_FAILURE() << m_tTranscoding.getName().c_str() << " " << hex(bytes) << ": "
                          << (fault ? static_cast<long>(*fault) : -1) << ", ICU "
                          << (expected.m_nFault ? static_cast<long>(*expected.m_nFault) : -1);
        }
        return expected.m_nFault == 0U;
    }

private:
    UniversalTranscoding m_tTranscoding;
    IcuReference m_tIcu;
};

/// Every sequence of three bytes: all third bytes where the first two begin something, and otherwise, where the third
/// one stands for itself, those at which the answer can change.
void compareThreeBytes(const Comparison& comparison)
{
    for (unsigned first = 0; first < 256 && !testing::Test::HasFailure(); ++first) {
        // The bytes of ASCII are alike, up to its last ones.
        if ((first > 0 && first < 0x5B) || first % kStep != 0) {
            continue;
        }
        for (unsigned second = 0; second < 256; ++second) {
            std::string bytes{static_cast<char>(first), static_cast<char>(second)};
            const bool mayGoOn = comparison.compare(bytes) && first >= 0x80 && (second >= 0x80 || second < 0x40);
            bytes += '\0';
            for (unsigned third = 0; mayGoOn && third < 256; ++third) {
                bytes[2] = static_cast<char>(third);
                comparison.compare(bytes);
            }
            for (const unsigned char third : kTelling) {
                bytes[2] = static_cast<char>(third);
                comparison.compare(bytes);
            }
        }
    }
}

TEST(MalformedText, OfThreeBytes)
{
    for (const char* name : kMultiByteSets) {
        compareThreeBytes(Comparison(name));
    }
}

TEST(MalformedText, OfFourAndMoreBytes)
{
    for (const char* name : kMultiByteSets) {
        const Comparison comparison(name);
        std::mt19937 random(4);
        for (int i = 0; i < 40000 && !HasFailure(); ++i) {
            std::string bytes(4 + random() % 3, '\0');
            for (char& byte : bytes) {
                byte = static_cast<char>(random() % 4 == 0 ? random() % 256 : kTelling[random() % std::size(kTelling)]);
            }
            comparison.compare(bytes);
        }
    }
}

TEST(MalformedText, UnicodeFormsOfEveryKind)
{
    for (const char* name : {"UTF-16BE", "UTF-16LE", "UTF-16", "UTF-32BE", "ISO-2022-JP"}) {
        const Comparison comparison(name);
        std::mt19937 random(5);
        const unsigned char telling[] = {0xFE, 0xFF, 0x00, 0x41, 0xD8, 0xDB, 0xDC, 0xDF, 0x1B, 0x24, 0x42, 0x28, 0x30};
        for (int i = 0; i < 20000 && !HasFailure(); ++i) {
            std::string bytes(random() % 10, '\0');
            for (char& byte : bytes) {
                byte = static_cast<char>(telling[random() % std::size(telling)]);
            }
            comparison.compare(bytes);
        }
    }
}

/// A fault at any place of a long text, which is decoded in pieces.
TEST(MalformedText, FarInALongText)
{
    const Comparison utf8("UTF-8");
    const Comparison japanese("Shift_JIS");
    for (std::size_t before = 2030; before < 2060; ++before) {
        utf8.compare(std::string(before, 'a') + "\xF0\x9F\x98\x80\xE2\x82");
        utf8.compare(std::string(before, 'a') + "\xF0\x9F\x98\x80\xE2\x82\xACtext");
        utf8.compare(std::string(before, 'a') + "\xF0\x9F\x98" + std::string(20, 'a'));
        japanese.compare(std::string(before, 'a') + "\x82\xA0\x82");
        japanese.compare(std::string(before, 'a') + "\x82\xA0\x82\x20" + std::string(20, 'a'));
    }
}

TEST(MalformedText, ByteOrderMarks)
{
    const struct
    {
        const char* m_sName;
        std::string m_sBytes;
        std::wstring m_sText;
    } cases[] = {{"UTF-16", std::string("\xFE\xFF\x20\xAC", 4), L"\u20AC"},
                 {"UTF-16", std::string("\xFF\xFE\xAC\x20", 4), L"\u20AC"},
                 {"UTF-16", std::string("\x20\xAC", 2), L"\u20AC"},
                 {"UTF-16", std::string("\xFE\xFF\xFE\xFF", 4), L"\uFEFF"},
                 {"UTF-16", std::string("\xFE\xFF", 2), L""},
                 {"UTF-16BE", std::string("\xFE\xFF\x20\xAC", 4), L"\uFEFF\u20AC"},
                 {"UTF-16LE", std::string("\xFF\xFE\xAC\x20", 4), L"\uFEFF\u20AC"},
                 {"UTF-8",
                  "\xEF\xBB\xBF"
                  "a",
                  L"\uFEFFa"}};
    for (const auto& each : cases) {
        String text;
        EXPECT_FALSE(transcodingOf(each.m_sName).decode(each.m_sBytes.data(), each.m_sBytes.size(), text));
        EXPECT_EQ(each.m_sText, text.standard()) << each.m_sName << " " << hex(each.m_sBytes);
    }
}

}  // namespace
