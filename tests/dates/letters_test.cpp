#include "letters.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cwctype>

#include "datestesting.h"

// What is a letter is asked of the C library's character type of every script, not of the process's: markers are found
// in a host that never chose a locale, and in one that chose any.

namespace {

using datestesting::describe;
using vel::Locale;
using vel::ParseDateTime;
using vel::i18n_details::isLetter;
using vel::i18n_details::Letters;

constexpr wchar_t kMim = 0x645;  // the Arabic letter that begins "after noon"

/// Another locale for the process, then the one before.
class ProcessLocale
{
public:
    explicit ProcessLocale(const char* name) : m_sBefore(std::setlocale(LC_ALL, nullptr))
    {
        EXPECT_NE(std::setlocale(LC_ALL, name), nullptr) << name;
    }
    ~ProcessLocale() { std::setlocale(LC_ALL, m_sBefore.c_str()); }
    ProcessLocale(const ProcessLocale&) = delete;
    ProcessLocale& operator=(const ProcessLocale&) = delete;

private:
    std::string m_sBefore;
};

std::string readTime(std::wstring_view text, const wchar_t* am, const wchar_t* pm)
{
    const Locale locale = datestesting::makeLocale({Locale::kDMY, am, pm, L":", L"/"});
    const datestesting::Parsed parsed = datestesting::parseTyped(text, locale, ParseDateTime::kTime);
    return describe(parsed.m_nFound, parsed.m_tValue);
}

void expectThatMarkersOfEveryScriptAreFound()
{
    EXPECT_EQ(readTime(L"01:30:45 م", L"ص", L"م"), "h13 m30 s45");
    EXPECT_EQ(readTime(L"3:15 오후", L"오전", L"오후"), "h15 m15");
    EXPECT_EQ(readTime(L"下午3:15", L"上午", L"下午"), "h15 m15");
    EXPECT_EQ(readTime(L"3:15 Μ.μ.", L"π.μ.", L"μ.μ."), "h15 m15");
    EXPECT_EQ(readTime(L"3:15 ös", L"ÖÖ", L"ÖS"), "h15 m15");
    EXPECT_EQ(readTime(L"3:15 \x1E907\x1E90E", L"\x1E900\x1E90E", L"\x1E907\x1E90E"), "h15 m15");
    EXPECT_EQ(readTime(L"3:15 p. m.", L"a. m.", L"p. m."), "h15 m15");
}

TEST(MarkersOfEveryScript, AreFoundInAHostThatNeverChoseALocale)
{
    ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), "C") << "the tests of this program choose none";
    ASSERT_EQ(std::iswalpha(kMim), 0) << "the process's locale knows letters of ASCII only";
    expectThatMarkersOfEveryScriptAreFound();
}

TEST(MarkersOfEveryScript, AreFoundInAHostOfAnotherLocale)
{
    for (const char* name : {"POSIX", "C.UTF-8"}) {
        const ProcessLocale other(name);
        expectThatMarkersOfEveryScriptAreFound();
    }
}

TEST(MarkersOfEveryScript, AreNotFoundInTheMiddleOfWhatIsNoLetter)
{
    EXPECT_EQ(readTime(L"3:15 .x", L".a", L".x"), "h3 m15") << "a marker is looked for where a letter stands";
    EXPECT_EQ(readTime(L"3:15 \x300", L"a", L"\x300"), "h3 m15") << "a combining mark is no letter";
}

TEST(Letters, OfEveryScriptAreKnown)
{
    for (const wchar_t letter : {L'a', L'z', L'A', L'Z', L'ä', L'μ', kMim, L'오', L'下', wchar_t{0x1E900}}) {
        EXPECT_TRUE(isLetter(letter)) << std::hex << static_cast<unsigned>(letter);
    }
    for (const wchar_t other : {L'\0', L'5', L'@', L'[', L'`', L'{', L'.', L' ', L'\x7F', L'\xA0', L'\x300', L'\x2003',
                                L'。', wchar_t{0x10FFFF}, wchar_t{0x110000}, static_cast<wchar_t>(0xFFFFFFFF)}) {
        EXPECT_FALSE(isLetter(other)) << std::hex << static_cast<unsigned>(other);
    }
}

TEST(Letters, AreTheCLibrarysOfItsUtf8CharacterType)
{
    const ProcessLocale utf8("C.UTF-8");
    for (wchar_t character = 0; character <= 0x10FFFF; ++character) {
        ASSERT_EQ(isLetter(character), std::iswalpha(static_cast<wint_t>(character)) != 0)
            << std::hex << static_cast<unsigned>(character);
    }
}

TEST(Letters, AreAllBeyondAsciiWhereTheSystemHasNoSuchCharacterType)
{
    const Letters none("no_such_character_type");
    for (const wchar_t each : {kMim, L'오', L'ä', L'\x300', wchar_t{0x10FFFF}}) {
        EXPECT_TRUE(none.has(each)) << std::hex << static_cast<unsigned>(each);
    }
    const Letters plain("C");
    EXPECT_FALSE(plain.has(kMim)) << "one that exists is asked";
}

}  // namespace
